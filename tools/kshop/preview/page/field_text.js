// Texts: plain, files, node paths, read-only ones; and the menu beside a text, which acts on it as the host's does.

import { Entry } from "./entry.js";
import { Field } from "./field.js";
import { button, el, setText } from "./dom.js";
import { openMenu } from "./popup.js";

/** What choosing `token` makes of `text`, by the kind of the menu. */
function afterChoice(kind, text, token) {
  if (kind === "append") return text === "" ? token : `${text} ${token}`;
  if (kind !== "toggle") return token;
  const words = text.split(/\s+/).filter((word) => word !== "");
  return (words.includes(token) ? words.filter((word) => word !== token) : [...words, token]).join(" ");
}

export class TextField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.entry = new Entry({
      label: parm.label,
      style: parm.kind === "string" ? "" : "code",
      commit: (text) => this.set(text),
    });
    this.choose = button("▾", () => this.openChoices(), {
      class: "choose",
      title: "Choose",
      "aria-haspopup": "menu",
      "aria-expanded": "false",
      hidden: true,
    });
    this.hint = el("span", { class: "quiet hint" });
    this.body.append(el("span", { class: "joined" }, this.entry.element, this.choose), this.hint);
  }

  show() {
    const { value, menu, expressions } = this.parm;
    this.entry.set(value ?? "");
    this.entry.enable(this.enabled);
    this.entry.label(this.parm.label);
    this.entry.element.readOnly = Boolean(expressions?.[0]);
    this.element.classList.toggle("has-expression", Boolean(expressions?.[0]));
    this.choose.hidden = !menu && this.parm.kind !== "node";
    this.choose.disabled = !this.enabled;
    setText(this.hint, this.hintText());
    if (menu?.error) this.complain(`Menu: ${menu.error}`);
  }

  hintText() {
    if (this.parm.kind === "file") return this.parm.image ? "image" : (this.parm.pattern ?? "");
    if (this.parm.kind === "node") return this.parm.filter ?? "";
    return "";
  }

  async openChoices() {
    if (!this.parm.menu) return this.openNodes();
    const { kind, items } = this.parm.menu;
    const words = (this.parm.value ?? "").split(/\s+/);
    const isChosen = (token) => (kind === "toggle" ? words.includes(token) : token === this.parm.value);
    const entries = items.map(([token, label]) => ({
      token,
      label: label || token,
      chosen: isChosen(token),
      note: token === label ? "" : token,
    }));
    return openMenu(
      this.choose,
      entries,
      (item) => this.set(afterChoice(kind, this.parm.value ?? "", item.token)),
      { label: this.parm.label },
    );
  }

  async openNodes() {
    try {
      const nodes = await this.desk.nodes();
      openMenu(
        this.choose,
        nodes.map((node) => ({ label: node.path, token: node.path, note: node.type })),
        (item) => this.set(item.token),
        { label: this.parm.label },
      );
    } catch (error) {
      this.complain(error.message);
    }
  }
}

/** A text that only the host writes. */
export class LabelField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.text = el("span", { class: "read-only" });
    this.body.append(this.text);
    this.more.remove();
  }

  show() {
    setText(this.text, String(this.parm.value ?? ""));
  }
}
