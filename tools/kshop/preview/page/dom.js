// Small helpers for making elements. Data enters the page as text and properties only, never as markup.

const SVG = "http://www.w3.org/2000/svg";

function apply(element, attributes) {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined || value === null || value === false) continue;
    if (name === "text") element.textContent = value;
    else if (name === "data") Object.assign(element.dataset, value);
    else if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
    else element.setAttribute(name, value === true ? "" : value);
  }
}

/** An element with attributes; `text` is its text, `data` its dataset, `onNAME` a listener of the event NAME. */
export function el(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  apply(element, attributes);
  element.append(...children.filter((child) => child !== null && child !== undefined));
  return element;
}

/** The same for SVG. */
export function svg(tag, attributes = {}, ...children) {
  const element = document.createElementNS(SVG, tag);
  apply(element, attributes);
  element.append(...children);
  return element;
}

/** A push button. `label` is what it says; give `title` when it says it with a symbol. */
export function button(label, onclick, attributes = {}) {
  const named = attributes.title ? { "aria-label": attributes.title } : {};
  return el("button", { type: "button", text: label, onclick, ...named, ...attributes });
}

/** Sets an attribute, or takes it away when the value is null or false. */
export function setAttribute(element, name, value) {
  if (value === null || value === undefined || value === false) element.removeAttribute(name);
  else if (element.getAttribute(name) !== String(value)) element.setAttribute(name, value);
}

/** Sets a text only when it differs, so that selections and screen readers are left in peace. */
export function setText(element, text) {
  if (element.textContent !== text) element.textContent = text;
}

/** Puts `children` into `parent` in this order; what is in place already is not moved, so it keeps the focus. */
export function arrange(parent, children) {
  const wanted = new Set(children);
  for (const child of [...parent.childNodes]) if (!wanted.has(child)) child.remove();
  let place = parent.firstChild;
  for (const child of children) {
    if (child === place) place = place.nextSibling;
    else parent.insertBefore(child, place);
  }
}

/** Keeps one element of a group reachable by Tab; arrows move inside. `next` gets the current index and the count. */
export function roving(elements, current) {
  elements.forEach((element, i) => {
    element.tabIndex = i === current ? 0 : -1;
  });
}

/** The index that an arrow key leads to, or -1 when the key is none. */
export function arrowIndex(key, index, count, { vertical = false } = {}) {
  const steps = vertical ? { ArrowUp: -1, ArrowDown: 1 } : { ArrowLeft: -1, ArrowRight: 1 };
  if (key in steps) return (index + steps[key] + count) % count;
  if (key === "Home") return 0;
  if (key === "End") return count - 1;
  return -1;
}
