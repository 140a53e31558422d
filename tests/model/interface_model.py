"""Predicts the interface that the plug-in makes of catalogue entries: a second reading of the interface rules.

`predict(entries)` gives operators and messages in the very form of `kshop describe --json`. Run as a program it prints
them for catalogue files:

    interface_model.py FILE...
"""

import argparse
import json

from catalogue_view import read_entries, type_name
from template_model import TERMINATOR, CallbackSlots, ExtraParm, Parm, connector_type, vector_size
from text_rules import pretty_label, split

# The address of the default help page is the product's own affair; whoever compares decides what stands for it.
DEFAULT_HELP = "<the default help page>"

ENTRY_PREFIX = "zelk__"
EXTRA_PREFIX = "houdini.parm."
RAMP_KINDS = ("ramp_float", "ramp_rgb")
RAMP_ARGUMENTS = 3
FLOAT_CONNECTOR, CAMERA_CONNECTOR = 3, 40
SHADER_TYPE_CONNECTORS = {"light_filter": 36, "atmosphere": 39, "volume": 51}
COMPONENTS = {"rgb": "rgb", "rgba": "rgba", "vector": "xyz", "point": "xyz", "point2": "xy"}
BASE_CAMERA_PARAMETERS = frozenset((
    "name", "position", "look_at", "up", "matrix", "near_clip", "far_clip", "screen_min", "screen_max",
    "shutter_start", "shutter_end", "exposure", "fov"))


class Shader:
    """One entry's description; `report` is called with the text of each error, in order."""

    def __init__(self, entry, report):
        meta = entry.meta
        self.entry = entry
        self.report = report
        base = entry.name[len(ENTRY_PREFIX):] if entry.name.startswith(ENTRY_PREFIX) else entry.name
        self.op_name = "korvan::" + base
        self.label = meta.text("houdini.label", pretty_label(base, True))
        self.icon = meta.text("houdini.icon", "OBJ_camera" if entry.is_camera else "MISC_generic")
        self.shader_type = meta.text("houdini.shader_type")
        self.help_url = meta.text("houdini.help_url", DEFAULT_HELP)
        self.category = "Camera" if entry.is_camera else meta.text("houdini.category")
        self.parms = []
        self.by_name = {}
        self._add_regular()
        self._add_extras()
        self._sort()

    def _add(self, parm):
        self.parms.append(parm)
        self.by_name[parm.name] = parm

    def _add_regular(self):
        index = 0
        for parameter in self.entry.parameters:
            if self._is_left_out(parameter):
                continue
            self._add(Parm(self.entry, parameter, index, self.report))
            index += 1
        self.next_index = index

    def _is_left_out(self, parameter):
        if parameter.name == "name" or parameter.meta.flag("houdini.skip"):
            return True
        return self.entry.is_camera and parameter.name in BASE_CAMERA_PARAMETERS

    def _add_extras(self):
        for key in self.entry.meta.items:
            if not key.startswith(EXTRA_PREFIX):
                continue
            words = split(key, ".")
            if len(words) < 4:
                self.report(f"[zelk::shop::ShaderDesc] Skipping badly formatted extra parameter: {key}")
            elif len(words) == 4:
                self._add_extra(key, words[2], words[3])

    def _add_extra(self, key, kind, name):
        extra = ExtraParm(self.entry.meta, key, kind, name, self.next_index, self.report)
        self.next_index += 1
        self._add(extra)
        if kind in RAMP_KINDS:
            self._wire_ramp(extra)

    def _wire_ramp(self, ramp):
        words = split(ramp.arguments, " ")
        if len(words) != RAMP_ARGUMENTS:
            self.report(f"[zelk::shop::ShaderDesc] Exactly 3 arguments needed for ramp \"{ramp.name}\", "
                        f"found {len(words)}")
            return
        # Only the renderer's parameters can be a ramp's components; extra parameters of these names stay.
        self.parms = [parm for parm in self.parms if parm.is_extra or parm.name not in words]

    def _sort(self):
        for place, word in enumerate(split(self.entry.meta.text("houdini.order"), " ")):
            if word in self.by_name:
                self.by_name[word].order = place
        self.parms.sort(key=lambda parm: (parm.order, parm.index))

    def inputs(self):
        return [{"name": parm.name, "label": parm.label, "type": parm.connector}
                for parm in self.parms if not parm.no_input]

    def outputs(self):
        size = vector_size(self.entry.output_code)
        names = [self._main_output()]
        if 1 < size <= 15:
            names += COMPONENTS[type_name(self.entry.output_code)]
        return [{"name": name, "label": name, "type": FLOAT_CONNECTOR if i else self._main_connector()}
                for i, name in enumerate(names)]

    def _main_output(self):
        if self.shader_type == "light_filter":
            return "light filter"
        if self.entry.is_camera:
            return "camera"
        return type_name(self.entry.output_code) or "<error>"

    def _main_connector(self):
        if self.shader_type in SHADER_TYPE_CONNECTORS:
            return SHADER_TYPE_CONNECTORS[self.shader_type]
        return CAMERA_CONNECTOR if self.entry.is_camera else connector_type(self.entry.output_code)

    def templates(self, slots):
        """The list up to its first terminator. All templates are made, since making them reports and sets slots."""
        made = [one for parm in self.parms for one in parm.templates(slots)]
        return made[:made.index(TERMINATOR)] if TERMINATOR in made else made

    def operator(self, slots):
        outputs = self.outputs()
        return {"name": self.op_name, "label": self.label, "icon": self.icon, "class": "VOP_KorvanOperator",
                "tab_menu": self.category or None, "help_url": self.help_url, "min_inputs": 0, "max_inputs": 2048,
                "num_outputs": len(outputs), "vopnet_mask": "korvan_vopnet", "flags": 0, "inputs": self.inputs(),
                "outputs": outputs, "templates": self.templates(slots)}


def is_registered(entry):
    """Whether an entry becomes an operator (a taken name apart)."""
    return not entry.meta.flag("houdini.skip") and not (entry.is_camera and entry.is_builtin)


def predict(entries, slots=None, taken=()):
    """The interface of `entries`, registered in this order.

    slots   state of the sticky callback slots before the first entry; changed to the state after the last one
    taken   operator names that the table holds already; an operator of such a name is made, reports what it has to
            report, and is refused

    Returns {"operators": [...], "messages": [{"severity", "text"}...]}; a default help address is DEFAULT_HELP.
    """
    slots = slots or CallbackSlots()
    taken = set(taken)
    operators, messages = [], []

    def report(text):
        messages.append({"severity": "error", "text": text})

    for entry in filter(is_registered, entries):
        operator = Shader(entry, report).operator(slots)
        if operator["name"] not in taken:
            taken.add(operator["name"])
            operators.append(operator)
    return {"operators": operators, "messages": messages}


def main():
    parser = argparse.ArgumentParser(description="Predicts the interface of catalogue entries as JSON.")
    parser.add_argument("files", nargs="+", metavar="FILE", help="catalogue file")
    print(json.dumps(predict(read_entries(parser.parse_args().files)), ensure_ascii=False, indent=1))


if __name__ == "__main__":
    main()
