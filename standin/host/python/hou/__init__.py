"""The host's scene, from Python: nodes, their parameters and wires, node types, time and hscript.

Look-ups give None when they find nothing; operations that cannot be done raise hou.OperationFailed or one of its relatives,
with a sentence that says why. Indices count from 0.
"""

from . import hda, hipFile, undos
from ._enums import (EnumValue, exprLanguage, fileType, folderType, menuType, nodeFlag, parmCondType, parmData,
                     parmLook, parmNamingScheme, parmTemplateType, rampBasis, rampParmType, scriptLanguage,
                     stringParmType)
from ._errors import (Error, InvalidInput, InvalidNodeName, InvalidNodeType, InvalidSize, KeyframeValueNotSet,
                      LoadWarning, NameConflict, NotAvailable, ObjectWasDeleted, OperationFailed, PermissionError,
                      SystemExit)
from ._nodes import (Node, NodeConnection, ObjNode, RopNode, ShopNode, VopNode, cd, node, parm, parmTuple, pwd, root)
from ._parms import Parm, ParmTuple
from ._ramp import Ramp
from ._scenes import copyNodesTo
from ._session import (expandString, findDirectories, findFiles, fps, frame, frameToTime, houdiniPath, hscript,
                       hscriptExpression, intFrame, isUIAvailable, setFps, setFrame, setTime, time, timeToFrame)
from ._template_group import ParmTemplateGroup
from ._templates import (ButtonParmTemplate, FloatParmTemplate, FolderParmTemplate, FolderSetParmTemplate,
                         IntParmTemplate, LabelParmTemplate, MenuParmTemplate, ParmTemplate, RampParmTemplate,
                         SeparatorParmTemplate, StringParmTemplate, ToggleParmTemplate)
from ._types import (NodeType, NodeTypeCategory, nodeType, nodeTypeCategories, objNodeTypeCategory,
                     shopNodeTypeCategory, vopNodeTypeCategory)
from ._vector import Vector2
from .hda import HDADefinition, HDASection
