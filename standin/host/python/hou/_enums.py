"""Enumerations: each is a class whose attributes are `EnumValue` objects, compared by identity."""


class EnumValue:
    """One value of an enumeration. Prints as `parmTemplateType.Float`."""

    __slots__ = ("_enum", "_name", "_number")

    def __init__(self, enum, name, number):
        self._enum = enum
        self._name = name
        self._number = number

    def name(self):
        return self._name

    def __repr__(self):
        return "%s.%s" % (self._enum, self._name)

    def __reduce__(self):
        return (_value, (self._enum, self._name))

    def __copy__(self):
        return self

    def __deepcopy__(self, memo):
        return self


class _Enumeration(type):
    """Makes the values from the `_names` of a class; their numbers are positions in it."""

    def __new__(mcs, name, bases, members):
        values = [EnumValue(name, text, number) for number, text in enumerate(members["_names"])]
        members["_values"] = tuple(values)
        members.update((value.name(), value) for value in values)
        return super().__new__(mcs, name, bases, members)

    def __iter__(cls):
        return iter(cls._values)

    def __setattr__(cls, name, value):
        raise AttributeError("the values of hou.%s cannot be changed" % cls.__name__)

    def values(cls):
        return cls._values


def _value(enum, name):
    return getattr(globals()[enum], name)


def _require(enum, value, argument):
    """Raises a TypeError unless `value` belongs to the enumeration."""
    if not any(value is one for one in enum.values()):
        raise TypeError("%s must be a hou.%s value, not %r" % (argument, enum.__name__, value))
    return value


class exprLanguage(metaclass=_Enumeration):
    _names = ("Hscript", "Python")


class scriptLanguage(metaclass=_Enumeration):
    _names = ("Hscript", "Python")


class parmTemplateType(metaclass=_Enumeration):
    _names = ("Int", "Float", "String", "Toggle", "Menu", "Button", "FolderSet", "Folder", "Separator", "Label", "Ramp")


class parmData(metaclass=_Enumeration):
    _names = ("Int", "Float", "String", "Ramp")


class parmLook(metaclass=_Enumeration):
    _names = ("Regular", "Logarithmic", "Angle", "Vector", "ColorSquare", "HueCircle", "CRGBAPlaneChooser")


class parmNamingScheme(metaclass=_Enumeration):
    _names = ("Base1", "XYZW", "XYWH", "UVW", "RGBA", "MinMax", "MaxMin", "StartEnd", "BeginEnd")


class parmCondType(metaclass=_Enumeration):
    _names = ("DisableWhen", "HideWhen")


class stringParmType(metaclass=_Enumeration):
    _names = ("Regular", "FileReference", "NodeReference", "NodeReferenceList")


class fileType(metaclass=_Enumeration):
    _names = ("Any", "Image", "Geometry", "Directory")


class menuType(metaclass=_Enumeration):
    _names = ("Normal", "Mini", "StringReplace", "StringToggle", "ControlNextParameter")


class folderType(metaclass=_Enumeration):
    _names = ("Collapsible", "Simple", "Tabs", "RadioButtons", "MultiparmBlock", "ScrollingMultiparmBlock",
              "TabbedMultiparmBlock")


class rampParmType(metaclass=_Enumeration):
    _names = ("Color", "Float")


class rampBasis(metaclass=_Enumeration):
    """Interpolation after a key; the order is that of the host's interpolation menu."""
    _names = ("Constant", "Linear", "CatmullRom", "MonotoneCubic", "Bezier", "BSpline", "Hermite")


class nodeFlag(metaclass=_Enumeration):
    _names = ("Bypass", "Display", "Render", "Template", "Lock", "Expose", "VopLowDetail", "VopMediumDetail",
              "VopHighDetail")
