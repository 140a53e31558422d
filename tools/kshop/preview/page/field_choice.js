// Choices: pure menus, check boxes, strips of buttons, and buttons.

import { Field } from "./field.js";
import { arrange, arrowIndex, button, el, roving, setText } from "./dom.js";
import { openMenu } from "./popup.js";

/** A menu that shows what is chosen. Its value is an index, or a token where the parameter is a text. */
export class MenuField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.chosen = button("", () => this.openChoices(), {
      class: "menu-button",
      "aria-haspopup": "listbox",
      "aria-expanded": "false",
      onkeydown: (e) => this.key(e),
    });
    this.body.append(this.chosen);
  }

  get items() {
    return this.parm.items ?? this.parm.menu?.items ?? [];
  }

  get index() {
    const { value } = this.parm;
    return typeof value === "number" ? value : this.items.findIndex(([token]) => token === value);
  }

  show() {
    const [token, label] = this.items[this.index] ?? [];
    const other = this.parm.current ?? this.parm.value ?? ""; // a text that is none of the items
    setText(this.chosen, token === undefined ? String(other) || "(empty)" : label || token || "(empty)");
    this.chosen.classList.toggle("unknown", token === undefined);
    this.chosen.disabled = !this.enabled;
    this.chosen.setAttribute("aria-label", `${this.parm.label}: ${this.chosen.textContent.trim()}`);
    if (this.parm.menu?.error) this.complain(`Menu: ${this.parm.menu.error}`);
  }

  take(index) {
    const [token] = this.items[index];
    const value = typeof this.parm.value === "number" ? index : token;
    this.runAhead({ value, current: token }); // for the next arrow key
    this.show();
    return this.set(value);
  }

  openChoices() {
    const entries = this.items.map(([token, label], i) => ({
      token,
      label: label || token || "(empty)",
      chosen: i === this.index,
    }));
    openMenu(this.chosen, entries, (_, i) => this.take(i), { label: this.parm.label, listbox: true });
  }

  key(event) {
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (!step || !this.enabled) return;
    event.preventDefault();
    if (event.altKey) return this.openChoices();
    const next = Math.max(0, Math.min(this.items.length - 1, this.index + step));
    if (next !== this.index) this.take(next);
  }
}

export class ToggleField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.box = el("input", {
      type: "checkbox",
      class: "toggle-box",
      role: "switch",
      onchange: () => this.set(this.box.checked ? 1 : 0),
    });
    this.text = el("span", { class: "toggle-label" });
    this.body.append(el("label", { class: "toggle-row" }, this.box, this.text));
  }

  update(parm) {
    super.update(parm);
    setText(this.label, "");
    setText(this.text, parm.label_shown === false ? "" : parm.label);
    this.box.setAttribute("aria-label", parm.label);
  }

  show() {
    this.box.checked = Boolean(this.parm.value);
    this.box.disabled = !this.enabled;
  }
}

/** A bit for each button. */
export class StripField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.strip = el("div", { class: "strip", role: "group", onkeydown: (e) => this.key(e) });
    this.buttons = [];
    this.body.append(this.strip);
  }

  show() {
    const items = this.parm.items ?? this.parm.menu?.items ?? [];
    while (this.buttons.length < items.length) {
      const bit = this.buttons.length;
      this.buttons.push(button("", () => this.flip(bit), { class: "strip-button" }));
    }
    this.buttons.length = items.length;
    arrange(this.strip, this.buttons);
    this.strip.setAttribute("aria-label", this.parm.label);
    items.forEach(([token, label], bit) => {
      setText(this.buttons[bit], label || token);
      this.buttons[bit].setAttribute("aria-pressed", Boolean(this.parm.value & (1 << bit)));
      this.buttons[bit].disabled = !this.enabled;
    });
    roving(this.buttons, Math.max(0, this.buttons.indexOf(document.activeElement)));
  }

  flip(bit) {
    const value = this.parm.value ^ (1 << bit);
    this.runAhead({ value }); // for a second button
    this.set(value);
  }

  key(event) {
    const at = this.buttons.indexOf(document.activeElement);
    const to = at < 0 ? -1 : arrowIndex(event.key, at, this.buttons.length);
    if (to < 0) return;
    event.preventDefault();
    roving(this.buttons, to);
    this.buttons[to].focus();
  }
}

/** Runs its callback; with a menu, the item that is chosen. */
export class ButtonField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.push = button("", () => this.press(), { class: "push" });
    this.body.append(this.push);
  }

  update(parm) {
    super.update(parm);
    setText(this.label, "");
  }

  show() {
    setText(this.push, this.parm.label_shown === false ? "●" : this.parm.label || this.parm.token);
    this.push.setAttribute("aria-label", this.parm.label || this.parm.token);
    this.push.disabled = !this.enabled;
  }

  press() {
    const { token, menu } = this.parm;
    if (!menu?.items?.length) return this.send({ action: "press", token });
    const entries = menu.items.map(([item, label]) => ({ token: item, label: label || item }));
    return openMenu(this.push, entries, (item) => this.send({ action: "press", token, menu: item.token }), {
      label: this.parm.label,
    });
  }
}
