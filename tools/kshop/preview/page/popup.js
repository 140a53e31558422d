// What opens over the page beside the element that was clicked: menus and small panels. One at a time.

import { el } from "./dom.js";

const SMALL = 30; // pixels of width
let open = null;

function place(box, anchor) {
  const at = anchor.getBoundingClientRect();
  const room = {
    width: document.documentElement.clientWidth,
    height: document.documentElement.clientHeight,
  };
  box.style.minWidth = `${Math.min(at.width, 320)}px`;
  const size = box.getBoundingClientRect();
  const below = at.bottom + 3 + size.height <= room.height - 4;
  const top = below ? at.bottom + 3 : Math.max(4, at.top - 3 - size.height);
  const left = at.width < SMALL ? at.right - size.width : at.left; // a knob at the end of a field opens inwards
  box.style.left = `${Math.max(4, Math.min(left, room.width - size.width - 4))}px`;
  box.style.top = `${Math.min(top, Math.max(4, room.height - size.height - 4))}px`;
}

/** Closes what is open; the focus goes back to where it was when `refocus` is set. */
export function closePopup({ refocus = true } = {}) {
  if (!open) return;
  const { box, anchor, closed, outside } = open;
  open = null;
  document.removeEventListener("pointerdown", outside, true);
  if (anchor.hasAttribute("aria-expanded")) anchor.setAttribute("aria-expanded", "false");
  const hadFocus = box.contains(document.activeElement);
  box.remove();
  if (refocus && hadFocus) anchor.focus();
  closed?.();
}

/** Opens `content` beside `anchor`. Esc and a click elsewhere close it; a second click on the anchor does too.
 *  `at`: the element below which it opens, when that is not the anchor. */
export function openPopup(anchor, content, { label, role = "dialog", closed, at = anchor } = {}) {
  const again = open?.anchor === anchor;
  closePopup();
  if (again) return null;
  const box = el("div", { class: "popup", role, "aria-label": label }, content);
  box.addEventListener("keydown", (event) => {
    if (event.key !== "Escape") return;
    event.stopPropagation();
    event.preventDefault();
    closePopup();
  });
  const outside = (event) => {
    if (!box.contains(event.target) && !anchor.contains(event.target)) closePopup({ refocus: false });
  };
  document.addEventListener("pointerdown", outside, true);
  document.body.append(box);
  place(box, at);
  if (anchor.hasAttribute("aria-expanded")) anchor.setAttribute("aria-expanded", "true");
  open = { box, anchor, closed, outside };
  return box;
}

function byLetter(items, from, key) {
  const order = [...items.slice(from + 1), ...items.slice(0, from + 1)];
  return order.find((item) => item.textContent.trim().toLowerCase().startsWith(key.toLowerCase()));
}

function moveInMenu(event, items) {
  const at = items.indexOf(document.activeElement);
  const to = { ArrowDown: at + 1, ArrowUp: at - 1 + (at < 0 ? 1 : 0), Home: 0, End: items.length - 1 }[
    event.key
  ];
  if (to !== undefined) {
    event.preventDefault();
    items[(to + items.length) % items.length]?.focus();
  } else if (event.key === "Tab") {
    closePopup();
  } else if (event.key.length === 1 && event.key !== " " && !event.ctrlKey && !event.metaKey) {
    byLetter(items, at, event.key)?.focus();
  }
}

function menuItem(item, i, isList, choose) {
  const chosen = isList
    ? { "aria-selected": String(Boolean(item.chosen)) }
    : { "aria-checked": item.chosen ? "true" : null };
  const role = isList ? "option" : item.chosen === undefined ? "menuitem" : "menuitemcheckbox";
  return el(
    "button",
    {
      type: "button",
      class: "menu-item",
      role,
      tabindex: -1,
      ...chosen,
      disabled: item.disabled,
      data: { token: item.token ?? "" },
      onclick: () => {
        closePopup();
        choose(item, i);
      },
    },
    el("span", { class: "tick", "aria-hidden": "true", text: item.chosen ? "✓" : "" }),
    el("span", { text: item.label }),
    item.note ? el("span", { class: "note", text: item.note }) : null,
  );
}

/** Opens a list of `items` ({label, note, chosen, disabled}); `choose` hears the item and its index. */
export function openMenu(anchor, items, choose, { label, listbox = false } = {}) {
  const buttons = items.map((item, i) => menuItem(item, i, listbox, choose));
  const content = el("div", { class: "menu scroll" });
  content.append(...buttons);
  if (buttons.length === 0) content.append(el("p", { class: "quiet", text: "Nothing to choose." }));
  const box = openPopup(anchor, content, { label, role: listbox ? "listbox" : "menu" });
  if (!box) return;
  box.tabIndex = -1;
  const usable = buttons.filter((b) => !b.disabled);
  box.addEventListener("keydown", (event) => moveInMenu(event, usable));
  (usable.find((b) => items[buttons.indexOf(b)].chosen) ?? usable[0] ?? box).focus();
}
