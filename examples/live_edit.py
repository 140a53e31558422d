"""Edits a shading network while a render listens: kshop python examples/live_edit.py

Start the render first, in a shell of its own: kshop listen
Each line below is one thing that an artist does; the render is told of it before the next one.
"""

import time

import hou


def does(what):
    """Says what comes next, and gives whoever watches both windows the time to see it."""
    time.sleep(0.1)
    print(f"artist: {what}", flush=True)


def build(network):
    surface = network.createNode("korvan::standard_surface", "surface")
    noise = network.createNode("korvan::fractal_noise", "dirt")
    surface.setInput(surface.inputIndex("base_color"), noise, noise.outputIndex("rgb"))
    return surface, noise


def edit(surface, noise):
    does("drags the roughness")
    for roughness in (0.25, 0.3, 0.35):
        surface.parm("specular_roughness").set(roughness)

    does("picks one component of a colour; the render gets all three")
    surface.parm("specular_colorg").set(0.5)

    does("asks for more octaves, and makes the walls thin")
    noise.parm("octaves").set(6)
    surface.parm("thin_walled").set(True)

    does("types an expression at frame 12; the render gets its value")
    hou.setFrame(12)
    noise.parm("evolution").setExpression("$F / 24")

    does("rewires and renames; a render hears of that when the scene is sent anew")
    surface.setInput(surface.inputIndex("base_color"), None)
    noise.setName("grime")


def run_callback(surface):
    """A parameter with a script: the preset's sets three others."""
    does("chooses the preset 'gold', whose script sets the metalness and two more")
    with hou.undos.group("Gold"):
        surface.parm("preset").set("gold")
        surface.parm("preset").pressButton()

    does("takes it back; the render hears of that too")
    hou.undos.performUndo()


def main():
    network = hou.node("/shop").createNode("korvan_vopnet", "live")
    surface, noise = build(network)
    edit(surface, noise)
    run_callback(surface)


main()
