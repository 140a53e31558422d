// What was set, as a text to take away: Python for a scene, or lines for the metadata file.

import { api } from "./api.js";
import { button, el, setText } from "./dom.js";
import { Tabs } from "./tabs.js";

const FORMS = [
  ["python", "Python"],
  ["mtd", ".mtd lines"],
];

async function copy(text, knob) {
  try {
    await navigator.clipboard.writeText(text);
    setText(knob, "Copied");
  } catch {
    setText(knob, "Select the text and copy it"); // the browser does not allow it from here
  }
}

async function fill(target, type, as) {
  try {
    target.textContent = (await api.export(type, as)).text;
  } catch (error) {
    target.textContent = error.message;
  }
}

/** Opens the panel for a node type. */
export function openExport(type) {
  const tabs = new Tabs({ label: "Form", style: "side-tabs", selected: () => setText(knob, "Copy") });
  tabs.setLabels(FORMS.map(([, label]) => label));
  const texts = FORMS.map(([as], i) => {
    const text = el("pre", { class: "export-text scroll", tabindex: 0 });
    tabs.panels[i].append(text);
    fill(text, type, as);
    return text;
  });
  const dialog = el("dialog", { class: "dialog", "aria-label": "Copy out" });
  const knob = button("Copy", () => copy(texts[tabs.index].textContent, knob), { class: "primary" });
  dialog.append(
    el("h2", { text: "Copy out what differs from the defaults" }),
    tabs.element,
    el(
      "div",
      { class: "button-row" },
      el("span", { class: "grow" }),
      button("Close", () => dialog.close()),
      knob,
    ),
  );
  dialog.addEventListener("close", () => dialog.remove());
  document.body.append(dialog);
  dialog.showModal();
}
