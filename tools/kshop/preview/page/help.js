// The strip under the pane: what the parameter under the pointer, or else the focused one, is about.

import { arrange, el } from "./dom.js";

function fact(name, value) {
  return value ? el("span", { class: "fact" }, el("b", { text: name }), el("code", { text: value })) : null;
}

function callbackText(parm) {
  return (parm.callback_script ?? "").trim().split("\n")[0].slice(0, 80);
}

export class Help {
  constructor(element) {
    this.element = element;
    this.idle();
  }

  idle() {
    arrange(this.element, [
      el("p", {
        class: "quiet",
        text: "Point at a parameter, or move to it with Tab, to read its help. / searches, Ctrl+Z takes an edit back.",
      }),
    ]);
  }

  /** Null: the pointer left; the focused field is shown again, if there is one. */
  show(parm, focused) {
    const about = parm ?? focused;
    if (!about) return this.idle();
    const head = el(
      "p",
      { class: "help-head" },
      el("b", { text: about.label || about.token }),
      el("code", { text: about.token }),
      about.extra ? el("span", { class: "quiet", text: "of the interface only" }) : null,
    );
    const facts = [
      fact("disabled when", about.disable_when),
      fact("hidden when", about.hide_when),
      fact("callback", callbackText(about)),
    ].filter(Boolean);
    const help = el("p", {
      class: about.help ? "" : "quiet",
      text: about.help || "No help is written for this parameter.",
    });
    return arrange(this.element, [
      head,
      help,
      ...(facts.length ? [el("p", { class: "facts" }, ...facts)] : []),
    ]);
  }
}
