"""Node types and their categories (operator tables)."""

import _hou

from . import _check, _template_group, _translate


class NodeTypeCategory:
    """A table of node types, such as "Vop"."""

    __slots__ = ("_table",)

    def __init__(self, table):
        self._table = table

    def name(self):
        return self._table

    def label(self):
        return _hou.category_label(self._table)

    def nodeTypes(self):
        """A dictionary from type name to hou.NodeType, in the order of registration."""
        return {name: NodeType(self, name) for name in _hou.type_names(self._table)}

    def nodeType(self, name):
        """The type of that name, or None."""
        _check.text(name, "name")
        return NodeType(self, name) if _hou.type_exists(self._table, name) else None

    def __eq__(self, other):
        return isinstance(other, NodeTypeCategory) and self._table == other._table

    def __hash__(self):
        return hash(self._table)

    def __repr__(self):
        return "<hou.NodeTypeCategory for %s>" % self._table


class NodeType:
    """One type of node. Types live for the whole process."""

    __slots__ = ("_category", "_name")

    def __init__(self, category, name):
        self._category = category
        self._name = name

    def name(self):
        """The whole internal name, with namespace and version."""
        return self._name

    def nameComponents(self):
        """(scope, namespace, name, version); empty texts for what is not there."""
        return _name_components(self._name)

    def category(self):
        return self._category

    def _fact(self, key):
        return _hou.type_facts(self._category._table, self._name)[key]

    def description(self):
        """The label."""
        return self._fact("label")

    def icon(self):
        return self._fact("icon")

    def minNumInputs(self):
        return self._fact("min_inputs")

    def maxNumInputs(self):
        return self._fact("max_inputs")

    def maxNumOutputs(self):
        return self._fact("max_outputs")

    def hasUnorderedInputs(self):
        return self._fact("unordered")

    def parmTemplates(self):
        """One template per parameter in the host's flat order; a set of tabs is one of them."""
        return _translate.templates(_hou.type_templates(self._category._table, self._name))

    def parmTemplateGroup(self):
        """The parameters as a tree of folders."""
        return _template_group.group(_hou.type_templates(self._category._table, self._name))

    def definition(self):
        """The hou.HDADefinition that the type comes from; None for types that come from no asset file."""
        from .hda import HDADefinition
        path = _hou.library_of_type(self._category._table, self._name)
        return None if path is None else HDADefinition(path, self._category._table, self._name)

    def __eq__(self, other):
        return isinstance(other, NodeType) and (self._category, self._name) == (other._category, other._name)

    def __hash__(self):
        return hash((self._category, self._name))

    def __repr__(self):
        return "<hou.NodeType for %s %s>" % (self._category.name(), self._name)


def _name_components(name):
    """Takes "[scope::][namespace::]name[::version]" apart; a version is made of digits and dots."""
    parts = name.split("::")
    version = ""
    if len(parts) > 1 and parts[-1] and all(c.isdigit() or c == "." for c in parts[-1]):
        version = parts.pop()
    core = parts.pop()
    namespace = parts.pop() if parts else ""
    return ("::".join(parts), namespace, core, version)


def nodeTypeCategories():
    """A dictionary from name to hou.NodeTypeCategory."""
    return {table: NodeTypeCategory(table) for table in _hou.categories()}


def vopNodeTypeCategory():
    return NodeTypeCategory("Vop")


def shopNodeTypeCategory():
    return NodeTypeCategory("Shop")


def objNodeTypeCategory():
    return NodeTypeCategory("Object")


def nodeType(category, name):
    """The type of that name, or None."""
    return _check.instance(category, NodeTypeCategory, "category").nodeType(name)
