"""Positions."""

import math
import numbers


class Vector2:
    """Two numbers: x and y. Compares equal to another Vector2 with the same numbers."""

    __slots__ = ("_values",)

    def __init__(self, values=(0.0, 0.0), y=None):
        if y is not None:
            values = (values, y)
        self._values = _two_numbers(values, "values")

    def x(self):
        return self._values[0]

    def y(self):
        return self._values[1]

    def length(self):
        return math.hypot(*self._values)

    def isAlmostEqual(self, other, tolerance=0.00001):
        return all(abs(a - b) <= tolerance for a, b in zip(self, _two_numbers(other, "other")))

    def __len__(self):
        return 2

    def __getitem__(self, index):
        return self._values[index]

    def __iter__(self):
        return iter(self._values)

    def __eq__(self, other):
        return isinstance(other, Vector2) and self._values == other._values

    def __hash__(self):
        return hash(self._values)

    def __add__(self, other):
        x, y = _two_numbers(other, "other")
        return Vector2(self.x() + x, self.y() + y)

    def __sub__(self, other):
        x, y = _two_numbers(other, "other")
        return Vector2(self.x() - x, self.y() - y)

    def __mul__(self, factor):
        return Vector2(self.x() * factor, self.y() * factor)

    __rmul__ = __mul__

    def __neg__(self):
        return Vector2(-self.x(), -self.y())

    def __repr__(self):
        return "<hou.Vector2 [%g, %g]>" % self._values

    def __str__(self):
        return "[%g, %g]" % self._values


def _two_numbers(values, argument):
    """Gives a tuple of two floats, or raises a TypeError (not numbers) or a ValueError (not two, or not finite)."""
    numbers_given = tuple(values)
    if len(numbers_given) != 2:
        raise ValueError("%s must be two numbers, not %d" % (argument, len(numbers_given)))
    if not all(isinstance(n, numbers.Real) for n in numbers_given):
        raise TypeError("%s must be two numbers, not %r" % (argument, numbers_given))
    if not all(math.isfinite(n) for n in numbers_given):
        raise ValueError("%s must be finite numbers, not %r" % (argument, numbers_given))
    return tuple(float(n) for n in numbers_given)
