// A list that grows and shrinks: a multi-parameter with its instances.

import { Entry } from "./entry.js";
import { Field } from "./field.js";
import { ParmList } from "./parm_list.js";
import { arrange, button, el } from "./dom.js";

/** One instance in its frame, with the buttons that insert before it and remove it. */
class Instance {
  constructor(list, index) {
    const rows = el("div", { class: "instance-rows" });
    this.fields = new ParmList(rows, list.desk);
    this.insert = button("+", () => list.send({ action: "insert", token: list.parm.token, index }), {
      class: "small",
    });
    this.remove = button("×", () => list.send({ action: "remove", token: list.parm.token, index }), {
      class: "small",
    });
    this.element = el(
      "div",
      { class: "instance" },
      rows,
      el("span", { class: "instance-buttons" }, this.insert, this.remove),
    );
    this.index = index;
  }

  update(instance, number, enabled) {
    this.fields.update(instance.parms);
    for (const [knob, title] of [
      [this.insert, `Insert before ${number}`],
      [this.remove, `Remove ${number}`],
    ]) {
      knob.title = title;
      knob.setAttribute("aria-label", title);
      knob.disabled = !enabled;
    }
  }
}

export class ListField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.instances = [];
    this.count = new Entry({
      label: `${parm.label}: count`,
      style: "count",
      commit: (text) => this.setCount(Number(text)),
    });
    this.less = button("−", () => this.setCount(this.parm.count - 1), {
      class: "small",
      title: "Remove the last",
    });
    this.add = button("+", () => this.setCount(this.parm.count + 1), {
      class: "small",
      title: "Add one",
    });
    this.clear = button("Clear", () => this.setCount(0), { class: "small" });
    this.frame = el("div", { class: "instances" });
    this.body.append(
      el("div", { class: "list-head" }, this.count.element, this.less, this.add, this.clear),
      this.frame,
    );
    this.body.classList.add("tall");
  }

  setCount(count) {
    if (!Number.isInteger(count) || count < 0) {
      this.complain("A count is a whole number, 0 or more.");
      this.count.set(this.count.shown);
      return;
    }
    this.runAhead({ count }); // for a second click
    this.send({ action: "count", token: this.parm.token, count });
  }

  update(parm) {
    super.update(parm);
    const instances = parm.instances ?? [];
    while (this.instances.length < instances.length)
      this.instances.push(new Instance(this, this.instances.length));
    this.instances.length = instances.length;
    const first = parm.first ?? parm.first_index ?? 1;
    this.instances.forEach((instance, i) => instance.update(instances[i], first + i, this.enabled));
    arrange(
      this.frame,
      this.instances.map((instance) => instance.element),
    );
    this.frame.hidden = instances.length === 0;
  }

  show() {
    this.count.set(String(this.parm.count));
    this.count.enable(this.enabled);
    for (const knob of [this.add, this.clear, this.less]) knob.disabled = !this.enabled;
    if (this.parm.count === 0)
      [this.less, this.clear].forEach((knob) => {
        knob.disabled = true;
      });
  }
}
