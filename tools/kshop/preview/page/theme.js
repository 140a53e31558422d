// Light, dark, or as the system has it.

const KEY = "kshop-preview-theme";
const WORDS = { auto: "◐", light: "☀", dark: "☾" };
const ORDER = ["auto", "light", "dark"];

function stored() {
  try {
    return ORDER.includes(localStorage.getItem(KEY)) ? localStorage.getItem(KEY) : "auto";
  } catch {
    return "auto"; // storage is refused: the choice lasts as long as the page
  }
}

function store(theme) {
  try {
    localStorage.setItem(KEY, theme);
  } catch {
    /* as above */
  }
}

/** Makes `element`, a button, go round the themes. */
export function themeButton(element) {
  let theme = stored();
  const show = () => {
    document.documentElement.dataset.theme = theme;
    element.textContent = WORDS[theme];
    element.title = `Theme: ${theme}`;
    element.setAttribute("aria-label", element.title);
  };
  element.addEventListener("click", () => {
    theme = ORDER[(ORDER.indexOf(theme) + 1) % ORDER.length];
    store(theme);
    show();
  });
  show();
  return element;
}
