// Which field shows which kind of parameter.

import { ButtonField, MenuField, StripField, ToggleField } from "./field_choice.js";
import { ColorField } from "./field_color.js";
import { FolderField, GroupField, HeadingField, SeparatorField } from "./field_layout.js";
import { LabelField, TextField } from "./field_text.js";
import { ListField } from "./field_list.js";
import { NumberField } from "./field_number.js";
import { RampField } from "./field_ramp.js";

const makers = {
  float: NumberField,
  int: NumberField,
  vector: NumberField,
  matrix: NumberField,
  color: ColorField,
  toggle: ToggleField,
  strip: StripField,
  menu: MenuField,
  button: ButtonField,
  string: TextField,
  file: TextField,
  node: TextField,
  label: LabelField,
  heading: HeadingField,
  separator: SeparatorField,
  folder: FolderField,
  list: ListField,
  ramp: RampField,
};

// Kinds of menus that stand alone; the others help to fill in a text.
const PURE = new Set(["normal", "single", "exclusive", "mini"]);

/** A field for `parm`, not yet filled. A kind that this page does not know is shown as a text that cannot be changed. */
export function makeField(parm, desk) {
  if (parm.kind === "string" && PURE.has(parm.menu?.kind)) return new MenuField(parm, desk);
  if (parm.kind === "folder" && parm.style) return new GroupField(parm, desk);
  return new (makers[parm.kind] ?? LabelField)(parm, desk);
}
