// The change records that edits send to a render, newest on top, and what scripts print.

import { button, el } from "./dom.js";
import { hexOf } from "./color.js";
import { numberText } from "./number.js";

const MOST = 200; // records that are kept on the page
const COLORS = new Set([5, 6]); // the renderer's codes of rgb and rgba
const WORDS = [
  "byte",
  "int",
  "uint",
  "bool",
  "float",
  "rgb",
  "rgba",
  "vector",
  "point",
  "point2",
  "string",
  "pointer",
  "node",
  "array",
  "matrix",
  "enum",
];

function scalarText(value) {
  if (typeof value === "number") return numberText(value);
  return typeof value === "string" ? JSON.stringify(value) : String(value);
}

/** A value of a record as a person reads it. */
function valueText(value) {
  if (Array.isArray(value)) return value.map(valueText).join(value.some(Array.isArray) ? ", " : " ");
  if (value && typeof value === "object") return valueText(value.values ?? []);
  return scalarText(value);
}

function chip(type, value) {
  const colors = COLORS.has(type) ? [value] : COLORS.has(value?.element_type) ? value.values : [];
  return colors
    .filter(Array.isArray)
    .slice(0, 12)
    .map((color) => {
      const square = el("span", { class: "chip", "aria-hidden": "true" });
      square.style.setProperty("--color", hexOf(color));
      return square;
    });
}

function parmRow(name, { type, value }) {
  const word = type === 13 ? `${WORDS[value?.element_type] ?? "?"}[]` : (WORDS[type] ?? type);
  return el(
    "div",
    { class: "record-parm" },
    el("code", { class: "name", text: name }),
    el("span", { class: "type-word", text: word }),
    el("span", { class: "value" }, ...chip(type, value), el("code", { text: valueText(value) })),
  );
}

function recordCard(record) {
  const copy = button("Copy", () => navigator.clipboard?.writeText(JSON.stringify(record)), {
    class: "small copy",
    title: "Copy the record",
  });
  return el(
    "article",
    { class: "record" },
    el(
      "header",
      {},
      el("b", { text: record.node_path.split("/").pop(), title: record.node_path }),
      el("span", { class: "quiet", text: record.entry_name }),
      el("span", { class: "grow" }),
      copy,
    ),
    ...Object.entries(record.parms).map(([name, parm]) => parmRow(name, parm)),
  );
}

export class Records {
  /** `changed` hears how many there are. */
  constructor(element, changed) {
    this.changed = changed;
    this.list = el("div", {
      class: "records",
      role: "log",
      "aria-label": "Change records, newest first",
    });
    this.empty = el("p", {
      class: "quiet",
      text: "An edit's change records appear here, as a running render gets them.",
    });
    this.count = 0;
    element.append(
      el(
        "div",
        { class: "panel-bar" },
        this.empty,
        el("span", { class: "grow" }),
        button("Clear", () => this.clear(), { class: "small" }),
      ),
      this.list,
    );
  }

  add(records) {
    for (const record of records) this.list.prepend(recordCard(record));
    while (this.list.childElementCount > MOST) this.list.lastChild.remove();
    this.count += records.length;
    this.empty.hidden = this.count > 0;
    this.changed(this.count);
  }

  /** Notes that an edit of `name` sent nothing, which is no mistake but worth knowing. */
  addSilence(name) {
    if (this.list.firstChild?.dataset.silent === name) return;
    this.list.prepend(
      el(
        "p",
        { class: "record quiet", data: { silent: name } },
        el("code", { text: name }),
        " was edited; a running render is told nothing.",
      ),
    );
    this.empty.hidden = true;
  }

  clear() {
    this.list.replaceChildren();
    this.count = 0;
    this.add([]);
  }
}

/** What callbacks print, and what registration had to say. */
export class Console {
  constructor(element, changed) {
    this.changed = changed;
    this.text = el("div", { class: "console", role: "log", "aria-label": "Console" });
    this.told = new Set();
    element.append(
      el(
        "div",
        { class: "panel-bar" },
        el("span", {
          class: "quiet",
          text: "What callbacks print, and messages of the registration.",
        }),
        el("span", { class: "grow" }),
        button("Clear", () => this.text.replaceChildren(), { class: "small" }),
      ),
      this.text,
    );
  }

  add(text, tone = "") {
    if (!text) return;
    this.text.append(el("pre", { class: tone, text: text.replace(/\n$/, "") }));
    this.text.lastChild.scrollIntoView({ block: "nearest" });
    this.changed();
  }

  /** Warnings and errors of the registration; those that were said before are not repeated. */
  addMessages(messages) {
    for (const { severity, text } of messages) {
      if (severity === "info" || this.told.has(text)) continue;
      this.told.add(text);
      this.add(`${severity}: ${text}`, severity);
    }
  }
}
