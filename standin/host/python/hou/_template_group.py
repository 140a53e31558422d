"""The interface of a node or a type as a tree: folders hold what lies in their tabs."""

from . import _check, _translate
from ._errors import OperationFailed
from ._templates import FolderParmTemplate, ParmTemplate


class ParmTemplateGroup:
    """An ordered tree of templates. A group is a description by itself: changing it changes nothing of a node."""

    def __init__(self, parm_templates=()):
        self._entries = [_check.instance(one, ParmTemplate, "parm_templates") for one in parm_templates]

    def entries(self):
        """The templates of the outermost level."""
        return tuple(self._entries)

    parmTemplates = entries

    def entriesWithoutFolders(self):
        """Every template that is no folder, in the order in which they are shown."""
        return tuple(one for one in _walk(self._entries)
                     if not (isinstance(one, FolderParmTemplate) and one.isActualFolder()))

    def find(self, name):
        """The template of that name at any depth, or None."""
        _check.text(name, "name")
        return next((one for one in _walk(self._entries) if one.name() == name), None)

    def findFolder(self, label):
        """The folder with that label, or with that path of labels from the outside in; None when there is none."""
        labels = (label,) if isinstance(label, str) else tuple(_check.text(one, "label") for one in label)
        if len(labels) == 1:
            return next((one for one in _walk(self._entries) if _is_folder(one, labels[0])), None)
        level, found = self._entries, None
        for wanted in labels:
            found = next((one for one in level if _is_folder(one, wanted)), None)
            if found is None:
                return None
            level = found.parmTemplates()
        return found

    def append(self, parm_template):
        _check.instance(parm_template, ParmTemplate, "parm_template")
        if self.find(parm_template.name()) is not None:
            raise OperationFailed('The group already has a parameter named "%s".' % parm_template.name())
        self._entries.append(parm_template)

    def __repr__(self):
        return "<hou.ParmTemplateGroup of %d entries>" % len(self._entries)


def _is_folder(one, label):
    return isinstance(one, FolderParmTemplate) and one.isActualFolder() and one.label() == label


def _walk(entries):
    for one in entries:
        yield one
        if isinstance(one, FolderParmTemplate):
            yield from _walk(one.parmTemplates())


def tab_counts(facts):
    """How many of the following parameters each tab of a switcher holds; never negative."""
    return [max(0, int(value)) for value, text, meaning in facts["defaults"]]


def group(facts_of_list):
    """Folds the flat list of the host into a tree: a switcher takes its tabs' contents from what follows it."""
    rest = iter(list(facts_of_list))
    return ParmTemplateGroup(_take(rest, None))


def _take(rest, count):
    made = []
    taken = 0
    while count is None or taken < count:
        facts = next(rest, None)
        if facts is None:
            break
        taken += 1
        if facts["type"] == "PRM_SWITCHER" and not facts["multi"]:
            made.extend(_folders(facts, rest))
        else:
            made.append(_translate.template(facts))
    return made


def _folders(facts, rest):
    """One folder per tab. The first bears the switcher's name, the others that name and their number."""
    whole = _translate.template(facts)
    titles, counts = whole.folderNames(), tab_counts(facts)
    for number, (title, count) in enumerate(zip(titles, counts)):
        name = facts["token"] if number == 0 else "%s_%d" % (facts["token"], number)
        yield FolderParmTemplate(name, title, _take(rest, count), whole.folderType(), is_hidden=whole.isHidden(),
                                 join_with_next=whole.joinsWithNext(), tags=whole.tags(),
                                 ends_tab_group=number == len(titles) - 1)


def folders_around(facts_of_list, token):
    """Labels of the folders around one parameter of a flat list, from the outside in."""
    return _search(iter(list(facts_of_list)), None, token, ()) or ()


def _search(rest, count, token, labels):
    """Gives the labels when the parameter is among the next `count` entries, else None."""
    taken = 0
    while count is None or taken < count:
        facts = next(rest, None)
        if facts is None:
            return None
        taken += 1
        if facts["token"] == token:
            return labels
        if facts["type"] != "PRM_SWITCHER" or facts["multi"]:
            continue
        titles = [text or "" for value, text, meaning in facts["defaults"]]
        for title, inside in zip(titles, tab_counts(facts)):
            found = _search(rest, inside, token, labels + (title,))
            if found is not None:
                return found
    return None
