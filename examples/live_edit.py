"""Edits a shading network while a render listens: kshop python examples/live_edit.py SCENE.hip [ASSETS_DIRECTORY]

Start the render first, in a shell of its own: kshop listen
Each line below is one thing that an artist does; the render is told of it before the next one. The scene is what
examples/lookdev.py saves; it is left as it was.
"""

import sys
import time

import hou
import lookdev


def does(what):
    """Says what comes next, and gives whoever watches both windows the time to see it."""
    time.sleep(0.1)
    print(f"artist: {what}", flush=True)


def edit_surface(net):
    surface, dirt = net.node("surface"), net.node("dirt")
    does("drags the roughness of the coat")
    for roughness in (0.25, 0.3):
        surface.parm("coat").set(roughness)
    does("picks one component of a colour; the render gets all three")
    surface.parm("specular_colorg").set(0.5)
    does("types an expression at frame 12; the render gets its value")
    hou.setFrame(12)
    dirt.parm("evolution").setExpression("$F / 24")


def edit_ramp(net):
    does("moves a key of a ramp; the render gets the whole ramp")
    net.node("gloss").parm("ramp2pos").set(0.8)


def edit_light_and_camera(net):
    does("turns the light's pattern")
    net.node("window").parm("rotate").set(30)
    does("stops the lens down; the camera that looks through it gets it")
    net.node("lens").parm("f_stop").set(8)


def edit_wires(net):
    does("fetches another node and wires it; a render hears of that when the scene is sent anew")
    surface, fetch = net.node("surface"), net.node("same_dirt")
    fetch.parm("target").set("../tint")
    surface.setInput(surface.inputIndex("coat_color"), fetch, fetch.outputIndex("rgb"))


def run_callback(net):
    """A parameter with a script: the preset's sets three others."""
    surface = net.node("surface")
    does("chooses the preset 'gold', whose script sets the metalness and two more")
    with hou.undos.group("Gold"):
        surface.parm("preset").set("gold")
        surface.parm("preset").pressButton()
    does("takes it back; the render hears of that too")
    hou.undos.performUndo()


def main(net):
    edit_surface(net)
    edit_ramp(net)
    edit_light_and_camera(net)
    edit_wires(net)
    run_callback(net)


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit("usage: kshop python examples/live_edit.py SCENE.hip [ASSETS_DIRECTORY]")
    main(lookdev.open_scene(*lookdev.places(sys.argv[1:])))
