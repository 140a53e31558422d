import unittest

import hou
from scene import SceneTest


class NodeTypes(SceneTest):
    def test_are_listed_by_category(self):
        categories = hou.nodeTypeCategories()
        for name in ("Vop", "Shop", "Object"):
            self.assertEqual(categories[name].name(), name)
        self.assertEqual(categories["Vop"], hou.vopNodeTypeCategory())
        self.assertEqual(categories["Shop"], hou.shopNodeTypeCategory())
        self.assertEqual(categories["Object"], hou.objNodeTypeCategory())
        self.assertIn("subnet", hou.vopNodeTypeCategory().nodeTypes())

    def test_are_found_by_name(self):
        cam = hou.nodeType(hou.objNodeTypeCategory(), "cam")
        self.assertEqual((cam.name(), cam.description(), cam.category()), ("cam", "Camera", hou.objNodeTypeCategory()))
        self.assertIsNone(hou.nodeType(hou.objNodeTypeCategory(), "nothing"))
        with self.assertRaises(TypeError):
            hou.nodeType("Object", "cam")

    def test_are_those_of_their_nodes(self):
        node = self.obj.createNode("cam")
        self.assertEqual(node.type(), hou.nodeType(hou.objNodeTypeCategory(), "cam"))
        self.assertEqual(hou.root().type().category().name(), "Director")
        self.assertEqual(self.obj.type().category().name(), "Manager")
        self.assertEqual(self.obj.childTypeCategory(), hou.objNodeTypeCategory())

    def test_tell_their_connectors(self):
        null = hou.nodeType(hou.vopNodeTypeCategory(), "null")
        self.assertEqual((null.minNumInputs(), null.maxNumOutputs()), (0, 1))
        self.assertGreaterEqual(null.maxNumInputs(), 1)

    def test_take_their_names_apart(self):
        components = hou._types._name_components
        self.assertEqual(components("cam"), ("", "", "cam", ""))
        self.assertEqual(components("korvan::image"), ("", "korvan", "image", ""))
        self.assertEqual(components("a::b::c::2.0"), ("a", "b", "c", "2.0"))
        self.assertEqual(components("b::c::1"), ("", "b", "c", "1"))

    def test_describe_their_parameters(self):
        templates = hou.nodeType(hou.objNodeTypeCategory(), "cam").parmTemplates()
        translate = templates[0]
        self.assertIsInstance(translate, hou.FloatParmTemplate)
        self.assertEqual((translate.name(), translate.numComponents(), translate.look(), translate.namingScheme()),
                         ("t", 3, hou.parmLook.Vector, hou.parmNamingScheme.XYZW))
        self.assertIsInstance(templates[2], hou.IntParmTemplate)


class Templates(unittest.TestCase):
    def test_are_copies_that_change_nothing_else(self):
        template = hou.FloatParmTemplate("a", "A", 1)
        clone = template.clone()
        clone.setName("b")
        self.assertEqual((template.name(), clone.name()), ("a", "b"))

    def test_check_what_they_are_made_of(self):
        for make in (lambda: hou.FloatParmTemplate(1, "A", 1), lambda: hou.FloatParmTemplate("a", "A", "1"),
                     lambda: hou.StringParmTemplate("a", "A", 1, (1,)), lambda: hou.FloatParmTemplate("a"),
                     lambda: hou.IntParmTemplate("a", "A", 1, look="Regular")):
            with self.assertRaises(TypeError):
                make()
        with self.assertRaises(hou.OperationFailed):
            hou.FloatParmTemplate("a", "A", 2, (1, 2, 3))

    def test_group_into_folders(self):
        inner = hou.FolderParmTemplate("inner", "Inner", [hou.ToggleParmTemplate("on", "On")])
        group = hou.ParmTemplateGroup([hou.FolderParmTemplate("outer", "Outer", [inner])])
        group.append(hou.FloatParmTemplate("a", "A", 1))
        self.assertEqual([t.name() for t in group.entriesWithoutFolders()], ["on", "a"])
        self.assertEqual(group.findFolder(("Outer", "Inner")).name(), "inner")
        self.assertIsNone(group.findFolder(("Inner", "Outer")))
        with self.assertRaises(hou.OperationFailed):
            group.append(hou.ToggleParmTemplate("on", "On"))


if __name__ == "__main__":
    unittest.main()
