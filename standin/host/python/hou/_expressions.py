"""What the host runs for parameters: Python expressions and Python menu scripts.

A text is an expression, or the body of a function that returns the value.
"""

import ast
import functools
import numbers

import hou

from ._nodes import _wrap
from ._parms import Parm

_globals = {"__builtins__": __builtins__, "hou": hou}
_globals.update((name, value) for name, value in vars(hou).items() if not name.startswith("_"))


def _channel(path, evaluate):
    parm = hou.pwd().parm(path)
    if parm is None:
        raise hou.OperationFailed('There is no channel "%s" at "%s".' % (path, hou.pwd().path()))
    return evaluate(parm)


_globals["ch"] = lambda path: _channel(path, Parm.evalAsFloat)
_globals["chs"] = lambda path: _channel(path, Parm.evalAsString)


@functools.lru_cache(maxsize=2048)
def _compiled(text):
    """A function of `kwargs` that computes the text. Raises a SyntaxError with the text's own lines."""
    text = text.strip("\n") if text.strip() else "None"
    wrapper = ast.parse("def computed(kwargs=None): pass")
    try:
        body = [ast.Return(ast.parse(text.strip(), "<expression>", "eval").body)]
    except SyntaxError:
        body = ast.parse(text, "<expression>", "exec").body
    wrapper.body[0].body = body
    ast.fix_missing_locations(wrapper)
    names = dict(_globals)
    exec(compile(wrapper, "<expression>", "exec"), names)
    return names["computed"]


def check(text):
    """Raises a SyntaxError when the text does not compile; runs nothing of it."""
    _compiled(text)


def evaluate(text):
    """The value of an expression at hou.pwd(): a float or a string. None is 0; another kind of value is a TypeError."""
    value = _compiled(text)()
    if value is None:
        return 0.0
    if isinstance(value, numbers.Real):
        return float(value)
    if isinstance(value, str):
        return value
    raise TypeError("the expression gives %s; a number or a string is needed" % type(value).__name__)


def menu(text, node_id, token):
    """The items that a menu script gives, as a flat list of strings: token, label, token, label."""
    node = _wrap(node_id)
    kwargs = {"node": node, "parm": Parm(node, token, 0) if node is not None and token is not None else None}
    items = _compiled(text)(kwargs)
    if isinstance(items, str) or items is None:
        raise TypeError("the menu script gives %s; a flat list of tokens and labels is needed" % type(items).__name__)
    items = [item if isinstance(item, str) else str(item) for item in items]
    if len(items) % 2:
        raise ValueError("the menu script gives %d items; a label is needed for each token" % len(items))
    return items
