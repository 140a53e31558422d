// Colours: the node's numbers are linear light, the screen's are sRGB.

const clamp = (x) => Math.max(0, Math.min(1, x));

export function toScreen(x) {
  const c = clamp(x);
  return c <= 0.0031308 ? 12.92 * c : 1.055 * c ** (1 / 2.4) - 0.055;
}

function toLinear(x) {
  const c = clamp(x);
  return c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4;
}

/** "#rrggbb" of a linear colour, what is above 1 shown as 1. */
export function hexOf(rgb) {
  return `#${rgb
    .slice(0, 3)
    .map((x) =>
      Math.round(toScreen(x) * 255)
        .toString(16)
        .padStart(2, "0"),
    )
    .join("")}`;
}

/** The linear colour of "#rgb" or "#rrggbb", with or without "#"; null for anything else. */
export function parseHex(text) {
  const digits = /^#?([0-9a-f]{3}|[0-9a-f]{6})$/i.exec(text.trim())?.[1];
  if (!digits) return null;
  const pairs = digits.length === 3 ? [...digits].map((d) => d + d) : digits.match(/../g);
  return pairs.map((pair) => tidy(toLinear(parseInt(pair, 16) / 255)));
}

/** Five digits are more than a screen shows. */
export function tidy(x) {
  return Number(x.toFixed(5));
}

/** Hue, saturation and brightness, each 0 to 1, of a linear colour as the screen shows it. */
export function hsvOf(rgb) {
  const [r, g, b] = rgb.slice(0, 3).map(toScreen);
  const max = Math.max(r, g, b);
  const range = max - Math.min(r, g, b);
  let hue = 0;
  if (range > 0 && max === r) hue = ((g - b) / range + 6) % 6;
  else if (range > 0 && max === g) hue = (b - r) / range + 2;
  else if (range > 0) hue = (r - g) / range + 4;
  return [hue / 6, max > 0 ? range / max : 0, max];
}

/** The linear colour of hue, saturation and brightness on the screen. */
export function rgbOf([h, s, v]) {
  const part = (n) => {
    const k = (n + h * 6) % 6;
    return tidy(toLinear(v - v * s * Math.max(0, Math.min(k, 4 - k, 1))));
  };
  return [part(5), part(3), part(1)];
}
