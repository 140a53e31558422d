// What gives the pane its shape: headings, lines, and folders as tabs.

import { Tabs } from "./tabs.js";
import { ParmList } from "./parm_list.js";
import { el, setText } from "./dom.js";
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

/** True when something inside differs from its default. */
export function anyChanged(parms) {
  return parms.some((parm) => parm.changed || (parm.tabs ?? parm.instances ?? []).some((group) => anyChanged(group.parms)));
}

/** Tabs, each with its own list of fields, which is made when the tab is first looked at. */
export class FolderField {
  constructor(parm, desk) {
    this.desk = desk;
    this.lists = [];
    this.tabs = new Tabs({ label: parm.label || "Folder", style: "folder", selected: (i) => this.choose(i) });
    this.element = el("div", { class: "field folder-field", data: { token: parm.token ?? "" } }, this.tabs.element);
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
    this.desk.edit({ action: "set", token: this.parm.token, value: index }).catch(() => {});  // the page has turned already
  }
}
