"""Builds a small shading network, wires it and evaluates it: kshop python examples/first_network.py

The same script runs in the host's own Python shell.
"""

import hou


def wire(source, output, target, input_name):
    """Wires connectors by name. Raises hou.OperationFailed when their types do not fit."""
    target.setInput(target.inputNames().index(input_name), source, source.outputNames().index(output))


def build(network):
    """A surface whose colour is noise over a checkerboard, and whose roughness follows the same noise."""
    surface = network.createNode("korvan::standard_surface", "surface")
    mix = network.createNode("korvan::mix_color", "dirt_over_tiles")
    tiles = network.createNode("korvan::checkerboard", "tiles")
    noise = network.createNode("korvan::fractal_noise", "dirt")

    wire(mix, "rgb", surface, "base_color")
    wire(noise, "r", surface, "specular_roughness")
    wire(tiles, "rgb", mix, "base")
    wire(noise, "rgb", mix, "layer")

    noise.parm("octaves").set(6)
    noise.parmTuple("color2").set((0.42, 0.33, 0.21))
    noise.parm("evolution").setExpression("$F / 24")
    mix.parm("mix").setExpression('ch("../dirt/gain") * 0.5')
    for node in network.children():
        node.moveToGoodPosition()


def show_wires(network):
    print("Wires:")
    for node in network.children():
        for connection in node.inputConnections():
            source = connection.inputNode()
            output = source.outputNames()[connection.outputIndex()]
            print(f"  {source.name()}.{output} -> {node.name()}.{node.inputNames()[connection.inputIndex()]}")


def show_values(network):
    print("Values:")
    noise, mix = network.node("dirt"), network.node("dirt_over_tiles")
    print("  octaves          ", noise.evalParm("octaves"))
    print("  color2           ", tuple(round(v, 2) for v in noise.parmTuple("color2").eval()))
    print("  mix (expression) ", mix.evalParm("mix"))
    for frame in (1, 12, 24):
        print(f"  evolution at frame {frame:<2}", round(noise.parm("evolution").evalAtFrame(frame), 4))


def show_states(network):
    """What an artist sees greyed: a wired input's parameter, and what a condition turns off."""
    surface = network.node("surface")
    image = network.createNode("korvan::image", "photo")
    print("Greyed fields:")
    print("  surface base_color, which is wired:     ", surface.parm("base_colorr").isDisabled())
    print("  photo gamma, color space 'auto':        ", image.parm("gamma").isDisabled())
    image.parm("colorspace").set("srgb")
    print("  photo gamma, color space 'srgb':        ", image.parm("gamma").isDisabled())


def show_refusal(network):
    """A wire whose types do not fit is refused, with the reason."""
    print("A wire that does not fit:")
    try:
        wire(network.node("photo"), "rgba", network.node("surface"), "base_color")
    except hou.OperationFailed as error:
        print(" ", error.instanceMessage())


def main():
    network = hou.node("/shop").createNode("korvan_vopnet", "first_network")
    build(network)
    print(f"Built {network.path()} with {len(network.children())} nodes")
    show_wires(network)
    show_values(network)
    show_states(network)
    show_refusal(network)


main()
