// The shaders that the tests look at: every kind of field once, in the smallest interface that shows it.

const float = (name, value = 0) => ({ name, type: "float", default: value });
const text = (name, value = "") => ({ name, type: "string", default: value });
const array = (name, element, value) => ({ name, type: "array", element, default: value });

const IDENTITY = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];

export const CATALOGUE = {
  nodes: [
    {
      name: "zelk__numbers",
      kind: "shader",
      output: "rgb",
      parameters: [
        float("hard", 0.5),
        float("soft", 0.5),
        { name: "steps", type: "int", default: 3 },
        { name: "place", type: "vector", default: [1, 2, 3] },
        { name: "uv", type: "point2", default: [0, 1] },
        { name: "tint", type: "rgb", default: [1, 0.5, 0] },
        { name: "glow", type: "rgba", default: [0, 0, 0, 1] },
        { name: "xform", type: "matrix", default: IDENTITY },
        float("driven", 1),
      ],
    },
    {
      name: "zelk__choices",
      kind: "shader",
      output: "float",
      parameters: [
        { name: "active", type: "boolean", default: true },
        float("strength", 1),
        float("secret", 1),
        float("hush", 1),
        { name: "mode", type: "enum", enum: ["plain", "fancy"], default: 0 },
        { name: "seen_by", type: "int", default: 1 },
        text("name_of", "auto"),
        text("tags"),
        text("words"),
        text("scripted"),
        text("map", "a.exr"),
        text("camera"),
      ],
    },
    {
      name: "zelk__lists",
      kind: "shader",
      output: "rgb",
      parameters: [array("knots", "float", [0.25, 0.75]), float("after")],
    },
    {
      name: "zelk__curve",
      kind: "shader",
      output: "float",
      parameters: [
        array("positions", "float", [0, 1]),
        array("values", "float", [0, 1]),
        array("interpolations", "int", [1, 1]),
      ],
    },
    {
      name: "zelk__colors",
      kind: "shader",
      output: "rgb",
      parameters: [
        array("positions", "float", [0, 1]),
        array("values", "rgb", [
          [0, 0, 0],
          [1, 1, 1],
        ]),
        array("interpolations", "int", [1, 1]),
      ],
    },
  ],
};

export const METADATA = `
["zelk__numbers"]
"houdini.label" = "Numbers"
"houdini.category" = "Texture"
["zelk__numbers".parameters.hard]
min = 0
max = 2
desc = "Never above two."
["zelk__numbers".parameters.soft]
softmax = 4
["zelk__numbers".parameters.steps]
min = 1
softmax = 10
["zelk__numbers".parameters.driven]
"houdini.expression" = "ch(\\"steps\\") * 2"

["zelk__choices"]
"houdini.label" = "Choices"
"houdini.category" = "Surface"
"houdini.order" = "tabs active strength secret hush note mode seen_by line name_of tags words scripted map camera run"
"houdini.parm.folder.tabs" = "First;8;Second;7"
"houdini.parm.heading.note" = "What is chosen"
"houdini.parm.separator.line" = "-"
"houdini.parm.button.run" = "python:print('strength is', kwargs['node'].parm('strength').eval())"
"houdini.parm.button.run.label" = "Run"
["zelk__choices".parameters.active]
"houdini.join_next" = true
["zelk__choices".parameters.strength]
"houdini.disable_when" = "{ active == 0 }"
"houdini.join_next" = true
["zelk__choices".parameters.secret]
"houdini.hide_when" = "{ mode == plain }"
["zelk__choices".parameters.hush]
"houdini.hide_when" = "{ mode == plain }"
["zelk__choices".parameters.mode]
"houdini.menu" = "plain;Plain;fancy;Fancy"
["zelk__choices".parameters.seen_by]
"houdini.type" = "visibility"
["zelk__choices".parameters.name_of]
"houdini.type" = "menu:replace:menu"
"houdini.menu" = "auto;Automatic;srgb;sRGB"
["zelk__choices".parameters.tags]
"houdini.type" = "menu:toggle:menu"
"houdini.menu" = "a;A;b;B"
["zelk__choices".parameters.words]
"houdini.type" = "menu:append:menu"
"houdini.menu" = "a;A;b;B"
["zelk__choices".parameters.scripted]
"houdini.type" = "menu:replace:python"
"houdini.menu_script" = "return ['n%d' % i if i % 2 == 0 else 'Item %d' % (i // 2) for i in range(6)]"
["zelk__choices".parameters.map]
"houdini.type" = "file:*.exr"
["zelk__choices".parameters.camera]
"houdini.type" = "opfilter:!!OBJ!!"

["zelk__lists"]
"houdini.label" = "Lists"
"houdini.category" = "Texture"

["zelk__curve"]
"houdini.label" = "Curve"
"houdini.category" = "Ramps"
"houdini.parm.ramp_float.profile" = "positions values interpolations"

["zelk__colors"]
"houdini.label" = "Colours"
"houdini.category" = "Ramps"
"houdini.parm.ramp_rgb.stops" = "positions values interpolations"
`;
