// A text field that shows what the node has, until a person types; Enter and leaving it commit, Esc takes it back.

import { el, setAttribute } from "./dom.js";

export class Entry {
  /** `commit` hears a text that differs from the one shown. `multiline` gives a text area. */
  constructor({ label, commit, style = "", attributes = {} }) {
    this.commit = commit;
    this.typing = false;
    this.shown = "";
    this.element = el("input", {
      type: "text",
      class: `entry ${style}`,
      "aria-label": label,
      autocomplete: "off",
      spellcheck: "false",
      ...attributes,
      oninput: () => this.setTyping(true),
      onchange: () => this.done(),
      onblur: () => this.done(),
      onkeydown: (event) => this.key(event),
    });
  }

  /** Shows the node's text, unless a person is typing. */
  set(text) {
    this.shown = text;
    if (!this.typing && this.element.value !== text) this.element.value = text;
  }

  /** What is typed and not yet committed is marked, so that Ctrl+Z is the browser's there. */
  setTyping(typing) {
    this.typing = typing;
    this.element.toggleAttribute("data-typing", typing);
  }

  enable(enabled) {
    if (this.element.disabled === enabled) this.element.disabled = !enabled;
  }

  label(text) {
    setAttribute(this.element, "aria-label", text);
  }

  done() {
    if (!this.typing) return;
    this.setTyping(false);
    if (this.element.value !== this.shown) this.commit(this.element.value);
  }

  key(event) {
    if (event.key === "Enter") {
      this.done();
      this.element.select();
    } else if (event.key === "Escape" && this.typing) {
      event.stopPropagation();
      this.setTyping(false);
      this.element.value = this.shown;
    }
  }
}
