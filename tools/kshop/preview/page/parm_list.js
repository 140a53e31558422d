// A list of parameters as rows of fields: what is joined stands on one row. Rows that are there already are kept, so
// that an edit or a reload never disturbs what a person is doing.

import { arrange, el } from "./dom.js";
import { makeField } from "./fields.js";
import { isShown } from "./field.js";

function rowsOf(parms) {
  const rows = [];
  let joined = false;
  for (const parm of parms) {
    if (joined) rows.at(-1).push(parm);
    else rows.push([parm]);
    joined = Boolean(parm.join_next);
  }
  return rows;
}

/** Two parameters of one shape can be shown by one field. */
function shapeOf(parm) {
  return [parm.kind, parm.token, parm.size, parm.ramp, parm.slider, parm.style, parm.menu?.kind].join("|");
}

class Row {
  constructor(parms, desk) {
    this.fields = parms.map((parm) => makeField(parm, desk));
    this.line = el("div", { class: "line" }, ...this.fields.map((field) => field.element));
    this.errors = el("div", { class: "errors" }, ...this.fields.map((field) => field.error).filter(Boolean));
    this.element = el("div", { class: "row" }, this.line, this.errors);
  }

  update(parms) {
    parms.forEach((parm, i) => this.fields[i].update(parm));
    this.element.hidden = !parms.some(isShown);
  }
}

export class ParmList {
  /** Fills `element` with the rows. */
  constructor(element, desk) {
    this.element = element;
    this.desk = desk;
    this.rows = new Map();
  }

  update(parms) {
    const kept = new Map();
    for (const group of rowsOf(parms)) {
      const key = this.keyFor(group, kept);
      const row = this.rows.get(key) ?? new Row(group, this.desk);
      row.update(group);
      kept.set(key, row);
    }
    this.rows = kept;
    arrange(
      this.element,
      [...kept.values()].map((row) => row.element),
    );
  }

  keyFor(group, taken) {
    const shape = group.map(shapeOf).join("+");
    let key = shape;
    for (let n = 2; taken.has(key); n += 1) key = `${shape}#${n}`;
    return key;
  }
}
