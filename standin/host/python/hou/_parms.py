"""Parameters of nodes: `Parm` is one component, `ParmTuple` all components of one parameter."""

import math
import numbers

import _hou

from . import _check, _translate, undos
from ._enums import _require, exprLanguage, rampBasis
from ._errors import InvalidSize, NotAvailable, OperationFailed
from ._ramp import Ramp


def _frame_time(frame):
    return _hou.frame_to_time(_check.number(frame, "frame"))


class Parm:
    """One component of a parameter. A handle by name: using it after the node or the multi-parameter instance is gone
    raises hou.ObjectWasDeleted."""

    __slots__ = ("_node", "_id", "_token", "_component")

    def __init__(self, node, token, component):
        self._node = node
        self._id = node._id
        self._token = token
        self._component = component

    # Who it is

    def name(self):
        """The name of the component: `colorr` of the colour `color`."""
        return _hou.parm_channels(self._id, self._token)[self._component]

    def path(self):
        return self._node.path() + "/" + self.name()

    def description(self):
        """The label."""
        return _hou.parm_label(self._id, self._token)

    def tuple(self):
        return ParmTuple(self._node, self._token)

    def node(self):
        return self._node

    def componentIndex(self):
        return self._component

    def parmTemplate(self):
        return _translate.template(_hou.parm_template(self._id, self._token))

    def isSpare(self):
        return _hou.parm_is_spare(self._id, self._token)

    # Values

    def set(self, value):
        """Sets the value: a number, a text, a menu's token, a multi-parameter's count, or a hou.Ramp.

        A text given to a string parameter is kept unexpanded. A component that holds an expression keeps it until
        deleteAllKeyframes(). Sends the node's events, as an edit does, but calls no callback.
        """
        if isinstance(value, Ramp):
            with undos.group("Parameter Change"):
                _set_ramp(self, value)
        else:
            _set(self, value)

    def eval(self):
        """The value now: an int, a float or a string as the kind asks; the count of a multi-parameter; a ramp as hou.Ramp."""
        return self.evalAtTime(_hou.time())

    def evalAtTime(self, time):
        time = _check.number(time, "time")
        if _hou.parm_kind(self._id, self._token) == "ramp":
            return self._ramp_at(time)
        return _hou.parm_eval(self._id, self._token, self._component, time)

    def evalAtFrame(self, frame):
        return self.evalAtTime(_frame_time(frame))

    def evalAsInt(self):
        return _hou.parm_eval_int(self._id, self._token, self._component, _hou.time())

    def evalAsIntAtFrame(self, frame):
        return _hou.parm_eval_int(self._id, self._token, self._component, _frame_time(frame))

    def evalAsFloat(self):
        return _hou.parm_eval_float(self._id, self._token, self._component, _hou.time())

    def evalAsFloatAtFrame(self, frame):
        return _hou.parm_eval_float(self._id, self._token, self._component, _frame_time(frame))

    def evalAsString(self):
        """The value as text; of a menu the token, of a string the expanded text."""
        return _hou.parm_eval_string(self._id, self._token, self._component, _hou.time())

    def evalAsStringAtFrame(self, frame):
        return _hou.parm_eval_string(self._id, self._token, self._component, _frame_time(frame))

    def evalAsRamp(self):
        return self.evalAsRampAtFrame(_hou.time_to_frame(_hou.time()))

    def evalAsRampAtFrame(self, frame):
        if _hou.parm_kind(self._id, self._token) != "ramp":
            raise OperationFailed('The parameter "%s" is no ramp.' % self.path())
        return self._ramp_at(_frame_time(frame))

    def _ramp_at(self, time):
        """Reads three parameters per key: position, value, interpolation."""
        bases, keys, values = [], [], []
        for position, value, basis in _hou.multi_instances(self._id, self._token):
            size = len(_hou.parm_channels(self._id, value))
            parts = tuple(_hou.parm_eval_float(self._id, value, i, time) for i in range(size))
            keys.append(_hou.parm_eval_float(self._id, position, 0, time))
            values.append(parts if size > 1 else parts[0])
            bases.append(_basis(_hou.parm_eval_int(self._id, basis, 0, time)))
        if not keys:
            raise OperationFailed('The ramp "%s" has no keys.' % self.path())
        return Ramp(bases, keys, values)

    def unexpandedString(self):
        """The text of a string parameter as it was typed; raises hou.OperationFailed for other kinds and expressions."""
        if _hou.parm_kind(self._id, self._token) != "string":
            raise OperationFailed('The parameter "%s" holds no string.' % self.path())
        if _hou.parm_expression(self._id, self._token, self._component) is not None:
            raise OperationFailed('The parameter "%s" holds an expression; see Parm.expression().' % self.path())
        return _hou.parm_raw(self._id, self._token, self._component)

    def isAtDefault(self):
        return _hou.parm_is_default(self._id, self._token, self._component)

    def revertToDefaults(self):
        _hou.parm_revert(self._id, self._token, self._component)

    # Expressions

    def setExpression(self, expression, language=None, replace_expression=True):
        """Gives the component an expression; without `language` in the node's own, which is hscript.

        `replace_expression` False leaves an expression that is there alone.
        """
        _check.text(expression, "expression")
        if language is None:
            language = self._node.expressionLanguage()
        _require(exprLanguage, language, "language")
        if not replace_expression and _hou.parm_expression(self._id, self._token, self._component) is not None:
            return
        _hou.parm_set_expression(self._id, self._token, self._component, expression,
                                 language is exprLanguage.Python)

    def expression(self):
        return self._expression()[0]

    def expressionLanguage(self):
        return exprLanguage.Python if self._expression()[1] else exprLanguage.Hscript

    def _expression(self):
        found = _hou.parm_expression(self._id, self._token, self._component)
        if found is None:
            raise OperationFailed('The parameter "%s" does not have an expression.' % self.path())
        return found

    def deleteAllKeyframes(self):
        """Removes the expression; the value that it last gave stays."""
        _hou.parm_delete_keyframes(self._id, self._token, self._component)

    def isTimeDependent(self):
        return _hou.parm_is_time_dependent(self._id, self._token, self._component)

    # Multi-parameters

    def isMultiParmParent(self):
        return _hou.parm_is_multi(self._id, self._token)

    def insertMultiParmInstance(self, index):
        """Inserts an instance at a position counted from 0; those behind it are renumbered."""
        _hou.multi_insert(self._id, self._token, _check.index(index, "index"))

    def removeMultiParmInstance(self, index):
        _hou.multi_remove(self._id, self._token, _check.index(index, "index"))

    def multiParmInstances(self):
        """The components of all instances, instance by instance."""
        return tuple(Parm(self._node, token, component)
                     for instance in _hou.multi_instances(self._id, self._token) for token in instance
                     for component in range(len(_hou.parm_channels(self._id, token))))

    def multiParmInstancesPerItem(self):
        return _hou.multi_parms_per_item(self._id, self._token)

    def multiParmStartOffset(self):
        """The number of the first instance."""
        return _hou.multi_start_offset(self._id, self._token)

    def isMultiParmInstance(self):
        return bool(_hou.multi_indices(self._id, self._token))

    def multiParmInstanceIndices(self):
        """The numbers of the instances around this parameter, from the outside in; empty when there is none."""
        return tuple(_hou.multi_indices(self._id, self._token))

    def parentMultiParm(self):
        token = _hou.multi_parent(self._id, self._token)
        return None if token is None else Parm(self._node, token, 0)

    # States

    def isDisabled(self):
        return not _hou.parm_enabled(self._id, self._token, self._component)

    def isHidden(self):
        return not _hou.parm_visible(self._id, self._token, self._component)

    def disable(self, on):
        """Changes the state as a condition would; the next refresh of the node may change it again."""
        _hou.parm_set_enabled(self._id, self._token, self._component, not on)

    def hide(self, on):
        _hou.parm_set_visible(self._id, self._token, self._component, not on)

    def containingFolders(self):
        """The labels of the folders around the parameter, from the outside in."""
        return self._node._folders_around(self._token)

    # Menus and buttons

    def menuItems(self):
        """The tokens of the menu, computed now for a script menu."""
        return tuple(token for token, label in self._menu())

    def menuLabels(self):
        return tuple(label for token, label in self._menu())

    def _menu(self):
        items = _hou.parm_menu(self._id, self._token)
        if items is None:
            raise OperationFailed('The parameter "%s" is not a menu.' % self.path())
        return items

    def pressButton(self, arguments=None, *, menu_index=None):
        """Runs the callback, of any kind of parameter, as pressing or editing it would; nothing without one.

        A button with a menu is an action menu: `menu_index` is the item to choose, from 0, the first one without it.
        Callbacks take no further arguments here, so `arguments` must be None or empty.
        """
        if arguments:
            raise NotAvailable('The callback of the parameter "%s" takes no further arguments; leave out: %s.'
                               % (self.path(), ", ".join(map(str, arguments))))
        if menu_index is None:
            _hou.parm_press(self._id, self._token, self._component)
        else:
            _hou.parm_press_item(self._id, self._token, self._action(_check.index(menu_index, "menu_index")))

    def _action(self, index):
        if not _hou.parm_is_action_menu(self._id, self._token):
            raise OperationFailed('The parameter "%s" is no button with a menu; leave out menu_index.' % self.path())
        count = len(self._menu())
        if not 0 <= index < count:
            raise OperationFailed('The menu of the parameter "%s" has no item %d; it has %d, counted from 0.'
                                  % (self.path(), index, count))
        return index

    def __eq__(self, other):
        return isinstance(other, Parm) and \
            (self._id, self._token, self._component) == (other._id, other._token, other._component)

    def __hash__(self):
        return hash((self._id, self._token, self._component))

    def __repr__(self):
        try:
            return "<hou.Parm %s in %s>" % (self.name(), self._node.path())
        except Exception:
            return "<hou.Parm %s, deleted>" % self._token


class ParmTuple:
    """All components of one parameter, as a sequence of hou.Parm."""

    __slots__ = ("_node", "_id", "_token")

    def __init__(self, node, token):
        self._node = node
        self._id = node._id
        self._token = token

    def name(self):
        _hou.parm_channels(self._id, self._token)
        return self._token

    def path(self):
        return self._node.path() + "/" + self.name()

    def description(self):
        return _hou.parm_label(self._id, self._token)

    def node(self):
        return self._node

    def parmTemplate(self):
        return _translate.template(_hou.parm_template(self._id, self._token))

    def isSpare(self):
        return _hou.parm_is_spare(self._id, self._token)

    def eval(self):
        return tuple(parm.eval() for parm in self)

    def evalAtTime(self, time):
        return tuple(parm.evalAtTime(time) for parm in self)

    def evalAtFrame(self, frame):
        return tuple(parm.evalAtFrame(frame) for parm in self)

    def evalAsInts(self):
        return tuple(parm.evalAsInt() for parm in self)

    def evalAsFloats(self):
        return tuple(parm.evalAsFloat() for parm in self)

    def evalAsStrings(self):
        return tuple(parm.evalAsString() for parm in self)

    def set(self, values):
        """Sets all components; another number of values than components raises hou.InvalidSize and sets none."""
        if isinstance(values, (str, Ramp)):
            raise TypeError("values must be a sequence with one value per component")
        values = tuple(values)
        if len(values) != len(self):
            raise InvalidSize('The parameter "%s" has %d components, but got %d values.'
                              % (self.path(), len(self), len(values)))
        with undos.group("Parameter Change"):
            for parm, value in zip(self, values):
                parm.set(value)

    def isAtDefault(self):
        return all(parm.isAtDefault() for parm in self)

    def revertToDefaults(self):
        with undos.group("Parameter Change"):
            for parm in self:
                parm.revertToDefaults()

    def deleteAllKeyframes(self):
        with undos.group("Parameter Change"):
            for parm in self:
                parm.deleteAllKeyframes()

    def isDisabled(self):
        return all(parm.isDisabled() for parm in self)

    def isHidden(self):
        return all(parm.isHidden() for parm in self)

    def disable(self, on):
        for parm in self:
            parm.disable(on)

    def hide(self, on):
        for parm in self:
            parm.hide(on)

    def containingFolders(self):
        return self._node._folders_around(self._token)

    def isMultiParmInstance(self):
        return bool(_hou.multi_indices(self._id, self._token))

    def multiParmInstanceIndices(self):
        return tuple(_hou.multi_indices(self._id, self._token))

    def parentMultiParm(self):
        return self[0].parentMultiParm()

    def __len__(self):
        return len(_hou.parm_channels(self._id, self._token))

    def __getitem__(self, index):
        if isinstance(index, slice):
            return tuple(self)[index]
        index = _check.index(index, "index")
        size = len(self)
        if not -size <= index < size:
            raise IndexError('The parameter "%s" has %d components; %d is none of them.' % (self._token, size, index))
        return Parm(self._node, self._token, index % size)

    def __iter__(self):
        return (Parm(self._node, self._token, index) for index in range(len(self)))

    def __eq__(self, other):
        return isinstance(other, ParmTuple) and (self._id, self._token) == (other._id, other._token)

    def __hash__(self):
        return hash((self._id, self._token))

    def __repr__(self):
        try:
            return "<hou.ParmTuple %s in %s>" % (self.name(), self._node.path())
        except Exception:
            return "<hou.ParmTuple %s, deleted>" % self._token


# What set() takes, by kind (`_hou.parm_kind`)

def _set(parm, value):
    kind = _hou.parm_kind(parm._id, parm._token)
    setter = _setters.get(kind)
    if setter is None:
        raise OperationFailed('The parameter "%s" holds no value.' % parm.path())
    setter(parm, value)


def _wrong(parm, wanted, value):
    raise TypeError('The parameter "%s" takes %s, not %s.' % (parm.path(), wanted, type(value).__name__))


def _set_string(parm, value):
    if not isinstance(value, str):
        _wrong(parm, "a string", value)
    _hou.parm_set_string(parm._id, parm._token, parm._component, value)


def _set_float(parm, value):
    if not isinstance(value, numbers.Real):
        _wrong(parm, "a number", value)
    _hou.parm_set_float(parm._id, parm._token, parm._component, float(value))


def _set_whole(parm, value):
    """A number, or the token of a menu's item."""
    if isinstance(value, str):
        value = _menu_index(parm, value)
    if not isinstance(value, numbers.Real):
        _wrong(parm, "a number", value)
    _hou.parm_set_int(parm._id, parm._token, parm._component, _whole(parm, value))


def _menu_index(parm, token):
    index = _hou.parm_menu_index(parm._id, parm._token, token)
    if index >= 0:
        return index
    tokens = [item for item, label in _hou.parm_menu(parm._id, parm._token) or ()]
    if not tokens:
        _wrong(parm, "a number", token)
    raise OperationFailed('The menu of the parameter "%s" has no item "%s"; its items are: %s.'
                          % (parm.path(), token, " ".join(tokens)))


def _set_count(parm, value):
    if not isinstance(value, numbers.Real):
        _wrong(parm, "a number of instances", value)
    _hou.multi_set_count(parm._id, parm._token, _whole(parm, value))


def _whole(parm, value):
    if isinstance(value, float) and not math.isfinite(value):
        raise OperationFailed('The parameter "%s" takes whole numbers; %r is none.' % (parm.path(), value))
    whole = int(value)
    if not -2**63 <= whole < 2**63:
        raise OverflowError('The parameter "%s" cannot hold %d.' % (parm.path(), whole))
    return whole


_setters = {
    "string": _set_string,
    "float": _set_float,
    "int": _set_whole,
    "ordinal": _set_whole,
    "multi": _set_count,
    "ramp": _set_count,
}


def _basis(number):
    values = rampBasis.values()
    return values[number] if 0 <= number < len(values) else rampBasis.Linear


def _set_ramp(parm, ramp):
    """Rewrites the count and all keys. A grey ramp can be set on a colour one; colours need a colour ramp."""
    if _hou.parm_kind(parm._id, parm._token) != "ramp":
        raise OperationFailed('The parameter "%s" is no ramp and cannot be set to one.' % parm.path())
    wants_color = _hou.parm_is_color_ramp(parm._id, parm._token)
    if ramp.isColor() and not wants_color:
        raise OperationFailed('The ramp "%s" holds numbers; it cannot take the colours given.' % parm.path())
    _hou.multi_set_count(parm._id, parm._token, len(ramp.keys()))
    rows = zip(_hou.multi_instances(parm._id, parm._token), ramp.keys(), ramp.values(), ramp.basis())
    for (position, value, interpolation), key, amount, basis in rows:
        _hou.parm_set_float(parm._id, position, 0, key)
        parts = amount if ramp.isColor() else (amount,) * (3 if wants_color else 1)
        for component, part in enumerate(parts):
            _hou.parm_set_float(parm._id, value, component, part)
        _hou.parm_set_int(parm._id, interpolation, 0, rampBasis.values().index(basis))
