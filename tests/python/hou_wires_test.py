import unittest

import hou
from scene import SceneTest


class Wires(SceneTest):
    def setUp(self):
        super().setUp()
        self.add = self.vex.createNode("add", "sum")
        self.first = self.vex.createNode("add", "first")
        self.second = self.vex.createNode("add", "second")

    def test_are_seen_from_both_ends(self):
        self.add.setInput(1, self.first)
        self.assertEqual(self.add.inputs(), (None, self.first))
        self.assertEqual(self.first.outputs(), (self.add,))
        wire, = self.add.inputConnections()
        self.assertEqual((wire.inputNode(), wire.outputIndex(), wire.outputNode(), wire.inputIndex()),
                         (self.first, 0, self.add, 1))
        self.assertEqual(self.first.outputConnections(), (wire,))

    def test_are_listed_by_connector(self):
        self.add.setInput(1, self.first)
        connectors = self.add.inputConnectors()
        self.assertEqual([len(wires) for wires in connectors[:2]], [0, 1])
        self.assertEqual(len(connectors), len(self.add.inputNames()))
        self.assertEqual([len(wires) for wires in self.first.outputConnectors()], [1])

    def test_list_a_node_that_is_fed_twice_once(self):
        self.add.setInput(0, self.first)
        self.add.setInput(1, self.first)
        self.assertEqual(self.first.outputs(), (self.add,))
        self.assertEqual(len(self.first.outputConnections()), 2)

    def test_are_replaced_and_taken_off(self):
        self.add.setInput(0, self.first)
        self.add.setInput(0, self.second)
        self.assertEqual(self.first.outputs(), ())
        self.add.setInput(0, None)
        self.assertEqual(self.add.inputs(), ())
        self.add.setInput(0, None)

    def test_to_an_input_that_is_not_there_raise(self):
        for index in (-1, 99):
            with self.fails("has no input %d" % index, hou.InvalidInput):
                self.add.setInput(index, self.first)
            with self.assertRaises(hou.InvalidInput):
                self.add.setInput(index, None)

    def test_from_an_output_that_is_not_there_raise(self):
        with self.fails("has no output 1", hou.InvalidInput):
            self.add.setInput(0, self.first, 1)

    def test_of_types_that_do_not_fit_raise_and_change_nothing(self):
        untyped = self.vex.createNode("null", "untyped")
        with self.fails("Cannot connect .*untyped.*sum.*takes"):
            self.add.setInput(0, untyped)
        self.assertEqual(self.add.inputs(), ())

    def test_in_a_circle_raise(self):
        self.add.setInput(0, self.first)
        with self.fails("circle"):
            self.first.setInput(0, self.add)

    def test_across_networks_raise(self):
        inside = self.vex.createNode("subnet").createNode("add")
        with self.fails("not in the same network"):
            self.add.setInput(0, inside)

    def test_take_nodes_only(self):
        for wrong in ("first", 3, self.first.path()):
            with self.assertRaises(TypeError):
                self.add.setInput(0, wrong)
        for wrong in ("0", 0.0, True):
            with self.assertRaises(TypeError):
                self.add.setInput(wrong, self.first)

    def test_from_a_deleted_node_raise(self):
        self.first.destroy()
        with self.assertRaises(hou.ObjectWasDeleted):
            self.add.setInput(0, self.first)


class Connectors(SceneTest):
    def test_have_a_name_a_label_and_a_type_each(self):
        node = self.vex.createNode("add")
        count = len(node.inputNames())
        self.assertGreaterEqual(count, 2)
        self.assertEqual((len(node.inputLabels()), len(node.inputDataTypes())), (count, count))
        self.assertEqual(node.inputDataTypes()[0], "float")
        self.assertEqual((node.outputNames(), node.outputDataTypes()), (("sum",), ("float",)))
        self.assertEqual(node.outputIndex("sum"), 0)
        self.assertEqual(node.inputIndex("nothing"), -1)

    def test_grow_with_the_wires(self):
        node, source = self.vex.createNode("add"), self.vex.createNode("add")
        before = len(node.inputNames())
        for index in range(before):
            node.setInput(index, source)
        self.assertEqual(len(node.inputNames()), before + 1)


if __name__ == "__main__":
    unittest.main()
