// The small panel in which the expression of one channel is written.

import { button, el } from "./dom.js";
import { closePopup, openPopup } from "./popup.js";

const LANGUAGES = [
  ["hscript", "Expression"],
  ["python", "Python"],
];

function languageChoice(current) {
  const select = el("select", { class: "entry", "aria-label": "Language" });
  for (const [word, label] of LANGUAGES)
    select.append(el("option", { value: word, text: label, selected: word === current }));
  return select;
}

/** Opens the panel beside `anchor`. `expression` is {text, language, error} or null; `apply` gets text and language. */
export function editExpression(anchor, { at, channel, expression, apply, remove }) {
  const text = el("textarea", {
    class: "entry code",
    rows: 4,
    cols: 44,
    spellcheck: "false",
    "aria-label": `Expression of ${channel}`,
  });
  text.value = expression?.text ?? "";
  const language = languageChoice(expression?.language ?? "hscript");
  const done = () => apply(text.value, language.value);
  text.addEventListener("keydown", (event) => {
    if (event.key === "Enter" && (event.ctrlKey || event.metaKey)) done();
  });
  const content = el(
    "div",
    { class: "expression" },
    el("p", { class: "popup-title" }, el("span", { text: "Expression of " }), el("code", { text: channel })),
    text,
    expression?.error ? el("p", { class: "error", text: expression.error }) : null,
    el(
      "div",
      { class: "button-row" },
      language,
      el("span", { class: "grow" }),
      expression ? button("Remove", remove) : null,
      button("Cancel", () => closePopup()),
      button("Apply", done, { class: "primary", title: "Apply (Ctrl+Enter)" }),
    ),
  );
  if (openPopup(anchor, content, { label: `Expression of ${channel}`, at })) text.focus();
}
