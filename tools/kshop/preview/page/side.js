// The panels at the side: changes, console, findings, source; and the marks on their tabs.

import { Console, Records } from "./records.js";
import { Findings, gravest } from "./findings.js";
import { Source } from "./source.js";
import { Tabs } from "./tabs.js";

const LABELS = ["Changes", "Console", "Findings", "Source"];
const CHANGES = 0;
const CONSOLE = 1;
const FINDINGS = 2;
const SOURCE = 3;

/** A number for a badge; there is no room for thousands. */
const countText = (count) => (count > 99 ? "99+" : String(count || ""));

export class Side {
  /** `judged` is called when the findings were read anew. */
  constructor(element, judged) {
    this.tabs = new Tabs({ label: "Panels", style: "side-tabs", selected: (i) => this.opened(i) });
    this.tabs.setLabels(LABELS);
    const panel = (i) => this.tabs.panels[i];
    this.records = new Records(panel(CHANGES), (count) =>
      this.tabs.setBadge(CHANGES, countText(count)),
    );
    this.console = new Console(panel(CONSOLE), () => this.news(CONSOLE));
    this.findings = new Findings(panel(FINDINGS), {
      open: (finding) => this.showFinding(finding),
      canOpen: (finding) => this.source.has(finding),
      changed: (all) => this.judge(all, judged),
    });
    this.source = new Source(panel(SOURCE));
    element.append(this.tabs.element);
  }

  judge(all, judged) {
    this.tabs.setBadge(FINDINGS, countText(all.length), gravest(all)?.severity ?? "");
    this.source.setFindings(all);
    judged();
  }

  news(index) {
    if (this.tabs.index !== index) this.tabs.setBadge(index, "•", "changed");
  }

  opened(index) {
    if (index === CONSOLE) this.tabs.setBadge(CONSOLE, "");
    if (index === SOURCE) this.source.refresh();
  }

  show(index) {
    this.tabs.show(index);
  }

  showFinding(finding) {
    if (!this.source.has(finding)) return this.show(FINDINGS);
    this.show(SOURCE);
    return this.source.showFinding(finding);
  }

  setFiles(files) {
    this.source.setFiles(files);
  }

  /** The shown file may have other lines now. */
  refresh() {
    if (this.tabs.index === SOURCE) this.source.refresh();
  }
}
