"""Time, hscript and the search path."""

import math

import _hou

from . import _check


def time():
    """Seconds; 0 at frame 1."""
    return _hou.time()


def setTime(time):
    _hou.set_time(_finite(time, "time"))


def frame():
    """time() * fps() + 1."""
    return _hou.time_to_frame(_hou.time())


def setFrame(frame):
    _hou.set_time(_hou.frame_to_time(_finite(frame, "frame")))


def intFrame():
    return int(round(frame()))


def fps():
    return _hou.fps()


def setFps(fps):
    """Frames per second; the time stays, so the frame changes."""
    fps = _finite(fps, "fps")
    if fps <= 0:
        raise ValueError("fps must be greater than 0, not %g" % fps)
    _hou.set_fps(fps)


def timeToFrame(time):
    return _hou.time_to_frame(_check.number(time, "time"))


def frameToTime(frame):
    return _hou.frame_to_time(_check.number(frame, "frame"))


def _finite(value, argument):
    value = _check.number(value, argument)
    if not math.isfinite(value):
        raise ValueError("%s must be finite, not %r" % (argument, value))
    return value


def hscript(command):
    """Runs hscript and gives (output, errors) as two strings."""
    return _hou.hscript(_check.text(command, "command"))


def hscriptExpression(expression):
    """Evaluates an expression of hscript's language at the working node: a float, or a string when it is one.

    Raises hou.OperationFailed with the parser's sentence.
    """
    return _hou.hscript_expression(_check.text(expression, "expression"))


def expandString(text):
    """Replaces $VARIABLES and `expressions`; unknown variables stay as they are."""
    return _hou.expand_string(_check.text(text, "text"))


def findDirectories(name):
    """Every existing directory of that name below an entry of the search path, in path order. None: OperationFailed."""
    from ._errors import OperationFailed
    found = _hou.find_directories(_check.text(name, "name"))
    if not found:
        raise OperationFailed('Could not find the directory "%s" in HOUDINI_PATH.' % name)
    return found


def findFiles(name):
    """Every file of that name below an entry of the search path, in path order. None: OperationFailed."""
    from ._errors import OperationFailed
    found = _hou.find_files(_check.text(name, "name"))
    if not found:
        raise OperationFailed('Could not find the file "%s" in HOUDINI_PATH.' % name)
    return found


def houdiniPath():
    """The existing directories of the search path, in order."""
    return _hou.houdini_path()


def isUIAvailable():
    return False
