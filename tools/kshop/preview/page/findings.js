// What lint says: the list, and which finding belongs to which shader, parameter and line.

import { arrange, button, el, setText } from "./dom.js";

const WEIGHT = { error: 3, warning: 2, advice: 1 };

const NAMES = [
  ["error", "error", "errors"],
  ["warning", "warning", "warnings"],
  ["advice", "piece of advice", "pieces of advice"],
];

/** A shader's name without the renderer's or the host's prefix, so that both are the same. */
function bareName(name) {
  return String(name ?? "")
    .replace(/^zelk__/, "")
    .replace(/^korvan::/, "");
}

/** The gravest of some findings, or undefined. */
export function gravest(findings) {
  return findings.reduce(
    (worst, finding) => (!worst || WEIGHT[finding.severity] > WEIGHT[worst.severity] ? finding : worst),
    undefined,
  );
}

function placeText(finding) {
  const file = finding.file?.split("/").pop() ?? "";
  return finding.line ? `${file}:${finding.line}` : file;
}

/** A finding as a small block: message, what the artist will see, what to do; its corner opens the line, or says `corner`. */
export function findingBlock(finding, { open, corner = finding.rule } = {}) {
  const where = [bareName(finding.shader), finding.parameter].filter(Boolean).join(" · ");
  return el(
    "article",
    { class: `finding ${finding.severity}`, data: { rule: finding.rule } },
    el(
      "header",
      {},
      el("b", { class: "severity", text: finding.severity }),
      el("span", { text: where }),
      el("span", { class: "grow" }),
      open
        ? button(placeText(finding), () => open(finding), { class: "link", title: "Show the line" })
        : el("code", { class: "quiet", text: corner }),
    ),
    el("p", { text: finding.message }),
    finding.effect ? el("p", { class: "effect", text: finding.effect }) : null,
    finding.remedy ? el("p", { class: "remedy", text: finding.remedy }) : null,
  );
}

export class Findings {
  /** `open` shows a finding's line, if `canOpen` says that its file is there; `changed` hears the findings after each
   *  reading. */
  constructor(element, { open, canOpen, changed }) {
    this.open = open;
    this.canOpen = canOpen;
    this.changed = changed;
    this.all = [];
    this.onlyThis = el("input", { type: "checkbox", onchange: () => this.show() });
    this.summary = el("span", { class: "quiet", role: "status" });
    this.list = el("div", { class: "findings" });
    element.append(
      el(
        "div",
        { class: "panel-bar" },
        this.summary,
        el("span", { class: "grow" }),
        el("label", { class: "check" }, this.onlyThis, "this node only"),
      ),
      this.list,
    );
  }

  set(findings) {
    this.all = findings;
    this.show();
    this.changed(findings);
  }

  setShader(type) {
    this.shader = bareName(type);
    if (this.onlyThis.checked) this.show();
  }

  show() {
    const shown = this.all.filter(
      (finding) => !this.onlyThis.checked || bareName(finding.shader) === this.shader,
    );
    const count = (severity) => shown.filter((finding) => finding.severity === severity).length;
    const words = NAMES.map(([severity, one, many]) => [count(severity), count(severity) === 1 ? one : many]);
    setText(
      this.summary,
      shown.length
        ? words
            .filter(([n]) => n)
            .map(([n, word]) => `${n} ${word}`)
            .join(", ")
        : "Lint has nothing to say.",
    );
    const sorted = [...shown].sort((a, b) => WEIGHT[b.severity] - WEIGHT[a.severity]);
    arrange(
      this.list,
      sorted.map((finding) =>
        findingBlock(finding, this.canOpen(finding) ? { open: this.open } : { corner: placeText(finding) }),
      ),
    );
  }

  ofShader(type) {
    return this.all.filter((finding) => bareName(finding.shader) === bareName(type));
  }
}
