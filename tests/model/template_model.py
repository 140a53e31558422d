"""The host templates of one parameter, predicted in the form of `kshop describe --json`.

Where the rules leave room, the reading taken here is marked with "Reading:".
"""

from catalogue_view import CODE, binary32, signed32, type_name
from text_rules import leading_integer, pretty_label, split

NO_PLACE = 2147483647  # order of a parameter that the metadata gives no place

VECTOR_SIZES = {"rgb": 3, "rgba": 4, "vector": 3, "point": 3, "point2": 2, "matrix": 16}
CONNECTORS = {"byte": 4, "int": 4, "uint": 4, "boolean": 4, "enum": 4, "float": 3, "rgb": 2, "vector": 2, "point": 2,
              "rgba": 1, "point2": 9, "string": 5, "matrix": 7, "pointer": 28, "node": 28}
HOST_KINDS = {"byte": "PRM_INT", "uint": "PRM_INT", "int": "PRM_INT", "boolean": "PRM_TOGGLE", "float": "PRM_FLT",
              "point2": "PRM_FLT", "matrix": "PRM_FLT", "rgb": "PRM_RGB", "rgba": "PRM_RGBA", "vector": "PRM_XYZ",
              "point": "PRM_XYZ", "string": "PRM_STRING", "node": "PRM_STRING", "enum": "PRM_STRING"}
RANGED = ("byte", "int", "uint", "float", "rgb", "rgba", "vector", "point", "point2", "matrix")
CHOICE_WORDS = {"replace": 0x1, "toggle": 0x2, "append": 0x4, "wild": 0x8, "exclusive": 0x1000, "single": 0x1001}
CHOICE_TOGGLE, CHOICE_SINGLE = 0x2, 0x1001
VISIBILITY_ITEMS = [["camera", "Camera"], ["shadow", "Shadow"], ["reflected", "Reflected"],
                    ["refracted", "Refracted"], ["unused", ""], ["diffuse", "Diffuse"], ["glossy", "Glossy"]]
EXTENDED_NONE, EXTENDED_NO_LABEL, EXTENDED_NODE_PATH = 0, 4, 0x11
RANGE_UI, RANGE_RESTRICTED = 1, 3

# The template that ends a list, wherever it stands.
TERMINATOR = None


def vector_size(code):
    return VECTOR_SIZES.get(type_name(code), 1)


def connector_type(code):
    return CONNECTORS.get(type_name(code), 0)


def default(value=0.0, string=None, meaning=0):
    return {"value": value, "string": string, "meaning": meaning}


def template(kind, token, label, **fields):
    """A template with the host's own values in every field that is not given."""
    record = {"type": kind, "extended": EXTENDED_NONE, "size": 1, "token": token, "label": label, "defaults": [],
              "menu": None, "range": None, "callback": False, "spare": None, "callback_language": None,
              "parm_group": 1, "export_level": 0, "help": None, "disable_when": None, "hide_when": None,
              "invisible": False, "join_next": False, "children": None}
    unknown = set(fields) - set(record)
    if unknown:
        raise KeyError(f"no such template field: {unknown}")
    record.update(fields)
    if record["spare"] is not None and record["callback_language"] is None:
        record["callback_language"] = "hscript"
    return record


def static_menu(choice_type, items):
    """A static menu as the host reads it: the first empty token ends the list."""
    shown = []
    for token, label in items:
        if not token:
            break
        shown.append([token, label])
    return {"type": choice_type, "items": shown}


def script_of(callback):
    """(language, script) of a callback text."""
    for prefix, language in (("hscript:", "hscript"), ("python:", "python")):
        if callback.startswith(prefix):
            return language, callback[len(prefix):]
    return "hscript", callback


class CallbackSlots:
    """The two sticky callback slots, one per generator; once set, a slot stays set."""

    def __init__(self, parm=False, extra=False):
        self.parm = parm
        self.extra = extra


class Parm:
    """A parameter made from one of the renderer's."""

    is_extra = False

    def __init__(self, entry, parameter, index, report):
        meta = parameter.meta
        self.report = report
        self.index = index
        self.order = NO_PLACE
        self.name = parameter.name
        self.default = parameter.default
        self.is_array = parameter.code == CODE["array"]
        self.code = parameter.element_code if self.is_array else parameter.code
        self.connector = connector_type(self.code)
        self.label = meta.text("houdini.label", pretty_label(self.name, True))
        self.help = meta.text("desc")
        self.houdini_type = meta.text("houdini.type")
        self.disable_when = meta.text("houdini.disable_when")
        self.hide_when = meta.text("houdini.hide_when")
        self.menu_script = meta.text("houdini.menu_script").replace("\\n", "\n")
        self.callback = meta.text("houdini.callback")
        self.invisible = meta.flag("houdini.invisible")
        self.join_next = meta.flag("houdini.join_next")
        self.no_label = meta.flag("houdini.no_label")
        self.no_input = meta.flag("houdini.no_input", not meta.flag("linkable", True))
        self._read_expression(meta.text("houdini.expression"))
        self._read_menu(entry, parameter)
        self.hard = (meta.number("min", None), meta.number("max", None))
        self.soft = (meta.number("softmin", 0.0), meta.number("softmax", 1.0))

    def _read_expression(self, text):
        self.expression_meaning = 0
        self.expression = text
        if text.startswith("python:"):
            self.expression_meaning = 2
            self.expression = text[len("python:"):]
        elif text:
            self.expression_meaning = 1

    def _read_menu(self, entry, parameter):
        words = split(parameter.meta.text("houdini.menu"), ";", keep_empty=True)
        if not words:
            capitalize = not parameter.meta.flag("houdini.no_menu_caps")
            names = parameter.enumeration if type_name(self.code) == "enum" else []
            self.menu_items = [(name, pretty_label(name, capitalize)) for name in names]
            return
        self.menu_items = [(words[i], words[i + 1].replace("\\t", "\t", 1)) for i in range(0, len(words) - 1, 2)]
        if len(words) % 2:
            self.report(f"[zelk::shop::ParmDesc] Odd number of items in menu metadata for {entry.name}.{self.name}")

    def templates(self, slots):
        spare = {}
        kind, extended, menu = self._kind(spare)
        defaults = self._defaults()
        if self.expression:
            defaults[0]["string"] = self.expression
            defaults[0]["meaning"] = self.expression_meaning
        language = "hscript"
        if self.callback:
            language, spare["script_callback"] = script_of(self.callback)
            slots.parm = True
        token, label = (self.name + "_#", self.label + " #") if self.is_array else (self.name, self.label)
        made = template(kind, token, label, extended=extended, size=vector_size(self.code), defaults=defaults,
                        menu=menu, range=self._range(), callback=slots.parm, spare=spare, callback_language=language,
                        **self._help_and_conditions())
        if self.is_array:
            # The element itself is neither hidden nor joined; its folder is.
            return [self._folder_of_array(), self._list_of(made)]
        made.update(invisible=self.invisible, join_next=self.join_next)
        return [made]

    def _folder_of_array(self):
        # A name without a label shows its token.
        token = self.name + "_group"
        return template("PRM_SWITCHER", token, token, defaults=[default(1.0, self.label)],
                        spare={"group_type": "simple"}, invisible=self.invisible, join_next=self.join_next)

    def _list_of(self, element):
        return template("PRM_MULTITYPE_LIST", self.name, "Array Elements", defaults=[default(len(self.default))],
                        children=[element], **self._help_and_conditions())

    def _help_and_conditions(self):
        return {"help": self.help or None, "disable_when": self.disable_when or None,
                "hide_when": self.hide_when or None}

    def _kind(self, spare):
        """(host kind, extended type, menu); may add to the spare data."""
        word = type_name(self.code)
        kind = HOST_KINDS.get(word, "PRM_LABEL")
        extended = EXTENDED_NO_LABEL if self.no_label else EXTENDED_NONE
        menu = None
        if word == "int" and self.houdini_type == "visibility":
            kind, menu = "PRM_BUTTONSTRIP", {"type": CHOICE_TOGGLE, "items": VISIBILITY_ITEMS}
        elif word == "boolean" and self.join_next and self.no_label:
            kind = "PRM_JOINED_TOGGLE"
        elif word == "enum":
            menu = static_menu(CHOICE_SINGLE, self.menu_items)
        elif word == "node":
            extended = EXTENDED_NODE_PATH
        elif word == "string":
            return self._string_kind(extended, spare)
        return kind, extended, menu

    def _string_kind(self, extended, spare):
        form = self.houdini_type
        fields = split(form, ":")
        if form == "file:image":
            return "PRM_PICFILE", extended, None
        if form.startswith("file:"):
            # Reading: a missing pattern is an empty one, and is stored as such.
            spare["filechooser_pattern"] = fields[1] if len(fields) > 1 else ""
            return "PRM_FILE", extended, None
        if form.startswith("menu:"):
            # Reading: empty fields are dropped here as they are for "file:" and "opfilter".
            return "PRM_STRING", extended, self._menu(*(fields[1:3] + ["", ""])[:2])
        if form.startswith("opfilter"):
            if len(fields) == 2:
                spare["opfilter"] = fields[1]
            return "PRM_STRING", EXTENDED_NODE_PATH, None
        return "PRM_STRING", extended, None

    def _menu(self, kind, source):
        if kind not in CHOICE_WORDS:
            # Reading: the source of a menu of no known kind is not looked at.
            self.report(f"[zelk::shop::ParmDesc] Unhandled menu type: {kind}")
            return None
        if source == "menu":
            return static_menu(CHOICE_WORDS[kind], self.menu_items)
        if source in ("python", "hscript"):
            return {"type": CHOICE_WORDS[kind], "script": self.menu_script, "language": source}
        self.report(f"[zelk::shop::ParmDesc] Unhandled menu script language: {source}")
        return None

    def _range(self):
        word = type_name(self.code)
        if word not in RANGED:
            return None
        low, high = self.hard
        if word == "byte" and (high is None or high > 255.0):
            high = 255.0
        if word in ("byte", "uint") and (low is None or low < 0.0):
            low = 0.0
        return {"min_flag": RANGE_UI if low is None else RANGE_RESTRICTED,
                "min": self.soft[0] if low is None else low,
                "max_flag": RANGE_UI if high is None else RANGE_RESTRICTED,
                "max": self.soft[1] if high is None else high}

    def _defaults(self):
        word = type_name(self.code)
        made = [default() for _ in range(vector_size(self.code))]
        value = self._default_value()
        if word in ("byte", "int", "boolean"):
            made[0]["value"] = int(value or 0)
        elif word == "uint":
            made[0]["value"] = signed32(value or 0)
        elif word == "float":
            made[0]["value"] = binary32(value or 0.0)
        elif word in VECTOR_SIZES:
            for slot, number in zip(made, value or []):
                slot["value"] = binary32(number)
        elif word == "string":
            made[0]["string"] = value
        elif word == "enum":
            self._enum_default(made[0], value)
        elif word != "node":
            made[0]["string"] = self._no_default()
        return made

    def _default_value(self):
        """The value that the defaults are filled from, or None when the renderer holds none."""
        if not self.is_array:
            # Reading: a null record leaves every default as it is, without a text.
            return self.default
        if self.default:
            return self.default[0]
        # Reading: an empty array is no null record; it gives zeros and an empty text, and the token of item 0.
        return {"string": "", "enum": 0}.get(type_name(self.code))

    def _enum_default(self, slot, index):
        if index is None:
            return
        slot["value"] = index
        # Reading: an index outside the menu leaves the text unset.
        if 0 <= index < len(self.menu_items):
            slot["string"] = self.menu_items[index][0]

    def _no_default(self):
        word = type_name(self.code)
        if word in ("pointer", "array"):
            return f"Unhandled parameter type: KR_TYPE_{word.upper()}"
        text = "Undefined" if word == "undefined" else "Unknown"
        self.report(f"[zelk::shop::ParmDesc] {text} parameter type for {self.name}")
        return f"{text} parameter type"


class ExtraParm:
    """A parameter that exists in the interface only."""

    is_extra = True
    is_array = False
    no_input = True

    def __init__(self, meta, key, kind, name, index, report):
        prefix = key + "."
        arguments = meta.items[key]
        self.report = report
        self.index = index
        self.order = NO_PLACE
        self.kind = kind
        self.name = name
        # A value that is no text leaves the arguments empty.
        self.arguments = arguments if isinstance(arguments, str) else ""
        self.label = meta.text(prefix + "label", pretty_label(name, True))
        self.icon = meta.text(prefix + "icon")
        self.help = meta.text(prefix + "desc")
        self.callback = meta.text(prefix + "callback")
        self.join_next = meta.flag(prefix + "join_next")
        self.no_label = meta.flag(prefix + "no_label")

    def templates(self, slots):
        fields = EXTRA_MAKERS.get(self.kind, ExtraParm._unknown)(self)
        if fields is TERMINATOR:
            return [TERMINATOR]
        script = self.callback
        if not script and self.kind == "button":
            script = self.arguments
        if script:
            language, text = script_of(script)
            fields["spare"] = dict(fields.get("spare") or {}, script_callback=text)
            fields["callback_language"] = language
            slots.extra = True
        # The initialiser that ramps use has no extended type.
        if self.no_label and self.kind not in ("ramp_float", "ramp_rgb"):
            fields["extended"] = EXTENDED_NO_LABEL
        return [template(fields.pop("type"), self.name, fields.pop("label", self.label), help=self.help or None,
                         callback=slots.extra, join_next=self.join_next, **fields)]

    def _folder(self):
        items = split(self.arguments, ";")
        if not items:
            self.report(f"[zelk::shop::ShaderDesc] Folder \"{self.name}\" is empty")
            return TERMINATOR
        if len(items) % 2:
            return self._odd(items)
        tabs = [default(float(leading_integer(items[i + 1])), items[i]) for i in range(0, len(items), 2)]
        return {"type": "PRM_SWITCHER", "size": len(tabs), "defaults": tabs}

    def _menu(self):
        items = split(self.arguments, ";")
        if len(items) % 2:
            return self._odd(items)
        pairs = [[items[i], items[i + 1]] for i in range(0, len(items), 2)]
        # Reading: without pairs there is no default at all.
        first = [default(0.0, pairs[0][0])] if pairs else []
        return {"type": "PRM_STRING", "menu": static_menu(CHOICE_SINGLE, pairs), "defaults": first}

    def _odd(self, items):
        self.report(f"[zelk::shop::ShaderDesc] Odd number of arguments ({len(items)}) for {self.kind} \"{self.name}\"")
        return TERMINATOR

    def _heading(self):
        return {"type": "PRM_HEADING", "label": self.arguments}

    def _separator(self):
        return {"type": "PRM_SEPARATOR"}

    def _toggle(self):
        return {"type": "PRM_TOGGLE", "defaults": [default(1.0 if self.arguments == "on" else 0.0)]}

    def _ramp_float(self):
        return {"type": "PRM_MULTITYPE_RAMP_FLT", "defaults": [default(2.0)]}

    def _ramp_rgb(self):
        return {"type": "PRM_MULTITYPE_RAMP_RGB", "defaults": [default(2.0)]}

    def _button(self):
        return {"type": "PRM_CALLBACK", "spare": {"button_icon": self.icon} if self.icon else None}

    def _unknown(self):
        return {"type": None}


EXTRA_MAKERS = {"folder": ExtraParm._folder, "heading": ExtraParm._heading, "separator": ExtraParm._separator,
                "toggle": ExtraParm._toggle, "ramp_float": ExtraParm._ramp_float, "ramp_rgb": ExtraParm._ramp_rgb,
                "menu": ExtraParm._menu, "button": ExtraParm._button}
