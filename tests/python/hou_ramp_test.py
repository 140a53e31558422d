import unittest

import hou

LINEAR, CONSTANT = hou.rampBasis.Linear, hou.rampBasis.Constant


class Ramp(unittest.TestCase):
    def test_sorts_its_keys(self):
        ramp = hou.Ramp((LINEAR, CONSTANT, LINEAR), (1, 0, 0.5), (3, 1, 2))
        self.assertEqual((ramp.keys(), ramp.values(), ramp.basis()),
                         ((0.0, 0.5, 1.0), (1.0, 2.0, 3.0), (CONSTANT, LINEAR, LINEAR)))

    def test_interpolates_by_the_key_before(self):
        ramp = hou.Ramp((LINEAR, CONSTANT, LINEAR), (0, 0.5, 1), (0, 1, 3))
        self.assertEqual([ramp.lookup(t) for t in (-1, 0.25, 0.75, 1, 2)], [0, 0.5, 1, 3, 3])

    def test_smooth_ones_pass_through_their_keys(self):
        for basis in (hou.rampBasis.CatmullRom, hou.rampBasis.MonotoneCubic):
            ramp = hou.Ramp((basis,) * 4, (0, 0.25, 0.5, 1), (0, 1, 1, 4))
            self.assertEqual([ramp.lookup(t) for t in ramp.keys()], [0, 1, 1, 4])

    def test_monotone_ones_do_not_overshoot(self):
        ramp = hou.Ramp((hou.rampBasis.MonotoneCubic,) * 4, (0, 0.4, 0.6, 1), (0, 0, 1, 1))
        values = [ramp.lookup(i / 100) for i in range(101)]
        self.assertEqual(values, sorted(values))
        self.assertTrue(all(0 <= v <= 1 for v in values))

    def test_of_colours_gives_tuples(self):
        ramp = hou.Ramp((LINEAR, LINEAR), (0, 1), ((0, 0, 1), (1, 0, 0)))
        self.assertTrue(ramp.isColor())
        self.assertEqual(ramp.lookup(0.5), (0.5, 0, 0.5))
        ramp.setIsColor(False)
        self.assertEqual(ramp.values(), (1 / 3, 1 / 3))

    def test_needs_as_many_of_each(self):
        for basis, keys, values in (((LINEAR,), (0, 1), (0, 1)), ((LINEAR,), (0,), ()), ((), (), ())):
            with self.assertRaises(hou.InvalidSize):
                hou.Ramp(basis, keys, values)

    def test_refuses_what_is_no_ramp(self):
        with self.assertRaises(TypeError):
            hou.Ramp(("Linear",), (0,), (1,))
        with self.assertRaises(TypeError):
            hou.Ramp((LINEAR,), ("0",), (1,))
        with self.assertRaises(hou.InvalidSize):
            hou.Ramp((LINEAR,), (0,), ((1, 2),))
        with self.assertRaises(hou.OperationFailed):
            hou.Ramp((LINEAR, LINEAR), (0, 1), (0, (1, 2, 3)))

    def test_says_what_it_cannot_interpolate(self):
        with self.assertRaisesRegex(hou.NotAvailable, "rampBasis.Bezier"):
            hou.Ramp((hou.rampBasis.Bezier,) * 2, (0, 1), (0, 1)).lookup(0.5)


if __name__ == "__main__":
    unittest.main()
