// The tab menu: the types by category, and the search over them.

import { arrange, el, roving } from "./dom.js";

const LAST = "Without a menu";

/** Types by sub-menu, sub-menus and labels in alphabetical order, as the host's tab menu has them. */
export function byCategory(types) {
  const groups = new Map();
  for (const type of types) {
    const name = type.tab_menu || LAST;
    groups.set(name, [...(groups.get(name) ?? []), type]);
  }
  const order = ([a], [b]) => (a === LAST) - (b === LAST) || a.localeCompare(b);
  return [...groups]
    .sort(order)
    .map(([name, members]) => [name, members.sort((a, b) => a.label.localeCompare(b.label))]);
}

/** True when every word of the search is in the label, the type's name or the category. */
export function matches(type, text) {
  const hay = `${type.label} ${type.name} ${type.tab_menu ?? ""}`.toLowerCase();
  return text
    .toLowerCase()
    .split(/\s+/)
    .every((word) => hay.includes(word));
}

export class TypeTree {
  /** `choose` hears the name of the type that a person picks; `severity(name)` is the worst finding's, or "". */
  constructor({ element, search, choose, severity }) {
    Object.assign(this, { element, search, choose, severity });
    this.types = [];
    this.items = new Map();
    this.element.setAttribute("role", "listbox");
    this.element.setAttribute("aria-label", "Node types");
    this.element.addEventListener("keydown", (event) => this.key(event));
    search.addEventListener("input", () => this.show());
    search.addEventListener("keydown", (event) => this.searchKey(event));
  }

  setTypes(types) {
    this.types = types;
    this.show();
  }

  setCurrent(name) {
    this.current = name;
    this.show();
    this.items.get(name)?.scrollIntoView({ block: "nearest" });
  }

  get visible() {
    return [...this.element.querySelectorAll(".type")];
  }

  show() {
    const found = this.types.filter((type) => matches(type, this.search.value));
    const groups = byCategory(found).map(([name, members]) => this.group(name, members));
    const nothing = el("p", {
      class: "quiet",
      text: this.types.length ? "No type is called so." : "No shader is registered.",
    });
    arrange(this.element, groups.length ? groups : [nothing]);
    const { visible } = this;
    roving(
      visible,
      Math.max(
        0,
        visible.findIndex((item) => item.dataset.type === this.current),
      ),
    );
  }

  group(name, members) {
    return el(
      "div",
      { class: "group", role: "group", "aria-label": name },
      el("h2", { text: name }),
      ...members.map((type) => this.item(type)),
    );
  }

  item(type) {
    const item =
      this.items.get(type.name) ??
      el(
        "div",
        {
          class: "type",
          role: "option",
          data: { type: type.name },
          onclick: () => this.choose(type.name),
        },
        el("span", { class: "type-label" }),
        el("span", { class: "dot" }),
      );
    this.items.set(type.name, item);
    item.firstChild.textContent = type.label;
    item.lastChild.className = `dot ${this.severity(type.name)}`;
    item.title = type.name;
    item.setAttribute("aria-selected", type.name === this.current);
    return item;
  }

  focusItem(item) {
    if (!item) return;
    roving(this.visible, this.visible.indexOf(item));
    item.focus();
  }

  key(event) {
    const { visible } = this;
    const at = visible.indexOf(document.activeElement);
    const to = { ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: visible.length - 1 }[event.key];
    if (event.key === "Enter" || event.key === " ") this.choose(visible[at]?.dataset.type ?? this.current);
    else if (to === -1) this.search.focus();
    else if (to !== undefined) this.focusItem(visible[Math.min(to, visible.length - 1)]);
    else return;
    event.preventDefault();
  }

  searchKey(event) {
    if (event.key === "ArrowDown") this.focusItem(this.visible[0]);
    else if (event.key === "Enter" && this.visible[0]) this.choose(this.visible[0].dataset.type);
    else if (event.key === "Escape") this.leaveSearch();
    else return;
    event.preventDefault();
  }

  leaveSearch() {
    if (this.search.value === "") return this.focusItem(this.items.get(this.current) ?? this.visible[0]);
    this.search.value = "";
    return this.show();
  }
}
