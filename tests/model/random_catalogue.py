"""Nasty random catalogues: valid for the catalogue's loader, and as odd as metadata can be.

The same seed gives the same catalogue. Run as a program it prints one:

    random_catalogue.py --seed 7 --nodes 150 > nasty.json

Left out on purpose, because they say nothing about the interface rules: texts with a NUL, numbers beyond 32-bit
floats, metadata for parameters that do not exist, a node or a renderer parameter declared twice.
"""

import argparse
import json
import random

from catalogue_view import CODE, TYPE_WORDS, type_name

NAMES = ("a", "base_color", "specularIOR", "xScale", "HDRMap", "color2Tint", "_leading", "double__bar", "trailing_",
         "größe", "名前", "Ünder_score", "iI", "aB_cD", "KdColor", "opacity", "per%cent", "x")
TEXTS = ("", "plain", "two words", "ünïcödé – текст", "100 %s %n %d", "tab\there", "a\\tb\\tc", "line\\nbreak\\n",
         "real\nbreak", "\"quoted\" 'text'", "back\\slash", "a;b", "{ broken", "日本語", " edges ", "x" * 3000)
FLOATS = (0.0, -0.0, 1.0, -1.0, 0.1, 0.3333333, 255.0, 256.0, 1000.5, -0.5, 1e-30, 3e38, -3e38, 16777217.0, 1e10)
INTS = (0, 1, -1, 7, 255, 2147483647, -2147483648)
UINTS = (0, 1, 2147483647, 2147483648, 4294967295)
MENUS = ("", "a;A;b;B", "a;A;b", "lone", ";", ";;", "a;;b;B", ";no token;b;B", "a;x\\ty\\tz;b;\\t", "a;A;",
         "à;À;ß;Straße", "a;A;a;again", "%s;%d")
HOUDINI_TYPES = ("", "visibility", "file:image", "file:", "file:*.ass *.ass.gz", "file:image:more", "file::x", "file",
                 "FILE:image", "opfilter", "opfilter:!!VOP!!", "opfilter:", "opfilter:a:b", "opfilters:x", "menu:",
                 "menu", "menu:replace", "menu:replace:", "menu::menu", "menu:bogus:menu", "menu:bogus:bogus",
                 "menu:single:bogus", "menu:Single:menu", "menu:replace::menu", "menu:single:menu:more",
                 "anything") + tuple(
                     f"menu:{kind}:{source}"
                     for kind in ("replace", "toggle", "append", "wild", "exclusive", "single")
                     for source in ("menu", "python", "hscript"))
CONDITIONS = ("", "{ a == 1 }", "a == 1", "{ a == ", "{}", "{ a == \"\" } { x != 2 b < 3 }", "}{", "%s",
              "{ ü =~ *x* }")
SCRIPTS = ("", "python:print('hi')", "hscript:echo hi", "echo bare", "python:", "hscript:", "Python:x", " python:x",
           "hscript:python:both", "python:python:twice", "python:größe = 1\\nx")
EXPRESSIONS = ("", "$F", "python:hou.frame()", "hscript:$F", "python:", "python:python:x", " python:x", "ch('ü')")
FOLDERS = ("", ";", "Main;2", "Main;1;More;1", "Main", "Main;2;More", "A;;2", ";A;1;;B;1;", "A;x;B; 3y;C;-1;D;+2",
           "Täb;4;%s;0", "A;1;B;1;C;1;D;1;E;1", "A;99999999999999999999;B;-3000000000")
EXTRA_MENUS = ("", ";;", "a;A", "a;A;b;B", "a;A;b", "lone", "a;;A;b;B", "ü;Ü;%s;%d", "a;x\\ty")
RAMP_WORDS = ("", "one two", "a b c d", "   ", "one")
EXTRA_KEYS = ("houdini.parm.{kind}.{name}",) * 12 + (
    "houdini.parm..{kind}.{name}", "houdini.parm.{kind}.{name}.", "houdini.parm.{kind}..{name}")
MALFORMED_KEYS = ("houdini.parm.", "houdini.parm.{kind}", "houdini.parm.{name}", "houdini.parm..{kind}",
                  "houdini.parm.%s%n", "houdini.parm....", "houdini.parm.{kind}.{name}.a.b", "houdini.parm",
                  "houdini.parmx.{kind}.{name}", "Houdini.parm.{kind}.{name}", "houdini.parm.{kind}.{name}.label")
EXTRA_KINDS = ("folder", "heading", "separator", "toggle", "ramp_float", "ramp_rgb", "menu", "button", "Folder", "int",
               "ü")
LODS = ("", "high", "Low", "m", "x", "ü")
SHADER_TYPES = ("light_filter", "atmosphere", "volume", "surface", "", "Volume")
CAMERA_NAMES = ("position", "matrix", "fov", "exposure", "near_clip", "name")
UNKNOWN_CODES = (16, 17, 42, 200, 254)

DEFAULTS = {
    "byte": lambda rng: rng.choice((0, 1, 128, 255)), "int": lambda rng: rng.choice(INTS),
    "uint": lambda rng: rng.choice(UINTS), "boolean": lambda rng: rng.random() < 0.5,
    "float": lambda rng: rng.choice(FLOATS), "string": lambda rng: rng.choice(TEXTS)}
for _word, _size in (("rgb", 3), ("rgba", 4), ("vector", 3), ("point", 3), ("point2", 2), ("matrix", 16)):
    DEFAULTS[_word] = lambda rng, size=_size: [rng.choice(FLOATS) for _ in range(size)]


class NodeMaker:
    """Makes one node; `maybe(p)` is the coin of all decisions.

    scripts  probabilities of a script on a renderer parameter and on an extra one
    """

    def __init__(self, rng, name, scripts):
        self.rng = rng
        self.parm_scripts, self.extra_scripts = scripts
        self.metadata = []
        self.node = {"name": name, "kind": "camera" if self.maybe(0.12) else "shader",
                     "output": rng.choice(TYPE_WORDS + ("undefined",)), "builtin": self.maybe(0.15)}
        if self.maybe(0.03):
            del self.node["output"]
            self.node["output_code"] = rng.choice(UNKNOWN_CODES)

    def maybe(self, probability):
        return self.rng.random() < probability

    def make(self):
        self.node["parameters"] = self._parameters()
        self.names = [p["name"] for p in self.node["parameters"]]
        self._node_metadata()
        for parameter in self.node["parameters"]:
            self._parameter_metadata(parameter)
        extras = self._extras()
        self._order(extras)
        self._disturb()
        self.node["metadata"] = self.metadata
        return self.node

    # Declarations

    def _parameters(self):
        rng = self.rng
        count = 0 if self.maybe(0.05) else rng.randint(1, 9)
        names = [rng.choice(NAMES) + (str(i) if i else "") for i in range(count)]
        if self.maybe(0.02):
            names.append("long_" + "n" * 10000)
        names += [name for name in CAMERA_NAMES if self.maybe(0.5 if self.node["kind"] == "camera" else 0.04)]
        rng.shuffle(names)
        return [self._parameter(name) for name in dict.fromkeys(names)]

    def _parameter(self, name):
        rng = self.rng
        if self.maybe(0.06):
            return {"name": name, "type_code": rng.choice(UNKNOWN_CODES)}
        word = rng.choice(TYPE_WORDS + ("undefined", "array", "array", "string", "enum", "int"))
        record = {"name": name}
        record.update({"type_code": CODE[word]} if self.maybe(0.1) else {"type": word})
        if word == "array":
            self._element(record)
        elif word == "enum":
            items = ("perlin", "cellNoise", "fractal_sum", "größe", "A", "")
            record["enum"] = [rng.choice(items) for _ in range(rng.randint(0, 4))]
            if self.maybe(0.85):
                record["default"] = rng.choice((0, 0, 1, 2, 3, 99))
        elif word in DEFAULTS and self.maybe(0.85):
            record["default"] = DEFAULTS[word](rng)
        return record

    def _element(self, record):
        rng = self.rng
        code = rng.choice([CODE[word] for word in CODE] + list(UNKNOWN_CODES[:2]))
        word = type_name(code)
        record.update({"element": word} if word and self.maybe(0.8) else {"element_code": code})
        make = DEFAULTS.get(word)
        if word == "enum":
            make = DEFAULTS["byte"]
        if self.maybe(0.8):
            record["default"] = [make(rng) for _ in range(rng.randint(0, 4))] if make else []

    # Metadata

    def put(self, key, value, parameter=None):
        """A metadata item; a text may be cut into continuation keys, and any value may be of a wrong type."""
        if self.maybe(0.03):
            value = self.rng.choice((True, False, 0.0, 2.5, 7, "text", ""))
        if isinstance(value, str) and self.maybe(0.08):
            return self._put_continued(key, value, parameter)
        self._put(key, value, parameter)

    def _put(self, key, value, parameter):
        item = {} if parameter is None else {"parameter": parameter}
        item.update(key=key, value=value)
        self.metadata.append(item)

    def _put_continued(self, key, text, parameter):
        """Pieces under key, key2, key3, ...; sometimes one is missing or empty, sometimes they come in any order."""
        pieces = self.rng.choice((2, 3, 5, 12, 101))
        length = len(text) // pieces + 1
        keys = [key] + [f"{key}{n}" for n in range(2, pieces + 1)]
        items = [(k, text[i * length:(i + 1) * length] or self.rng.choice(("", "+"))) for i, k in enumerate(keys)]
        if self.maybe(0.4):
            items.pop(self.rng.randrange(len(items)))
        if self.maybe(0.3):
            self.rng.shuffle(items)
        for k, piece in items:
            self._put(k, piece, parameter)

    def _node_metadata(self):
        for key, probability, values in (
                ("houdini.label", 0.3, TEXTS), ("houdini.icon", 0.2, ("VOP_noise", "", "ü")),
                ("houdini.lod", 0.3, LODS), ("houdini.shader_type", 0.3, SHADER_TYPES),
                ("houdini.help_url", 0.2, ("https://korvan.example/noise", "", "ü")),
                ("houdini.category", 0.5, ("Texture", "A/B", "", "ü")),
                ("houdini.skip", 0.12, (True, False, "true", 1)), ("unrelated", 0.2, TEXTS)):
            if self.maybe(probability):
                self.put(key, self.rng.choice(values))

    def _parameter_metadata(self, parameter):
        flags = (True, False)
        word = type_name(parameter.get("type_code", CODE.get(parameter.get("type"))))
        text_like = word in ("string", "array", "int")
        forms = ("visibility",) if word == "int" and self.maybe(0.5) else HOUDINI_TYPES
        layout = 0.6 if word == "boolean" else 0.25
        for key, probability, values in (
                ("houdini.label", 0.25, TEXTS), ("desc", 0.3, TEXTS),
                ("houdini.type", 0.75 if text_like else 0.15, forms),
                ("houdini.disable_when", 0.15, CONDITIONS), ("houdini.hide_when", 0.15, CONDITIONS),
                ("houdini.menu_script", 0.2, TEXTS + SCRIPTS), ("houdini.expression", 0.15, EXPRESSIONS),
                ("houdini.callback", self.parm_scripts, SCRIPTS), ("houdini.invisible", 0.15, flags),
                ("houdini.no_menu_caps", 0.2, flags), ("houdini.join_next", layout, flags),
                ("houdini.no_label", layout, flags), ("linkable", 0.3, flags), ("houdini.no_input", 0.2, flags),
                ("min", 0.25, FLOATS + INTS), ("max", 0.25, FLOATS + INTS), ("softmin", 0.2, FLOATS),
                ("softmax", 0.2, FLOATS), ("houdini.menu", 0.5 if word in ("string", "enum") else 0.1, MENUS),
                ("houdini.skip", 0.06, flags)):
            if self.maybe(probability):
                self.put(key, self.rng.choice(values), parameter["name"])

    def _extras(self):
        extras = []
        for i in range(self.rng.choice((0, 0, 1, 2, 4, 7))):
            kind = self.rng.choice(EXTRA_KINDS)
            # An extra may have the name of a parameter or of another extra: both stand in the list.
            clash = self.names + extras if self.maybe(0.05) else []
            name = self.rng.choice(clash) if clash else f"{self.rng.choice(NAMES)}_x{i}"
            extras.append(name)
            self._extra(kind, name, extras)
        for key in MALFORMED_KEYS:
            if self.maybe(0.03):
                kind, name = self.rng.choice(EXTRA_KINDS), self.rng.choice(NAMES)
                self.put(key.format(kind=kind, name=name), self.rng.choice(TEXTS))
        return extras

    def _extra(self, kind, name, extras):
        key = self.rng.choice(EXTRA_KEYS).format(kind=kind, name=name)
        value = self._arguments(kind, extras)
        if self.maybe(0.04):
            value = self.rng.choice((True, 1.5, 3))
        subkeys = [(key + ".label", TEXTS), (key + ".icon", ("", "BUTTONS_reload")), (key + ".desc", TEXTS),
                   (key + ".join_next", (True, False)), (key + ".no_label", (True, False))]
        if self.maybe(self.extra_scripts):
            subkeys.append((key + ".callback", SCRIPTS))
        items = [(k, self.rng.choice(values)) for k, values in subkeys if self.maybe(0.35)]
        items.insert(self.rng.randint(0, len(items)), (key, value))
        for k, v in items:
            if k == key:
                self._put(k, v, None)
            else:
                self.put(k, v)

    def _arguments(self, kind, extras):
        rng = self.rng
        tables = {"folder": FOLDERS, "menu": EXTRA_MENUS, "toggle": ("on", "off", "", "On", "on ", "1"),
                  "button": SCRIPTS if self.maybe(self.extra_scripts) else ("",), "heading": TEXTS}
        if kind not in ("ramp_float", "ramp_rgb"):
            return rng.choice(tables.get(kind, TEXTS))
        if self.maybe(0.3):
            return rng.choice(RAMP_WORDS)
        words = [rng.choice(self.names + extras + ["unknown", "name"]) for _ in range(3)]
        return rng.choice((" ", "  ", " ")).join(words) + rng.choice(("", " "))

    def _order(self, extras):
        if self.maybe(0.5):
            words = self.names + extras + ["unknown", "name", "fov"]
            self.rng.shuffle(words)
            words = words[:self.rng.randint(0, len(words))]
            if words and self.maybe(0.4):
                words.insert(0, self.rng.choice(words))
            self.put("houdini.order", self.rng.choice((" ", "   ")).join(words) + self.rng.choice(("", " ", "\tx")))

    def _disturb(self):
        """Sometimes the items stand in any order, and some keys are given again, with another value."""
        if self.maybe(0.2):
            self.rng.shuffle(self.metadata)
        for item in list(self.metadata):
            if self.maybe(0.02):
                value = item["value"] if self.maybe(0.3) else self.rng.choice(("again", "", True, False, 3.0))
                self.metadata.append(dict(item, value=value))


def node_names(rng, count):
    """Distinct names; some differ only by the prefix that operator names leave out."""
    names = {}
    while len(names) < count:
        if names and rng.random() < 0.06:
            twin = rng.choice(list(names))
            name = twin[len("zelk__"):] if twin.startswith("zelk__") else "zelk__" + twin
        else:
            middle = rng.choice(("_noise_", "MixColor", "_", "HDRMap", "Größe"))
            name = rng.choice(("", "zelk__")) + "rnd" + middle + str(len(names))
            if rng.random() < 0.005:
                name += "n" * 10000
        names.setdefault(name)
    return list(names)


def random_catalogue(seed, nodes):
    """A catalogue as the object that its JSON file holds."""
    rng = random.Random(seed)
    # Scripts begin somewhere in the list, so that what comes before them sees the callback slots empty.
    first_parm, first_extra = rng.randint(0, nodes), rng.randint(0, nodes)
    made = []
    for i, name in enumerate(node_names(rng, nodes)):
        scripts = (0.05 if i >= first_parm else 0.0, 0.2 if i >= first_extra else 0.0)
        made.append(NodeMaker(rng, name, scripts).make())
    return {"nodes": made}


def write_catalogue(path, seed, nodes):
    with open(path, "w", encoding="utf-8") as file:
        json.dump(random_catalogue(seed, nodes), file, ensure_ascii=bool(seed % 2), indent=1)


def main():
    parser = argparse.ArgumentParser(description="Prints a nasty random catalogue.")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--nodes", type=int, default=100)
    arguments = parser.parse_args()
    print(json.dumps(random_catalogue(arguments.seed, arguments.nodes), indent=1))


if __name__ == "__main__":
    main()
