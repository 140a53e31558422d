"""Everything that hou tells of a scene, as plain data; as a script: kshop python scene_dump.py SCENE DUMP.json [ASSET...]

Only what is new in each process is left out: session ids.
"""

import json
import sys

import hou

FLAGS = [getattr(hou.nodeFlag, name) for name in hou.nodeFlag._names]


def told(function, *arguments):
    """What a function returns, or the sentence with which it fails."""
    try:
        return function(*arguments)
    except hou.Error as error:
        return "fails: " + str(error)


def value_of(parm):
    """The values at two frames, the number of instances of a multi-parameter, or the keys of a ramp."""
    ramp = parm.parmTemplate().type() == hou.parmTemplateType.Ramp
    if ramp or parm.isMultiParmParent():
        return [[p.name() for p in parm.multiParmInstances()], parm.multiParmStartOffset(),
                parm.multiParmInstancesPerItem(), str(told(parm.evalAsRamp)) if ramp else None]
    return [told(parm.evalAtFrame, frame) for frame in (1, 17)]


def parm_facts(parm):
    template = parm.parmTemplate()
    return {"name": parm.name(), "label": parm.description(), "component": parm.componentIndex(),
            "value": value_of(parm), "typed": told(parm.unexpandedString),
            "expression": told(parm.expression), "language": str(told(parm.expressionLanguage)),
            "default": parm.isAtDefault(), "animated": parm.isTimeDependent(), "spare": parm.isSpare(),
            "disabled": parm.isDisabled(), "hidden": parm.isHidden(), "menu": told(parm.menuItems),
            "menu labels": told(parm.menuLabels), "folders": parm.containingFolders(),
            "instances": parm.multiParmInstanceIndices(), "parent": str(parm.parentMultiParm()),
            "template": template_facts(template)}


def template_facts(template):
    """What a spare parameter must bring along."""
    facts = {"type": str(template.type()), "tags": template.tags(), "help": template.help(),
             "conditionals": {str(k): v for k, v in template.conditionals().items()}}
    for name in ("defaultValue", "minValue", "maxValue", "minIsStrict", "maxIsStrict", "namingScheme", "stringType",
                 "joinWithNext", "isLabelHidden"):
        if hasattr(template, name):
            facts[name] = str(getattr(template, name)())
    return facts


def connector_facts(node):
    if not isinstance(node, hou.VopNode):
        return None
    return {"inputs": [node.inputNames(), node.inputLabels(), node.inputDataTypes()],
            "outputs": [node.outputNames(), node.outputLabels(), node.outputDataTypes()]}


def node_facts(node):
    parms = [parm_facts(parm) for parm in node.parms()]
    return {"path": node.path(), "type": node.type().name(), "position": tuple(node.position()),
            "user data": node.userDataDict(), "flags": [str(told(node.isGenericFlagSet, flag)) for flag in FLAGS],
            "children": [child.name() for child in node.children()],
            "locked": node.isInsideLockedHDA(), "connectors": connector_facts(node),
            "wires in": [(w.inputIndex(), w.inputNode().path(), w.outputIndex()) for w in node.inputConnections()],
            "wires out": [(w.outputIndex(), w.outputNode().path(), w.inputIndex()) for w in node.outputConnections()],
            "language": str(node.expressionLanguage()), "parms": parms, "errors": node.errors()}


def nodes_below(node):
    for child in node.children():
        yield child
        yield from nodes_below(child)


def dump():
    """The scene as JSON can hold it: floats as texts that tell every bit of them."""
    facts = {node.path(): node_facts(node) for node in nodes_below(hou.root())}
    facts["scene"] = {"frame": hou.frame(), "fps": hou.fps(), "HIPNAME": hou.expandString("$HIPNAME"),
                      "variable": hou.expandString("$ROUND_TRIP")}
    return exact(facts)


def exact(value):
    if isinstance(value, float):
        return repr(value)
    if isinstance(value, dict):
        return {key: exact(part) for key, part in value.items()}
    if isinstance(value, (list, tuple)):
        return [exact(part) for part in value]
    return value


def main(scene, file, *assets):
    for asset in assets:
        hou.hda.installFile(asset)
    hou.hipFile.load(scene)
    with open(file, "w", encoding="utf-8", errors="surrogateescape") as stream:
        json.dump(dump(), stream)
    hou.hipFile.save(scene + ".again")


if __name__ == "__main__":
    main(*sys.argv[1:])
