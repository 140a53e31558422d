"""Checks of arguments: each gives the value back, or raises a TypeError that names the argument."""

import numbers


def text(value, argument):
    if not isinstance(value, str):
        raise TypeError("%s must be a string, not %s" % (argument, type(value).__name__))
    return value


def index(value, argument):
    """A whole number that C++ can hold; True and False are none."""
    if not isinstance(value, numbers.Integral) or isinstance(value, bool):
        raise TypeError("%s must be an integer, not %s" % (argument, type(value).__name__))
    if not -2**31 <= value < 2**31:
        raise OverflowError("%s is too large: %d" % (argument, value))
    return int(value)


def number(value, argument):
    if not isinstance(value, numbers.Real):
        raise TypeError("%s must be a number, not %s" % (argument, type(value).__name__))
    return float(value)


def instance(value, kind, argument):
    if not isinstance(value, kind):
        raise TypeError("%s must be a hou.%s, not %s" % (argument, kind.__name__, type(value).__name__))
    return value
