"""The exceptions of the module.

Each one carries a sentence for the person at the shell: `instanceMessage()` is that sentence, `description()` says what
this kind of error means in general.
"""


class Error(Exception):
    """Base of every exception of this module."""

    _description = "An error of the host."

    def __init__(self, message=""):
        super().__init__(message)
        self._message = str(message)

    def instanceMessage(self):
        """The sentence about this very failure; may be empty."""
        return self._message

    def description(self):
        """What this kind of error means."""
        return self._description

    def __str__(self):
        if not self._message:
            return self._description
        return self._description + "\n" + self._message


class OperationFailed(Error):
    _description = "The attempted operation failed."


class InvalidInput(Error):
    _description = "Invalid node input."


class InvalidNodeName(OperationFailed):
    """An OperationFailed too, since creating and renaming fail with one for every other reason."""

    _description = "Invalid node name."


class InvalidNodeType(Error):
    _description = "Invalid node type."


class InvalidSize(Error):
    _description = "Invalid size."


class LoadWarning(Error):
    _description = "Some warnings were generated while loading the file."


class NameConflict(Error):
    _description = "The name conflicts with an existing one."


class NotAvailable(Error):
    _description = "This is not available."


class ObjectWasDeleted(Error):
    _description = "Attempt to access an object that no longer exists."


class PermissionError(Error):
    _description = "Failed to modify a node or parameter because of a permission error."


class KeyframeValueNotSet(Error):
    _description = "The value of this keyframe has not been set."


class SystemExit(Error):
    _description = "The host is about to exit."


def _new(kind, message):
    """Makes the exception that C++ asks for by name; an unknown name becomes an OperationFailed."""
    return globals().get(kind, OperationFailed)(message)
