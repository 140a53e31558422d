// A colour: swatch with a picker, and its numbers. An alpha, when there is one, has a number of its own.

import { NumberField } from "./field_number.js";
import { button } from "./dom.js";
import { hexOf } from "./color.js";
import { openPicker } from "./color_picker.js";

export class ColorField extends NumberField {
  constructor(parm, desk) {
    super({ ...parm, slider: false }, desk);
    this.swatch = button("", () => this.pick(), {
      class: "swatch",
      "aria-haspopup": "dialog",
      "aria-expanded": "false",
    });
    this.numbers.prepend(this.swatch);
  }

  show() {
    super.show();
    const values = this.parm.values;
    this.swatch.style.setProperty("--color", hexOf(values));
    this.swatch.style.setProperty("--alpha", values[3] ?? 1);
    this.swatch.disabled = !this.enabled;
    this.swatch.title = values.some((x) => x > 1) ? "Brighter than the screen can show" : "Choose a colour";
    this.swatch.setAttribute("aria-label", `${this.parm.label}: choose a colour`);
  }

  pick() {
    const changed = (rgb, gesture) => {
      const values = [...rgb, ...this.parm.values.slice(3)];
      this.swatch.style.setProperty("--color", hexOf(values));
      this.set(values, gesture);
    };
    openPicker(this.swatch, this.parm.values, changed, `Colour of ${this.parm.label}`);
  }
}
