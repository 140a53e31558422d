"""Makes the digital asset that examples/lookdev.py uses: kshop python examples/make_assets.py DIRECTORY

An asset that is built from Korvan nodes only can be created inside a Korvan Shader Network; any other is refused there.
"""

import os
import sys

import hou

WORN_PAINT = "studio::worn_paint"
FILE = "worn_paint.hda"


def parameters(subnet):
    """What the asset's user sees. Inside, expressions read it."""
    subnet.addSpareParmTuple(hou.FloatParmTemplate("wear", "Wear", 1, default_value=(0.5,), min=0, max=1))
    subnet.addSpareParmTuple(hou.FloatParmTemplate("size", "Patch Size", 1, default_value=(1,), min=0.01, max=10))


def contents(subnet):
    """Noise, sharpened by a ramp, mixes bare metal under the paint that comes in by the asset's input."""
    paint, result = subnet.node("subinput1"), subnet.node("suboutput1")
    patches = subnet.createNode("korvan::fractal_noise", "patches")
    edge = subnet.createNode("korvan::ramp_float", "edge")
    metal = subnet.createNode("korvan::mix_color", "metal_under_paint")

    for axis in "xyz":
        patches.parm("scale" + axis).setExpression('1 / ch("../size")')
    edge.parm("ramp").set(hou.Ramp((hou.rampBasis.Linear,) * 3, (0, 0.5, 1), (0, 0, 1)))
    edge.parm("ramp2pos").setExpression('1 - ch("../wear")')
    metal.parmTuple("layer").set((0.56, 0.57, 0.58))

    edge.setInput(edge.inputIndex("input"), patches, patches.outputIndex("r"))
    metal.setInput(metal.inputIndex("mix"), edge)
    metal.setInput(metal.inputIndex("base"), paint)
    result.setInput(0, metal, metal.outputIndex("rgb"))
    result.setInput(1, edge)
    for node in subnet.children():
        node.moveToGoodPosition()


def make(directory):
    """Writes the asset's file and installs it; the file's path."""
    os.makedirs(directory, exist_ok=True)
    network = hou.node("/shop").createNode("korvan_vopnet", "asset_workshop")
    subnet = network.createNode("subnet", "worn_paint")
    # What is wired into a subnet gives it its inputs, with their types.
    subnet.setInput(0, network.createNode("korvan::mix_color", "any_paint"))
    parameters(subnet)
    contents(subnet)
    file = os.path.join(directory, FILE)
    subnet.createDigitalAsset(WORN_PAINT, file, "Worn Paint", 0, 1)
    network.destroy()
    return file


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: kshop python examples/make_assets.py DIRECTORY")
    print(f"Made the asset {WORN_PAINT} in {os.path.basename(make(sys.argv[1]))}")
