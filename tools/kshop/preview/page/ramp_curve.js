// The shape of a ramp between its keys, as far as a drawing needs it. Each key says how the ramp goes on behind it.

function parted(x, from, to) {
  const width = to.position - from.position;
  return width > 0 ? (x - from.position) / width : 1;
}

function hermite(t, a, b, ta, tb) {
  const t2 = t * t;
  const t3 = t2 * t;
  return (2 * t3 - 3 * t2 + 1) * a + (t3 - 2 * t2 + t) * ta + (3 * t2 - 2 * t3) * b + (t3 - t2) * tb;
}

// Tangents at both ends of a segment p1..p2 whose neighbours are p0 and p3.
function catmullRom(t, p0, p1, p2, p3) {
  return hermite(t, p1, p2, (p2 - p0) / 2, (p3 - p1) / 2);
}

// A tangent is flat at a local extreme and otherwise never so steep that the curve leaves its keys.
function calm(before, after) {
  return before * after <= 0
    ? 0
    : Math.sign(before) * Math.min(Math.abs(before + after) / 2, 3 * Math.abs(before), 3 * Math.abs(after));
}

function monotone(t, p0, p1, p2, p3) {
  return hermite(t, p1, p2, calm(p1 - p0, p2 - p1), calm(p2 - p1, p3 - p2));
}

function bSpline(t, p0, p1, p2, p3) {
  const s = 1 - t;
  return (
    (s ** 3 * p0 + (3 * t ** 3 - 6 * t * t + 4) * p1 + (3 * s ** 3 - 6 * s * s + 4) * p2 + t ** 3 * p3) / 6
  );
}

const shapes = {
  constant: (t, p0, p1) => p1,
  linear: (t, p0, p1, p2) => p1 + (p2 - p1) * t,
  "catmull-rom": catmullRom,
  monotonecubic: monotone,
  bezier: (t, p0, p1, p2) => hermite(t, p1, p2, 0, 0),
  bspline: bSpline,
  hermite: (t, p0, p1, p2) => hermite(t, p1, p2, 0, 0),
};

/**
 * The ramp as a function from a position to a list of numbers.
 * `keys` are {position, value: [number...], word}, word being the token of the interpolation.
 */
export function rampCurve(keys) {
  const sorted = [...keys].sort((a, b) => a.position - b.position);
  return (x) => {
    if (sorted.length === 0) return [0];
    const next = sorted.findIndex((key) => key.position > x);
    if (next === 0) return sorted[0].value;
    if (next < 0) return sorted.at(-1).value;
    const at = (i) => sorted[Math.max(0, Math.min(sorted.length - 1, i))].value;
    const shape = shapes[sorted[next - 1].word] ?? shapes.linear;
    const t = parted(x, sorted[next - 1], sorted[next]);
    return at(next - 1).map((_, c) =>
      shape(t, at(next - 2)[c], at(next - 1)[c], at(next)[c], at(next + 1)[c]),
    );
  };
}
