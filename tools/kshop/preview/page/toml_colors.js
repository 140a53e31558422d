// The lines of a TOML file in coloured pieces. What is not recognised stays plain.

import { el } from "./dom.js";

const PIECES =
  /(#.*$)|("""|''')|("(?:[^"\\]|\\.)*"|'[^']*')|(\[[^\]]*\]?)|(\b(?:true|false)\b|[-+]?\b\d+(?:\.\d+)?\b)/g;
const CLASSES = ["comment", "text", "text", "table", "literal"];
const OPENING = 1; // the place among CLASSES of the quotes that open a text of several lines

// Where a text of several lines ends: quotes that no backslash stands before, or anywhere for '''.
const ENDS = { '"""': /(?:[^"\\]|\\.|"(?!""))*?"""+/y, "'''": /.*?'''+/y };

const piece = (style, text) => el("span", { class: style, text });

/** For each line the pieces that it consists of. */
export function colored(lines) {
  let open = ""; // the quotes of the text that a line begins in
  return lines.map((line) => {
    const result = coloredLine(line, open);
    open = result.open;
    return result.pieces;
  });
}

/** Where the text that `quotes` opened before `from` ends in the line; -1 when it goes on in the next one. */
function endOfText(line, quotes, from) {
  ENDS[quotes].lastIndex = from;
  return ENDS[quotes].test(line) ? ENDS[quotes].lastIndex : -1;
}

function coloredLine(line, before) {
  if (!before && /^\s*\[/.test(line)) return { pieces: [piece("table", line)], open: "" };
  const pieces = [];
  let from = 0;
  /** Takes a text that began at `begin`; false when it goes on in the next line. */
  const takeText = (begin, after, quotes) => {
    const end = endOfText(line, quotes, after);
    from = end < 0 ? line.length : end;
    pieces.push(piece("text", line.slice(begin, from)));
    return end >= 0;
  };
  if (before && !takeText(0, 0, before)) return { pieces, open: before };
  for (;;) {
    PIECES.lastIndex = from;
    const match = PIECES.exec(line);
    if (!match) return { pieces: [...pieces, line.slice(from)], open: "" };
    pieces.push(line.slice(from, match.index));
    from = match.index + match[0].length;
    const kind = match.slice(1).findIndex((part) => part !== undefined);
    if (kind === OPENING) {
      if (!takeText(match.index, from, match[0])) return { pieces, open: match[0] };
      continue;
    }
    const isKey = CLASSES[kind] === "text" && /^\s*[=.]/.test(line.slice(from));
    pieces.push(piece(isKey ? "key" : CLASSES[kind], match[0]));
  }
}
