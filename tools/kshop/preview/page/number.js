// Numbers as a person reads and types them.

const NUMBER = /^[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i;

/** The shortest text that is the same number to single precision, which is what the renderer gets. */
export function numberText(value) {
  if (value === null || value === undefined || !Number.isFinite(value)) return String(value ?? "");
  const single = Math.fround(value);
  for (let digits = 1; digits <= 9; digits += 1) {
    const rounded = Number(value.toPrecision(digits));
    if (Math.fround(rounded) === single) return String(rounded);
  }
  return String(value);
}

/** An integer needs no rounding. */
export function integerText(value) {
  return String(value ?? "");
}

/** The number that a text means, or null. */
export function parseNumber(text) {
  const trimmed = text.trim();
  return NUMBER.test(trimmed) ? Number(trimmed) : null;
}

/** A step that suits a range: a thousandth of it, as a power of ten. */
export function niceStep(min, max) {
  const width = Math.abs(max - min);
  return width > 0 && Number.isFinite(width) ? 10 ** (Math.floor(Math.log10(width)) - 3) : 0.001;
}

/** `value` without the noise of binary fractions below `step`. */
export function roundTo(value, step) {
  const digits = Math.max(0, Math.min(12, Math.ceil(-Math.log10(step) - 1e-9)));
  return Number(value.toFixed(digits));
}

/** The ends of a slider: the range, widened at its soft ends by the value. Never empty or inverted. */
export function sliderEnds(range, value) {
  let min = range.min ?? Math.min(0, range.max ?? 0);
  let max = range.max ?? Math.max(1, min + 1);
  if (!(max > min)) max = min + 1;
  if (!range.min_hard && value < min) min = value;
  if (!range.max_hard && value > max) max = value;
  return { min, max };
}
