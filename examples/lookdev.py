"""A look-development scene: kshop python examples/lookdev.py SCENE.hip [ASSETS_DIRECTORY]

Builds one shader network with a material, a light, an environment and a camera, shows it and saves it. It needs the asset
that examples/make_assets.py makes; without a directory it is made beside the scene. Change a number below, run it
again, or open the scene with examples/live_edit.py and watch the edits arrive at a render.
"""

import os
import sys

import hou
import make_assets

LINEAR, SMOOTH = hou.rampBasis.Linear, hou.rampBasis.CatmullRom


def wire(source, output, target, input_name):
    """Wires connectors by name. Raises hou.OperationFailed when their types do not fit."""
    target.setInput(target.inputIndex(input_name), source, source.outputIndex(output))


def paint(net):
    """Noise picks the colours of the paint; a photograph of scratches says where it has come off."""
    dirt = net.createNode("korvan::fractal_noise", "dirt")
    dirt.parm("octaves").set(6)
    dirt.parmTuple("scale").set((4, 4, 4))

    tint = net.createNode("korvan::ramp_rgb", "tint")
    tint.parm("ramp").set(hou.Ramp((LINEAR, SMOOTH, LINEAR), (0, 0.4, 1),
                                   ((0.05, 0.01, 0.01), (0.6, 0.05, 0.03), (0.8, 0.3, 0.1))))
    wire(dirt, "r", tint, "input")

    worn = net.createNode(make_assets.WORN_PAINT, "worn")  # the digital asset: bare metal under the paint
    worn.parm("wear").set(0.4)
    worn.setInput(0, tint, tint.outputIndex("rgb"))
    return worn


def material(net):
    """The container came with the output node of the material."""
    worn = paint(net)
    surface = net.createNode("korvan::standard_surface", "surface")
    worn_color, worn_mask = 0, 1
    surface.setInput(surface.inputIndex("base_color"), worn, worn_color)
    surface.setInput(surface.inputIndex("metalness"), worn, worn_mask)

    scratches = net.createNode("korvan::image", "scratches")
    scratches.parm("filename").set("$HIP/textures/scratches.tx")
    gloss = net.createNode("korvan::ramp_float", "gloss")
    gloss.parm("ramp").set(hou.Ramp((LINEAR, LINEAR), (0, 1), (0.15, 0.6)))
    wire(scratches, "r", gloss, "input")
    wire(gloss, "float", surface, "specular_roughness")

    # A fetch node has the outputs of the node that it names, so no long wire has to cross the network.
    same_dirt = net.createNode("korvan::fetch", "same_dirt")
    same_dirt.parm("target").set("../dirt")
    wire(same_dirt, "r", surface, "coat_roughness")

    output = net.node("OUT_material")
    wire(surface, "rgba", output, "surface")
    wire(same_dirt, "r", output, "bump")


def light(net):
    """A warm light through a pattern; each filter that is wired makes room for one more."""
    window = net.createNode("korvan::gobo", "window")
    fade = net.createNode("korvan::light_decay", "fade")
    fade.parm("use_far").set(True)
    fade.parm("far_end").set(50)
    warmth = net.createNode("korvan::ramp_rgb", "warmth")

    output = net.createNode("korvan_light")
    wire(warmth, "rgb", output, "Color")
    wire(window, "light filter", output, "Light Filter 1")
    wire(fade, "light filter", output, "Light Filter 2")


def environment(net):
    sky = net.createNode("korvan::image", "sky")
    sky.parm("filename").set("$HIP/textures/sky.tx")
    fog = net.createNode("korvan::fog", "haze")
    fog.parm("distance").set(200)

    output = net.createNode("korvan_environment")
    wire(fog, "rgb", output, "atmosphere")
    wire(sky, "rgba", output, "background")


def camera(net):
    """The shader of a camera, and the camera object that looks through it."""
    lens = net.createNode("korvan::anamorphic_camera", "lens")
    wire(lens, "camera", net.createNode("korvan_camera"), "camera")

    shot = hou.node("/obj").createNode("cam", "shot")
    shot.addSpareParmTuple(hou.StringParmTemplate("kv_camera_shader", "Camera Shader", 1))
    shot.parm("kv_camera_shader").set(lens.path())


def build():
    """The whole network, in a fresh container; its assets must be installed."""
    net = hou.node("/shop").createNode("korvan_vopnet", "look")
    material(net)
    light(net)
    environment(net)
    camera(net)
    for node in net.children():
        node.moveToGoodPosition()
    return net


def show_wires(node):
    """What is wired into that node."""
    wires = []
    for wire_in in node.inputConnections():
        source = wire_in.inputNode()
        output = source.outputNames()[wire_in.outputIndex()]
        wires.append(f"{node.inputNames()[wire_in.inputIndex()]} <- {source.name()}.{output}")
    print(f"  {node.name():<16} {', '.join(wires)}")


def show(net):
    """The ends of the network: the surface, what the four output nodes get, and what the fetch node offers."""
    for node in (net.node("surface"), *(node for node in net.children() if node.name().startswith("OUT_"))):
        show_wires(node)
    fetch = net.node("same_dirt")
    print(f"  {fetch.name():<16} {fetch.evalParm('target')} with {', '.join(fetch.outputNames())}")


def install(directory):
    """Installs the asset from that directory, where it is made first when it is missing."""
    file = os.path.join(directory, make_assets.FILE)
    if os.path.exists(file):
        hou.hda.installFile(file)
    else:
        make_assets.make(directory)


def open_scene(scene, assets):
    """Opens a scene that main() saved. Assets come first: nodes of types that are missing become placeholders."""
    install(assets)
    hou.hipFile.load(scene)
    return hou.node("/shop/look")


def places(arguments):
    """Scene and assets directory of a command line; the assets are beside the scene unless it says otherwise."""
    scene = os.path.abspath(arguments[0])
    return scene, arguments[1] if len(arguments) > 1 else os.path.dirname(scene)


def main(scene, assets):
    install(assets)
    net = build()
    show(net)
    hou.hipFile.save(scene)
    print(f"Saved {len(net.children())} nodes of {net.path()} in {os.path.basename(scene)}")


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit("usage: kshop python examples/lookdev.py SCENE.hip [ASSETS_DIRECTORY]")
    main(*places(sys.argv[1:]))
