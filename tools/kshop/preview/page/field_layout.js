// What gives the pane its shape: headings, lines, and folders as tabs.

import { Tabs } from "./tabs.js";
import { ParmList } from "./parm_list.js";
import { arrange, el, setText } from "./dom.js";
import { isShown } from "./field.js";

export class HeadingField {
  constructor(parm) {
    this.element = el("h3", { class: "field heading", data: { token: parm.token ?? "" } });
  }

  update(parm) {
    this.parm = parm;
    this.element.hidden = !isShown(parm);
    setText(this.element, String(parm.value || parm.label || ""));
  }
}

export class SeparatorField {
  constructor(parm) {
    this.element = el("hr", { class: "field separator", data: { token: parm.token ?? "" } });
  }

  update(parm) {
    this.parm = parm;
    this.element.hidden = !isShown(parm);
  }
}

/** True when something inside differs from its default. A ramp answers for its keys, which are never templates' defaults. */
export function anyChanged(parms) {
  const groups = (parm) => parm.tabs ?? (parm.kind === "list" ? parm.instances : undefined) ?? [];
  return parms.some((parm) => parm.changed || groups(parm).some((group) => anyChanged(group.parms)));
}

/** Tabs, each with its own list of fields, which is made when the tab is first looked at. */
export class FolderField {
  constructor(parm, desk) {
    this.desk = desk;
    this.lists = [];
    this.tabs = new Tabs({
      label: parm.label || "Folder",
      style: "folder",
      selected: (i) => this.choose(i),
    });
    this.element = el(
      "div",
      { class: "field folder-field", data: { token: parm.token ?? "" } },
      this.tabs.element,
    );
  }

  update(parm) {
    const told = parm.value ?? 0;
    if (!this.parm || told !== this.parm.value) this.tabs.index = told;
    this.parm = parm;
    this.element.hidden = !isShown(parm);
    this.tabs.setLabels(parm.tabs.map((tab) => tab.label));
    parm.tabs.forEach((tab, i) => this.tabs.setBadge(i, anyChanged(tab.parms) ? "•" : "", "changed"));
    this.lists.length = Math.min(this.lists.length, parm.tabs.length);
    this.fill(this.tabs.index);
  }

  fill(index) {
    const tab = this.parm.tabs[index];
    if (!tab) return;
    this.lists[index] ??= new ParmList(this.tabs.panels[index], this.desk);
    this.lists[index].update(tab.parms);
  }

  choose(index) {
    this.fill(index);
    this.desk.edit({ action: "set", token: this.parm.token, value: index }).catch(() => {}); // the page has turned already
  }
}

/** A folder that is no tabs: its groups one below the other in a frame, which can be closed when it is collapsible. */
export class GroupField {
  constructor(parm, desk) {
    this.desk = desk;
    this.groups = [];
    this.frame =
      parm.style === "collapsible"
        ? el("details", { class: "group-frame", open: true })
        : el("div", { class: "group-frame" });
    this.element = el(
      "div",
      {
        class: "field folder-field",
        role: "group",
        "aria-label": parm.label,
        data: { token: parm.token ?? "" },
      },
      this.frame,
    );
  }

  update(parm) {
    this.parm = parm;
    this.element.hidden = !isShown(parm);
    while (this.groups.length < parm.tabs.length) this.groups.push(this.makeGroup());
    this.groups.length = parm.tabs.length;
    arrange(
      this.frame,
      this.groups.flatMap(({ title, rows }) => [title, rows]),
    );
    parm.tabs.forEach((tab, i) => {
      setText(this.groups[i].title, tab.label);
      this.groups[i].list.update(tab.parms);
    });
  }

  makeGroup() {
    const closes = this.frame instanceof HTMLDetailsElement && this.groups.length === 0;
    const rows = el("div");
    return {
      title: el(closes ? "summary" : "h3", { class: "group-title" }),
      rows,
      list: new ParmList(rows, this.desk),
    };
  }
}
