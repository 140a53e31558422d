// A metadata file as it is on the disk, with the findings below the lines they are about.

import { api } from "./api.js";
import { arrange, el } from "./dom.js";
import { findingBlock } from "./findings.js";
import { colored } from "./toml_colors.js";

// The last directories are what tells files of one name apart.
function endOf(path) {
  const parts = path.split("/");
  return parts.length > 4 ? `…/${parts.slice(-4).join("/")}` : path;
}

export class Source {
  constructor(element) {
    this.files = [];
    this.findings = [];
    this.choice = el("select", {
      class: "entry",
      "aria-label": "File",
      onchange: () => this.load(Number(this.choice.value)),
    });
    this.path = el("span", { class: "quiet path" });
    this.lines = el("div", { class: "source", tabindex: 0, role: "region", "aria-label": "Source" });
    element.append(el("div", { class: "panel-bar" }, this.choice, this.path), this.lines);
  }

  setFiles(files) {
    this.files = files;
    arrange(
      this.choice,
      files.map((file) => el("option", { value: file.id, text: file.shown ?? file.path, title: file.path })),
    );
    if (files.some((file) => file.id === this.file)) this.choice.value = this.file;
    else this.file = undefined;
  }

  setFindings(findings) {
    this.findings = findings;
  }

  /** Reads the shown file again and keeps the place; the first file when none is shown yet. */
  async refresh() {
    const file = this.file ?? this.files[0]?.id;
    if (file !== undefined) await this.load(file);
  }

  async load(file) {
    const top = this.file === file ? this.lines.scrollTop : 0;
    this.file = file;
    this.choice.value = file;
    try {
      const { path, lines } = await api.source(file);
      this.path.textContent = endOf(path);
      this.path.title = path;
      this.draw(path, lines);
    } catch (error) {
      arrange(this.lines, [el("p", { class: "error", text: error.message })]);
    }
    this.lines.scrollTop = top;
  }

  draw(path, lines) {
    const here = this.findings.filter((finding) => finding.file === path);
    const rows = here.filter((finding) => !finding.line).map((finding) => findingBlock(finding));
    colored(lines).forEach((pieces, i) => {
      const mine = here.filter((finding) => finding.line === i + 1);
      rows.push(
        el(
          "div",
          { class: `source-line ${mine[0]?.severity ?? ""}`, data: { line: i + 1 } },
          el("span", { class: "number", text: i + 1 }),
          el("code", {}, ...pieces),
        ),
      );
      rows.push(...mine.map((finding) => findingBlock(finding)));
    });
    arrange(this.lines, rows);
  }

  fileOf(finding) {
    return this.files.find((candidate) => candidate.path === finding.file);
  }

  /** True for a finding in a file that can be shown: metadata may also come from a plug-in or a catalogue. */
  has(finding) {
    return this.fileOf(finding) !== undefined;
  }

  /** Shows the line of a finding. */
  async showFinding(finding) {
    await this.load(this.fileOf(finding).id);
    const line = this.lines.querySelector(`[data-line="${finding.line ?? 1}"]`);
    line?.scrollIntoView({ block: "center" });
    line?.classList.add("flash");
  }
}
