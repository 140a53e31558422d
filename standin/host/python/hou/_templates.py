"""Parameter templates: what a parameter is, as against what it holds.

A template made from a node or a node type is a description by itself: changing it changes nothing of the node. One made by
a script can be handed to `hou.Node.addSpareParmTuple`.
"""

import copy

from . import _check
from ._enums import (_require, fileType, folderType, menuType, parmCondType, parmData, parmLook, parmNamingScheme,
                     parmTemplateType, rampBasis, rampParmType, scriptLanguage, stringParmType)
from ._errors import OperationFailed


class ParmTemplate:
    """What all kinds have. The names of the arguments are those of the kinds' constructors."""

    _type = None
    _data_type = None

    def __init__(self, name, label, num_components=1, disable_when=None, is_hidden=False, is_label_hidden=False,
                 join_with_next=False, help=None, script_callback=None,
                 script_callback_language=scriptLanguage.Hscript, tags=None,
                 look=parmLook.Regular, naming_scheme=parmNamingScheme.Base1):
        self._name = _check.text(name, "name")
        self._label = _check.text(label, "label")
        self._size = _check.index(num_components, "num_components")
        if not 1 <= self._size <= 64:
            raise OperationFailed('The parameter "%s" cannot have %d components; 1 to 64 are possible.'
                                  % (name, self._size))
        self._conditionals = {}
        if disable_when:
            self.setConditional(parmCondType.DisableWhen, disable_when)
        self._hidden = bool(is_hidden)
        self._label_hidden = bool(is_label_hidden)
        self._join = bool(join_with_next)
        self._help = _check.text(help or "", "help")
        self._callback = _check.text(script_callback or "", "script_callback")
        self._callback_language = _require(scriptLanguage, script_callback_language, "script_callback_language")
        self._tags = {_check.text(k, "a tag"): _check.text(v, "a tag's value") for k, v in dict(tags or {}).items()}
        self._look = _require(parmLook, look, "look")
        self._scheme = _require(parmNamingScheme, naming_scheme, "naming_scheme")

    def name(self):
        return self._name

    def setName(self, name):
        self._name = _check.text(name, "name")

    def label(self):
        return self._label

    def setLabel(self, label):
        self._label = _check.text(label, "label")

    def type(self):
        return self._type

    def dataType(self):
        """A `hou.parmData`, or None for a kind that holds nothing."""
        return self._data_type

    def look(self):
        return self._look

    def namingScheme(self):
        return self._scheme

    def numComponents(self):
        return self._size

    def conditionals(self):
        """A dictionary from `hou.parmCondType` to the condition's text as it was given."""
        return dict(self._conditionals)

    def setConditional(self, type, conditional):
        _require(parmCondType, type, "type")
        self._conditionals[type] = _check.text(conditional, "conditional")

    def disableWhen(self):
        """The disabling condition's text; empty when there is none."""
        return self._conditionals.get(parmCondType.DisableWhen, "")

    def isHidden(self):
        return self._hidden

    def hide(self, on):
        self._hidden = bool(on)

    def isLabelHidden(self):
        return self._label_hidden

    def hideLabel(self, on):
        self._label_hidden = bool(on)

    def joinsWithNext(self):
        return self._join

    def setJoinWithNext(self, on):
        self._join = bool(on)

    def help(self):
        return self._help

    def setHelp(self, help):
        self._help = _check.text(help, "help")

    def scriptCallback(self):
        return self._callback

    def setScriptCallback(self, script_callback):
        self._callback = _check.text(script_callback, "script_callback")

    def scriptCallbackLanguage(self):
        return self._callback_language

    def setScriptCallbackLanguage(self, language):
        self._callback_language = _require(scriptLanguage, language, "language")

    def tags(self):
        """The spare data: a dictionary of strings. The callback is not among them."""
        return dict(self._tags)

    def setTags(self, tags):
        self._tags = {_check.text(k, "a tag"): _check.text(v, "a tag's value") for k, v in dict(tags).items()}

    def clone(self):
        return copy.deepcopy(self)

    def __repr__(self):
        return "<hou.%s name='%s' label='%s' length=%d>" % (type(self).__name__, self._name, self._label, self._size)

    def _facts(self):
        """What C++ needs for a spare parameter; kinds that can be spare add theirs."""
        return {
            "token": self._name, "label": self._label, "size": self._size, "spare": self._tags,
            "callback_script": self._callback,
            "callback_python": self._callback_language is scriptLanguage.Python,
            "help": self._help, "invisible": self._hidden, "join_next": self._join, "no_label": self._label_hidden,
            "disable_when": self.disableWhen(), "hide_when": self._conditionals.get(parmCondType.HideWhen, ""),
        }


class _WithMenu:
    """The menu part of the kinds that may have one."""

    def _set_menu(self, items, labels, script, language, type):
        self._menu_items = tuple(_check.text(one, "menu_items") for one in items)
        self._menu_labels = tuple(_check.text(one, "menu_labels") for one in labels) or self._menu_items
        if len(self._menu_labels) != len(self._menu_items):
            raise OperationFailed("A menu needs as many labels as items, but got %d labels and %d items."
                                  % (len(self._menu_labels), len(self._menu_items)))
        self._menu_script = _check.text(script or "", "item_generator_script")
        self._menu_language = _require(scriptLanguage, language, "item_generator_script_language")
        self._menu_type = _require(menuType, type, "menu_type")

    def menuItems(self):
        """The tokens of a static menu; empty without one."""
        return self._menu_items

    def menuLabels(self):
        return self._menu_labels

    def itemGeneratorScript(self):
        """The text of a script menu; empty without one."""
        return self._menu_script

    def itemGeneratorScriptLanguage(self):
        return self._menu_language

    def menuType(self):
        return self._menu_type

    def _menu_facts(self):
        return {"menu_items": self._menu_items, "menu_labels": self._menu_labels, "menu_script": self._menu_script,
                "menu_python": self._menu_language is scriptLanguage.Python,
                "menu_type": self._menu_type.name()}


class _WithDefaults:
    """Defaults and default expressions, one per component."""

    def _set_defaults(self, values, expressions, languages, empty, convert):
        values = (values,) if isinstance(values, (str, int, float)) else tuple(values)
        if len(values) > self._size:
            raise OperationFailed('The parameter "%s" has %d components but %d default values.'
                                  % (self._name, self._size, len(values)))
        self._defaults = tuple(convert(v, "default_value") for v in values) + (empty,) * (self._size - len(values))
        expressions = tuple(_check.text(e, "default_expression") for e in expressions)[:self._size]
        self._expressions = expressions + ("",) * (self._size - len(expressions))
        languages = tuple(_require(scriptLanguage, one, "default_expression_language") for one in languages)
        self._expression_languages = (languages + (scriptLanguage.Hscript,) * self._size)[:self._size]

    def defaultValue(self):
        """A tuple with one value per component."""
        return self._defaults

    def setDefaultValue(self, values):
        self._set_defaults(values, self._expressions, self._expression_languages, self._empty, self._convert)

    def defaultExpression(self):
        """A tuple of texts; empty for a component that starts with a value."""
        return self._expressions

    def defaultExpressionLanguage(self):
        return self._expression_languages

    def _default_facts(self):
        return {"defaults": self._defaults, "expressions": self._expressions,
                "expressions_python": tuple(one is scriptLanguage.Python for one in self._expression_languages)}


class _WithRange:
    def _set_range(self, minimum, maximum, min_is_strict, max_is_strict):
        self._min, self._max = self._convert(minimum, "min"), self._convert(maximum, "max")
        self._min_strict, self._max_strict = bool(min_is_strict), bool(max_is_strict)

    def minValue(self):
        return self._min

    def maxValue(self):
        return self._max

    def minIsStrict(self):
        return self._min_strict

    def maxIsStrict(self):
        return self._max_strict

    def _range_facts(self):
        return {"min": float(self._min), "max": float(self._max),
                "min_strict": self._min_strict, "max_strict": self._max_strict}


class FloatParmTemplate(_WithDefaults, _WithRange, ParmTemplate):
    _type = parmTemplateType.Float
    _data_type = parmData.Float
    _empty = 0.0
    _convert = staticmethod(_check.number)

    def __init__(self, name, label, num_components, default_value=(), min=0.0, max=10.0, min_is_strict=False,
                 max_is_strict=False, look=parmLook.Regular, naming_scheme=parmNamingScheme.XYZW,
                 default_expression=(), default_expression_language=(), **common):
        super().__init__(name, label, num_components, look=look, naming_scheme=naming_scheme, **common)
        self._set_defaults(default_value, default_expression, default_expression_language, 0.0, self._convert)
        self._set_range(min, max, min_is_strict, max_is_strict)

    def _spare_facts(self):
        return {"kind": "float", "look": self._look.name(), "naming": self._scheme.name(),
                **self._facts(), **self._default_facts(), **self._range_facts()}


class IntParmTemplate(_WithDefaults, _WithRange, _WithMenu, ParmTemplate):
    _type = parmTemplateType.Int
    _data_type = parmData.Int
    _empty = 0
    _convert = staticmethod(_check.index)

    def __init__(self, name, label, num_components, default_value=(), min=0, max=10, min_is_strict=False,
                 max_is_strict=False, look=parmLook.Regular, naming_scheme=parmNamingScheme.XYZW, menu_items=(),
                 menu_labels=(), item_generator_script=None, item_generator_script_language=scriptLanguage.Hscript,
                 menu_type=menuType.Normal, default_expression=(), default_expression_language=(), **common):
        super().__init__(name, label, num_components, look=look, naming_scheme=naming_scheme, **common)
        self._set_defaults(default_value, default_expression, default_expression_language, 0, self._convert)
        self._set_range(min, max, min_is_strict, max_is_strict)
        self._set_menu(menu_items, menu_labels, item_generator_script, item_generator_script_language, menu_type)

    def _spare_facts(self):
        return {"kind": "int", "look": self._look.name(), "naming": self._scheme.name(), **self._facts(),
                **self._default_facts(), **self._range_facts(), **self._menu_facts()}


class StringParmTemplate(_WithDefaults, _WithMenu, ParmTemplate):
    _type = parmTemplateType.String
    _data_type = parmData.String
    _empty = ""
    _convert = staticmethod(_check.text)

    def __init__(self, name, label, num_components, default_value=(), naming_scheme=parmNamingScheme.Base1,
                 string_type=stringParmType.Regular, file_type=fileType.Any, menu_items=(), menu_labels=(),
                 item_generator_script=None, item_generator_script_language=scriptLanguage.Hscript,
                 menu_type=menuType.Normal, default_expression=(), default_expression_language=(), **common):
        super().__init__(name, label, num_components, naming_scheme=naming_scheme, **common)
        self._set_defaults(default_value, default_expression, default_expression_language, "", self._convert)
        self._set_menu(menu_items, menu_labels, item_generator_script, item_generator_script_language, menu_type)
        self._string_type = _require(stringParmType, string_type, "string_type")
        self._file_type = _require(fileType, file_type, "file_type")

    def stringType(self):
        return self._string_type

    def fileType(self):
        return self._file_type

    def _spare_facts(self):
        return {"kind": "string", "string_type": self._string_type.name(), "file_type": self._file_type.name(),
                "naming": self._scheme.name(), **self._facts(), **self._default_facts(), **self._menu_facts()}


class ToggleParmTemplate(ParmTemplate):
    _type = parmTemplateType.Toggle
    _data_type = parmData.Int

    def __init__(self, name, label, default_value=False, default_expression="",
                 default_expression_language=scriptLanguage.Hscript, **common):
        super().__init__(name, label, 1, **common)
        self._default = bool(default_value)
        self._expression = _check.text(default_expression, "default_expression")
        self._expression_language = _require(scriptLanguage, default_expression_language,
                                             "default_expression_language")

    def defaultValue(self):
        return self._default

    def setDefaultValue(self, value):
        self._default = bool(value)

    def defaultExpression(self):
        return self._expression

    def defaultExpressionLanguage(self):
        return self._expression_language

    def _spare_facts(self):
        return {"kind": "toggle", "look": "Regular", "naming": "Base1", **self._facts(),
                "defaults": (int(self._default),), "expressions": (self._expression,),
                "expressions_python": (self._expression_language is scriptLanguage.Python,)}


class MenuParmTemplate(_WithMenu, ParmTemplate):
    _type = parmTemplateType.Menu
    _data_type = parmData.Int

    def __init__(self, name, label, menu_items, menu_labels=(), default_value=0, item_generator_script=None,
                 item_generator_script_language=scriptLanguage.Hscript, menu_type=menuType.Normal, **common):
        super().__init__(name, label, 1, **common)
        self._set_menu(menu_items, menu_labels, item_generator_script, item_generator_script_language, menu_type)
        self._default = _check.index(default_value, "default_value")

    def defaultValue(self):
        """The number of the item, from 0; for a button strip of toggles the bit mask."""
        return self._default

    def defaultValueAsString(self):
        """The item's token; empty when the number is that of no item."""
        return self._menu_items[self._default] if 0 <= self._default < len(self._menu_items) else ""


class ButtonParmTemplate(ParmTemplate):
    _type = parmTemplateType.Button
    _data_type = parmData.Int

    def __init__(self, name, label, **common):
        super().__init__(name, label, 1, **common)


class LabelParmTemplate(ParmTemplate):
    _type = parmTemplateType.Label
    _data_type = parmData.String

    def __init__(self, name, label, column_labels=(), **common):
        super().__init__(name, label, 1, **common)
        self._column_labels = tuple(_check.text(one, "column_labels") for one in column_labels)

    def columnLabels(self):
        """The text shown."""
        return self._column_labels


class SeparatorParmTemplate(ParmTemplate):
    _type = parmTemplateType.Separator

    def __init__(self, name, **common):
        super().__init__(name, common.pop("label", ""), 1, **common)


class FolderSetParmTemplate(ParmTemplate):
    """A row of tabs as one parameter; the tabs themselves are the folders of a ParmTemplateGroup."""

    _type = parmTemplateType.FolderSet
    _data_type = parmData.Int

    def __init__(self, name, folder_names, folder_type=folderType.Tabs, **common):
        super().__init__(name, common.pop("label", ""), 1, **common)
        self._folder_names = tuple(_check.text(one, "folder_names") for one in folder_names)
        self._folder_type = _require(folderType, folder_type, "folder_type")

    def folderNames(self):
        return self._folder_names

    def folderType(self):
        return self._folder_type


class FolderParmTemplate(ParmTemplate):
    """One tab with its contents, or a multi-parameter with the templates of one instance."""

    _type = parmTemplateType.Folder

    def __init__(self, name, label, parm_templates=(), folder_type=folderType.Tabs, default_value=0,
                 ends_tab_group=False, **common):
        super().__init__(name, label, 1, **common)
        self._children = [_check.instance(one, ParmTemplate, "parm_templates") for one in parm_templates]
        self._folder_type = _require(folderType, folder_type, "folder_type")
        self._default = _check.index(default_value, "default_value")
        self._ends_tab_group = bool(ends_tab_group)

    def parmTemplates(self):
        return tuple(self._children)

    def addParmTemplate(self, parm_template):
        self._children.append(_check.instance(parm_template, ParmTemplate, "parm_template"))

    def folderType(self):
        return self._folder_type

    def defaultValue(self):
        """The number of instances that a multi-parameter starts with."""
        return self._default

    def endsTabGroup(self):
        return self._ends_tab_group

    def isActualFolder(self):
        """False for a multi-parameter."""
        return self._folder_type in (folderType.Collapsible, folderType.Simple, folderType.Tabs,
                                     folderType.RadioButtons)


class RampParmTemplate(ParmTemplate):
    _type = parmTemplateType.Ramp
    _data_type = parmData.Ramp

    def __init__(self, name, label, ramp_parm_type, default_value=2, default_basis=rampBasis.Linear, **common):
        super().__init__(name, label, 1, **common)
        self._parm_type = _require(rampParmType, ramp_parm_type, "ramp_parm_type")
        self._default = _check.index(default_value, "default_value")
        self._basis = _require(rampBasis, default_basis, "default_basis")

    def parmType(self):
        return self._parm_type

    def defaultValue(self):
        """The number of keys that the ramp starts with."""
        return self._default

    def defaultBasis(self):
        return self._basis
