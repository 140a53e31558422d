"""From the plain facts that C++ gives about a template to the classes that a person knows.

Facts are a dictionary per template: `type` (the host's constant as text, None for the empty type), `multi` ("list",
"ramp_float", "ramp_rgb" or None), `token`, `label`, `size`, `extended`, `defaults` (value, text or None, meaning), `menu`,
`range`, `spare`, `callback_python`, `help`, `disable_when`, `hide_when`, `invisible`, `join_next`, `no_label`, `children`.
"""

from ._enums import (fileType, folderType, menuType, parmCondType, parmLook, parmNamingScheme, rampParmType,
                     scriptLanguage, stringParmType)
from ._templates import (ButtonParmTemplate, FloatParmTemplate, FolderParmTemplate, FolderSetParmTemplate,
                         IntParmTemplate, LabelParmTemplate, MenuParmTemplate, RampParmTemplate,
                         SeparatorParmTemplate, StringParmTemplate, ToggleParmTemplate)

_EXTENDED_NODE_PATH = 0x11
_RANGE_STRICT = 2
_MEANING_LITERAL = 0
_MEANING_PYTHON = 2
_MENU_TYPES = {0x1: menuType.StringReplace, 0x2: menuType.StringToggle}

_number_looks = {
    "PRM_RGB": (parmLook.ColorSquare, parmNamingScheme.RGBA),
    "PRM_RGB_J": (parmLook.ColorSquare, parmNamingScheme.RGBA),
    "PRM_RGBA": (parmLook.ColorSquare, parmNamingScheme.RGBA),
    "PRM_RGBA_J": (parmLook.ColorSquare, parmNamingScheme.RGBA),
    "PRM_XYZ": (parmLook.Vector, parmNamingScheme.XYZW),
    "PRM_XYZ_J": (parmLook.Vector, parmNamingScheme.XYZW),
    "PRM_UVW": (parmLook.Regular, parmNamingScheme.UVW),
}

_string_types = {
    "PRM_FILE": (stringParmType.FileReference, fileType.Any),
    "PRM_PICFILE": (stringParmType.FileReference, fileType.Image),
    "PRM_GEOFILE": (stringParmType.FileReference, fileType.Geometry),
    "PRM_DIRECTORY": (stringParmType.FileReference, fileType.Directory),
    "PRM_STRING_OPREF": (stringParmType.NodeReference, fileType.Any),
    "PRM_STRING_OPLIST": (stringParmType.NodeReferenceList, fileType.Any),
}


def template(facts):
    """The template of one parameter. A type that nobody knows is shown as a label, which holds nothing."""
    if facts["multi"]:
        return _multi(facts)
    return _makers.get(facts["type"], _label)(facts)


def templates(facts_of_list):
    """One template per parameter, in order."""
    return tuple(template(facts) for facts in facts_of_list)


def _common(facts):
    spare = dict(facts["spare"])
    callback = spare.pop("script_callback", None)
    spare.pop("script_callback_language", None)
    return {
        "is_hidden": facts["invisible"], "is_label_hidden": facts["no_label"],
        "join_with_next": facts["join_next"], "help": facts["help"], "script_callback": callback,
        "script_callback_language": _language(facts["callback_python"]), "tags": spare,
    }


def _finish(made, facts):
    for kind, key in ((parmCondType.DisableWhen, "disable_when"), (parmCondType.HideWhen, "hide_when")):
        if facts[key] is not None:
            made.setConditional(kind, facts[key])
    return made


def _language(is_python):
    return scriptLanguage.Python if is_python else scriptLanguage.Hscript


def _values(facts, convert):
    return tuple(convert(value) for value, text, meaning in facts["defaults"])


def _expressions(facts):
    """Texts of numeric defaults are expressions."""
    return {
        "default_expression": tuple(text or "" for value, text, meaning in facts["defaults"]),
        "default_expression_language": tuple(_language(meaning == _MEANING_PYTHON)
                                             for value, text, meaning in facts["defaults"]),
    }


def _range(facts, convert):
    if facts["range"] is None:
        return {}
    min_flag, minimum, max_flag, maximum = facts["range"]
    return {"min": convert(minimum), "max": convert(maximum), "min_is_strict": bool(min_flag & _RANGE_STRICT),
            "max_is_strict": bool(max_flag & _RANGE_STRICT)}


def _menu(facts):
    menu = facts["menu"]
    if menu is None:
        return {}
    made = {"menu_type": _MENU_TYPES.get(menu["type"], menuType.Normal)}
    if "script" in menu:
        made["item_generator_script"] = menu["script"]
        made["item_generator_script_language"] = _language(menu["python"])
    else:
        made["menu_items"] = tuple(token for token, label in menu["items"])
        made["menu_labels"] = tuple(label for token, label in menu["items"])
    return made


def _look(facts):
    look, scheme = _number_looks.get(facts["type"], (parmLook.Regular, parmNamingScheme.Base1))
    return {"look": look, "naming_scheme": scheme}


def _float(facts):
    return _finish(FloatParmTemplate(facts["token"], facts["label"], facts["size"], _values(facts, float),
                                     **_range(facts, float), **_look(facts), **_expressions(facts),
                                     **_common(facts)), facts)


def _whole(value):
    return max(-2**31, min(int(value), 2**31 - 1))


def _int(facts):
    return _finish(IntParmTemplate(facts["token"], facts["label"], facts["size"], _values(facts, _whole),
                                   **_range(facts, _whole), **_look(facts), **_menu(facts), **_expressions(facts),
                                   **_common(facts)), facts)


def _string(facts):
    string_type, file_type = _string_types.get(facts["type"], (stringParmType.Regular, fileType.Any))
    if facts["extended"] == _EXTENDED_NODE_PATH:
        string_type = stringParmType.NodeReference
    literal = [text or "" if meaning == _MEANING_LITERAL else "" for value, text, meaning in facts["defaults"]]
    expression = [text or "" if meaning != _MEANING_LITERAL else "" for value, text, meaning in facts["defaults"]]
    languages = _expressions(facts)["default_expression_language"]
    return _finish(StringParmTemplate(facts["token"], facts["label"], facts["size"], literal,
                                      string_type=string_type, file_type=file_type, **_menu(facts),
                                      default_expression=expression, default_expression_language=languages,
                                      **_common(facts)), facts)


def _first_default(facts):
    return facts["defaults"][0] if facts["defaults"] else (0.0, None, _MEANING_LITERAL)


def _toggle(facts):
    value, text, meaning = _first_default(facts)
    return _finish(ToggleParmTemplate(facts["token"], facts["label"], bool(value), text or "",
                                      _language(meaning == _MEANING_PYTHON), **_common(facts)), facts)


def _ordinal(facts):
    value, text, meaning = _first_default(facts)
    menu = _menu(facts)
    items = menu.pop("menu_items", ())
    default = items.index(text) if text in items else _whole(value)
    return _finish(MenuParmTemplate(facts["token"], facts["label"], items, default_value=default, **menu,
                                    **_common(facts)), facts)


def _button(facts):
    return _finish(ButtonParmTemplate(facts["token"], facts["label"], **_common(facts)), facts)


def _label(facts):
    shown = _first_default(facts)[1]
    return _finish(LabelParmTemplate(facts["token"], facts["label"], (shown,) if shown is not None else (),
                                     **_common(facts)), facts)


def _separator(facts):
    return _finish(SeparatorParmTemplate(facts["token"], label=facts["label"], **_common(facts)), facts)


def folder_type(facts):
    """The look of a switcher, told by its spare data."""
    looks = {"simple": folderType.Simple, "collapsible": folderType.Collapsible, "radio": folderType.RadioButtons}
    return looks.get(facts["spare"].get("group_type"), folderType.Tabs)


def _folder_set(facts):
    names = [text or "" for value, text, meaning in facts["defaults"]]
    return _finish(FolderSetParmTemplate(facts["token"], names, folder_type(facts), label=facts["label"],
                                         **_common(facts)), facts)


def _multi(facts):
    count = _whole(_first_default(facts)[0])
    if facts["multi"] == "list":
        made = FolderParmTemplate(facts["token"], facts["label"], templates(facts["children"] or ()),
                                  folderType.MultiparmBlock, count, **_common(facts))
    else:
        kind = rampParmType.Color if facts["multi"] == "ramp_rgb" else rampParmType.Float
        made = RampParmTemplate(facts["token"], facts["label"], kind, count, **_common(facts))
    return _finish(made, facts)


_makers = {
    **dict.fromkeys(("PRM_FLT", "PRM_FLT_J", "PRM_FLT_E", *_number_looks), _float),
    **dict.fromkeys(("PRM_INT", "PRM_INT_J", "PRM_INT_E"), _int),
    **dict.fromkeys(("PRM_STRING", "PRM_ALPHASTRING", *_string_types), _string),
    **dict.fromkeys(("PRM_TOGGLE", "PRM_JOINED_TOGGLE"), _toggle),
    **dict.fromkeys(("PRM_ORD", "PRM_BUTTONSTRIP"), _ordinal),
    "PRM_CALLBACK": _button,
    "PRM_LABEL": _label,
    "PRM_HEADING": _label,
    "PRM_SEPARATOR": _separator,
    "PRM_SWITCHER": _folder_set,
}
