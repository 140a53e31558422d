"""Ramps: curves of numbers or colours over positions from 0 to 1."""

import numbers
from bisect import bisect_right

from ._enums import _require, rampBasis
from ._errors import InvalidSize, NotAvailable, OperationFailed


class Ramp:
    """A ramp's keys, sorted by position.

    `basis` holds one `hou.rampBasis` per key (how the curve goes on after it), `keys` the positions, `values` a float per
    key for a float ramp or three floats per key for a colour ramp. Keys of equal position keep their order.
    """

    def __init__(self, basis=(rampBasis.Linear, rampBasis.Linear), keys=(0.0, 1.0), values=(0.0, 1.0)):
        basis, keys, values = tuple(basis), tuple(keys), tuple(values)
        if not len(basis) == len(keys) == len(values):
            raise InvalidSize("A ramp needs as many interpolations as positions and values, but got %d, %d and %d."
                              % (len(basis), len(keys), len(values)))
        if not keys:
            raise InvalidSize("A ramp needs at least one key.")
        for one in basis:
            _require(rampBasis, one, "basis")
        rows = sorted(zip((_number(k, "keys") for k in keys), basis, (_ramp_value(v) for v in values)),
                      key=lambda row: row[0])
        self._keys, self._basis, self._values = (tuple(column) for column in zip(*rows))
        colours = sum(isinstance(v, tuple) for v in self._values)
        if colours not in (0, len(self._values)):
            raise OperationFailed("The values of a ramp are either all numbers or all colours.")
        self._is_color = colours > 0

    def basis(self):
        return self._basis

    def keys(self):
        return self._keys

    def values(self):
        return self._values

    def isColor(self):
        return self._is_color

    def setIsColor(self, is_color):
        """Turns numbers into greys, or colours into their averages."""
        if bool(is_color) == self._is_color:
            return
        if is_color:
            self._values = tuple((v, v, v) for v in self._values)
        else:
            self._values = tuple(sum(v) / 3.0 for v in self._values)
        self._is_color = bool(is_color)

    def lookup(self, position):
        """The value at a position: a float, or a tuple of three. Before the first key and after the last it is theirs.

        Constant, Linear, CatmullRom, MonotoneCubic and BSpline are there; a segment of another kind raises
        hou.NotAvailable.
        """
        position = _number(position, "position")
        if not self._is_color:
            return self._interpolate(position, self._values)
        return tuple(self._interpolate(position, channel) for channel in zip(*self._values))

    def _interpolate(self, position, values):
        keys = self._keys
        after = bisect_right(keys, position)
        if after == 0:
            return values[0]
        if after == len(keys):
            return values[-1]
        left = after - 1
        segment = _segments.get(self._basis[left])
        if segment is None:
            raise NotAvailable("A ramp cannot be looked up between keys of %r yet." % self._basis[left])
        t = (position - keys[left]) / (keys[after] - keys[left])
        around = [values[min(max(i, 0), len(values) - 1)] for i in range(left - 1, left + 3)]
        return segment(t, *around)

    def __eq__(self, other):
        return isinstance(other, Ramp) and \
            (self._basis, self._keys, self._values) == (other._basis, other._keys, other._values)

    __hash__ = None

    def __repr__(self):
        return "<hou.Ramp is_color=%s num_keys=%d %s>" % (
            self._is_color, len(self._keys),
            " ".join("(t=%g, %s, %s)" % (k, v, b.name()) for k, v, b in zip(self._keys, self._values, self._basis)))


def _number(value, argument):
    if not isinstance(value, numbers.Real):
        raise TypeError("%s must be numbers, not %r" % (argument, value))
    return float(value)


def _ramp_value(value):
    if isinstance(value, numbers.Real):
        return float(value)
    colour = tuple(_number(v, "the parts of a colour") for v in value)
    if len(colour) != 3:
        raise InvalidSize("A colour of a ramp has three parts, not %d." % len(colour))
    return colour


# A segment goes from b (t = 0) to c (t = 1); a and d are the neighbours, the end keys repeated.

def _constant(t, a, b, c, d):
    return b


def _linear(t, a, b, c, d):
    return b + (c - b) * t


def _hermite(t, b, c, tangent_b, tangent_c):
    t2, t3 = t * t, t * t * t
    return ((2 * t3 - 3 * t2 + 1) * b + (t3 - 2 * t2 + t) * tangent_b
            + (3 * t2 - 2 * t3) * c + (t3 - t2) * tangent_c)


def _catmull_rom(t, a, b, c, d):
    return _hermite(t, b, c, (c - a) / 2, (d - b) / 2)


def _monotone_cubic(t, a, b, c, d):
    slope = c - b

    def limited(tangent):
        if slope == 0 or tangent / slope <= 0:
            return 0.0
        return slope * min(tangent / slope, 3.0)

    return _hermite(t, b, c, limited((c - a) / 2), limited((d - b) / 2))


def _b_spline(t, a, b, c, d):
    t2, t3 = t * t, t * t * t
    return ((1 - 3 * t + 3 * t2 - t3) * a + (4 - 6 * t2 + 3 * t3) * b
            + (1 + 3 * t + 3 * t2 - 3 * t3) * c + t3 * d) / 6


_segments = {
    rampBasis.Constant: _constant,
    rampBasis.Linear: _linear,
    rampBasis.CatmullRom: _catmull_rom,
    rampBasis.MonotoneCubic: _monotone_cubic,
    rampBasis.BSpline: _b_spline,
}
