// A row of tabs with its panels: folders of the parameter pane, and the panels at the side.

import { arrange, arrowIndex, el, roving, setText } from "./dom.js";

let ids = 0;

export class Tabs {
  /** `selected` hears the index that a person chose; `label` names the row for screen readers. */
  constructor({ label, selected, style = "" }) {
    this.selected = selected;
    this.index = 0;
    this.tabs = [];
    this.panels = [];
    this.list = el("div", {
      class: "tablist",
      role: "tablist",
      "aria-label": label,
      onkeydown: (e) => this.key(e),
    });
    this.element = el("div", { class: `tabs ${style}` }, this.list);
  }

  /** Makes as many tabs as there are labels; those that are there keep their panels. */
  setLabels(labels) {
    while (this.tabs.length > labels.length) this.drop();
    while (this.tabs.length < labels.length) this.add();
    labels.forEach((text, i) => setText(this.tabs[i].firstChild, text));
    arrange(this.list, this.tabs);
    arrange(this.element, [this.list, ...this.panels]);
    this.show(Math.min(this.index, Math.max(0, labels.length - 1)));
  }

  add() {
    const id = `tab${(ids += 1)}`;
    const place = this.tabs.length;
    this.tabs.push(
      el(
        "button",
        {
          type: "button",
          class: "tab",
          role: "tab",
          id,
          "aria-controls": `${id}-panel`,
          onclick: () => this.choose(place),
        },
        el("span"),
        el("span", { class: "badge" }),
      ),
    );
    this.panels.push(
      el("div", { class: "panel", role: "tabpanel", id: `${id}-panel`, "aria-labelledby": id }),
    );
  }

  drop() {
    this.tabs.pop().remove();
    this.panels.pop().remove();
  }

  /** A small mark behind a tab's label, "" for none. */
  setBadge(index, text, tone = "") {
    const badge = this.tabs[index].lastChild;
    setText(badge, text);
    badge.className = `badge ${tone}`;
  }

  show(index) {
    this.index = index;
    roving(this.tabs, index);
    this.tabs.forEach((tab, i) => tab.setAttribute("aria-selected", i === index));
    this.panels.forEach((panel, i) => {
      panel.hidden = i !== index;
    });
  }

  choose(index) {
    this.show(index);
    this.selected(index);
  }

  key(event) {
    const index = arrowIndex(event.key, this.index, this.tabs.length);
    if (index < 0 || event.altKey || event.ctrlKey || event.metaKey) return;
    event.preventDefault();
    this.choose(index);
    this.tabs[index].focus();
  }
}
