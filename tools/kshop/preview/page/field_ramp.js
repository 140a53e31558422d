// A ramp: the drawing, the numbers of the selected key, and all keys as a list.

import { Entry } from "./entry.js";
import { Field } from "./field.js";
import { ParmList } from "./parm_list.js";
import { RampEditor } from "./ramp_editor.js";
import { arrange, button, el, setText } from "./dom.js";
import { hexOf, tidy } from "./color.js";
import { numberText, parseNumber } from "./number.js";
import { openMenu } from "./popup.js";
import { openPicker } from "./color_picker.js";

export class RampField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.isColor = parm.ramp === "color";
    this.editor = new RampEditor(
      { changed: (keys, gesture) => this.changeKeys(keys, gesture), select: () => this.showKey() },
      this.isColor,
    );
    this.body.classList.add("tall");
    this.body.append(this.editor.element, this.makeKeyLine(), this.makeKeyList());
  }

  makeKeyLine() {
    this.which = el("span", { class: "quiet which" });
    this.add = button("+", () => this.editor.addBehind(this.editor.selected), {
      class: "small",
      title: "Add a key",
    });
    this.remove = button("−", () => this.editor.remove(this.editor.selected), {
      class: "small",
      title: "Remove the key",
    });
    this.position = new Entry({
      label: "Position",
      style: "number",
      commit: (text) => this.commit("position", text, this.position),
    });
    this.interpolation = button("", () => this.openInterpolations(), {
      class: "menu-button",
      "aria-haspopup": "listbox",
      "aria-expanded": "false",
    });
    return el(
      "div",
      { class: "key-line" },
      this.which,
      this.add,
      this.remove,
      el("label", { class: "pair" }, el("span", { text: "Position" }), this.position.element),
      ...(this.isColor ? [this.interpolation, this.makeColor()] : [this.makeValue(), this.interpolation]),
    );
  }

  makeValue() {
    this.value = new Entry({
      label: "Value",
      style: "number",
      commit: (text) => this.commit("value", text, this.value),
    });
    return el("label", { class: "pair" }, el("span", { text: "Value" }), this.value.element);
  }

  makeColor() {
    this.swatch = button(
      "",
      () =>
        openPicker(
          this.swatch,
          this.key.value,
          (rgb, gesture) => this.change("value", rgb, gesture),
          "Colour of the key",
        ),
      {
        class: "swatch",
        title: "Choose the key's colour",
        "aria-haspopup": "dialog",
        "aria-expanded": "false",
      },
    );
    this.parts = [0, 1, 2].map((i) => {
      const entry = new Entry({
        label: ["Red", "Green", "Blue"][i],
        style: "number",
        commit: (text) => this.commitPart(i, text, entry),
      });
      return entry;
    });
    return el("span", { class: "pair" }, this.swatch, ...this.parts.map((entry) => entry.element));
  }

  makeKeyList() {
    this.lists = [];
    this.rows = el("div", { class: "instances" });
    this.all = el(
      "details",
      { class: "all-keys", ontoggle: () => this.showList() },
      el("summary", { text: "All keys" }),
      this.rows,
    );
    return this.all;
  }

  get key() {
    return (
      this.editor.keys[this.editor.selected] ?? {
        position: 0,
        value: this.isColor ? [0, 0, 0] : 0,
        interpolation: 0,
      }
    );
  }

  get words() {
    return this.parm.interpolations.map(([token]) => token);
  }

  update(parm) {
    super.update(parm);
    this.all.hidden = !parm.instances?.length;
    this.showList();
  }

  show() {
    this.editor.element.setAttribute("aria-label", `${this.parm.label}: keys`);
    this.editor.update(this.parm.keys, this.words, this.enabled);
    this.showKey();
  }

  showKey() {
    const { key } = this;
    const { length } = this.editor.keys;
    setText(this.which, length ? `Key ${this.editor.selected + 1} of ${length}` : "No keys");
    this.position.set(numberText(key.position));
    if (this.isColor) {
      this.swatch.style.setProperty("--color", hexOf(key.value));
      this.parts.forEach((entry, i) => entry.set(numberText(key.value[i])));
    } else this.value.set(numberText(key.value));
    setText(this.interpolation, this.parm.interpolations[key.interpolation]?.[1] ?? "");
    this.interpolation.setAttribute("aria-label", `Interpolation: ${this.interpolation.textContent}`);
    this.enableKnobs(length);
  }

  enableKnobs(length) {
    for (const entry of [this.position, this.value, ...(this.parts ?? [])])
      entry?.enable(this.enabled && length > 0);
    for (const knob of [this.add, this.interpolation, this.swatch]) if (knob) knob.disabled = !this.enabled;
    this.remove.disabled = !this.enabled || length <= 1;
  }

  showList() {
    if (!this.all.open || !this.parm.instances) return;
    const { instances } = this.parm;
    while (this.lists.length < instances.length) {
      const element = el("div", { class: "instance" });
      this.lists.push({ element, fields: new ParmList(element, this.desk) });
    }
    this.lists.length = instances.length;
    instances.forEach((instance, i) => this.lists[i].fields.update(instance.parms));
    arrange(
      this.rows,
      this.lists.map((list) => list.element),
    );
  }

  changeKeys(keys, gesture) {
    this.showKey();
    this.send({ action: "ramp", token: this.parm.token, keys, gesture });
  }

  change(name, value, gesture) {
    const { selected, keys } = this.editor;
    this.editor.change(
      keys.map((key, i) => (i === selected ? { ...key, [name]: value } : key)),
      gesture,
    );
  }

  commit(name, text, entry) {
    const value = parseNumber(text);
    if (value !== null) return this.change(name, value);
    this.complain(`"${text}" is no number.`);
    return entry.set(entry.shown);
  }

  commitPart(i, text, entry) {
    const value = parseNumber(text);
    if (value !== null)
      return this.change(
        "value",
        this.key.value.map((x, k) => (k === i ? value : tidy(x))),
      );
    this.complain(`"${text}" is no number.`);
    return entry.set(entry.shown);
  }

  openInterpolations() {
    const entries = this.parm.interpolations.map(([token, label], i) => ({
      token,
      label,
      chosen: i === this.key.interpolation,
    }));
    openMenu(this.interpolation, entries, (_, i) => this.change("interpolation", i), {
      label: "Interpolation",
      listbox: true,
    });
  }
}
