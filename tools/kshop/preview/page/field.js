// What every field has: label, body, menu of the field, error, help; and how it follows the node.

import { closePopup, openMenu } from "./popup.js";
import { button, el, setAttribute, setText } from "./dom.js";
import { editExpression } from "./expression.js";

let ids = 0;

export class Field {
  /** `desk` is the page's other end: edit(body), help(parm), helpFocused(parm), finding(token), showFinding(finding),
   *  nodes(), node(type). */
  constructor(parm, desk) {
    this.parm = parm;
    this.desk = desk;
    this.pending = 0;
    this.ahead = {}; // what edits under way will have changed of `parm`
    this.id = `field${(ids += 1)}`;
    this.label = el("span", { class: "label", id: this.id });
    this.mark = button("", () => this.desk.showFinding(this.desk.finding(this.parm.token)), {
      class: "mark",
      title: "Finding",
    });
    this.body = el("div", { class: "body" });
    this.error = el("p", { class: "error", role: "alert", hidden: true });
    this.more = button("⋮", () => this.openMore(), {
      class: "more",
      title: "More",
      "aria-haspopup": "menu",
    });
    this.element = el(
      "div",
      {
        class: `field kind-${parm.kind}`,
        role: "group",
        "aria-labelledby": this.id,
        data: { token: parm.token ?? "" },
        onfocusin: (event) => this.focused(event),
        onpointerenter: () => desk.help(this.parm),
        onpointerleave: () => desk.help(null),
        oncontextmenu: (event) => this.contextMenu(event),
      },
      el("span", { class: "label-box" }, this.mark, this.label),
      this.body,
      this.more,
    );
  }

  focused(event) {
    if (event.target.closest(".field") === this.element) this.desk.helpFocused(this.parm);
  }

  /** Takes the node's newest account of the parameter. What a person is just doing here is not disturbed. */
  update(parm) {
    this.told = parm;
    this.parm = { ...parm, ...this.ahead }; // an answer to the edit before the last one takes nothing back
    setText(this.label, parm.label_shown === false ? "" : (parm.label ?? ""));
    this.element.hidden = !isShown(parm);
    this.element.classList.toggle("changed", Boolean(parm.changed));
    setAttribute(this.element, "aria-disabled", parm.enabled === false ? "true" : null);
    this.showFinding();
    this.showExpressionError();
    if (this.pending === 0) this.show();
  }

  showFinding() {
    const finding = this.desk.finding(this.parm.token);
    this.mark.hidden = !finding;
    this.mark.className = `mark ${finding?.severity ?? ""}`;
    if (finding) this.mark.title = finding.message;
  }

  showExpressionError() {
    const failed = (this.parm.expressions ?? []).find((expression) => expression?.error);
    if (failed) this.complain(`Expression: ${failed.error}`);
    else if (this.error.dataset.from === "expression") this.complain(null);
    if (failed) this.error.dataset.from = "expression";
  }

  /** Shows `this.parm`; each kind has its own. */
  show() {}

  get enabled() {
    return this.parm.enabled !== false;
  }

  /** One sentence under the field, or null for none. */
  complain(sentence) {
    delete this.error.dataset.from;
    this.error.hidden = !sentence;
    setText(this.error, sentence ?? "");
  }

  /** What is done next starts from these, before the answer to the edit is there. */
  runAhead(changes) {
    this.ahead = { ...this.ahead, ...changes };
    this.parm = { ...this.parm, ...changes };
  }

  /** Sends an edit. When it is refused its sentence appears here and the field goes back to what the node has. */
  async send(body) {
    this.pending += 1;
    try {
      const answer = await this.desk.edit(body);
      this.complain(answer.errors?.length ? answer.errors.join(" ") : null);
      this.showExpressionError();
    } catch (error) {
      this.complain(error.message);
    }
    this.pending -= 1;
    if (this.pending > 0) return;
    this.ahead = {};
    this.parm = this.told;
    this.show();
  }

  set(value, gesture) {
    return this.send({ action: "set", token: this.parm.token, value, gesture });
  }

  setChannel(channel, value, gesture) {
    return this.send({ action: "set", channel, value, gesture });
  }

  contextMenu(event) {
    if (event.target instanceof HTMLInputElement && event.target.type === "text") return; // the browser's own: copy, paste
    if (event.target.closest(".field") !== this.element) return;
    event.preventDefault();
    this.openMore();
  }

  openMore() {
    openMenu(this.more, this.moreItems(), (item) => item.run(), {
      label: `${this.parm.label ?? this.parm.token}`,
    });
  }

  /** The field's own menu; kinds add to it. */
  moreItems() {
    const { token, channels, changed } = this.parm;
    const items = [
      {
        label: "Reset to default",
        disabled: !this.enabled || !changed,
        run: () => this.send({ action: "reset", token }),
      },
    ];
    (this.parm.expressions ?? []).forEach((expression, i) => {
      const channel = channels[i];
      items.push({
        label: expression ? `Edit expression of ${channel}…` : `Add expression to ${channel}…`,
        disabled: !this.enabled,
        run: () => this.openExpression(i),
      });
      if (expression) {
        items.push({
          label: `Remove expression of ${channel}`,
          disabled: !this.enabled,
          run: () => this.send({ action: "expression", channel, text: null }),
        });
      }
    });
    items.push({ label: "Copy name", note: token, run: () => navigator.clipboard?.writeText(token) });
    return items;
  }

  openExpression(i) {
    const channel = this.parm.channels[i];
    const expression = this.parm.expressions[i];
    editExpression(this.more, {
      at: this.body,
      channel,
      expression,
      apply: (text, language) => {
        closePopup();
        this.send({ action: "expression", channel, text, language });
      },
      remove: () => {
        closePopup();
        this.send({ action: "expression", channel, text: null });
      },
    });
  }
}

export function isShown(parm) {
  return parm.visible !== false && !parm.invisible;
}
