"""The shared library: where it is found, and the functions that the module calls.

Short calls keep Python's interpreter lock (ctypes.PyDLL): letting go of it would cost more than
the call. Long ones give it up (ctypes.CDLL), so that other threads run meanwhile. Both are tables
of the same library, which is loaded once.
"""
import ctypes
import os
from ctypes import c_char_p, c_size_t, c_uint32, c_uint64, c_void_p
from typing import Any

OK = 0
ELEMENT, TEXT, CDATA = 1, 2, 3
UTF_8, GB18030, NO_ENCODING = 0, 9, 13
WITHOUT_DECLARATION = 1

XML_NAMESPACE = "http://www.w3.org/XML/1998/namespace"
LARGEST_BLOCK = 0xFFFFFFFF
"""What XML_DOM_BuildTreeByMem() takes; more goes through a list of one chunk."""


class MemChunk(ctypes.Structure):
    """XML_IO_MemChunk."""

    _fields_ = [("next", c_void_p), ("length", c_uint64), ("data", c_char_p)]


class MemList(ctypes.Structure):
    """XML_IO_MemList."""

    _fields_ = [("first", ctypes.POINTER(MemChunk))]


class ParserContext(ctypes.Structure):
    """XML_Parser."""

    _fields_ = [
        ("handler", c_void_p),
        ("stream", c_void_p),
        ("pendingAttributes", c_void_p),
        ("freeAttributes", c_void_p),
        ("bindings", c_void_p),
        ("encoding", c_uint32),
        ("error", c_uint32),
        ("line", c_uint32),
        ("column", c_uint32),
        ("version", c_char_p),
    ]


class Handler(ctypes.Structure):
    """XML_SAX_Handler: 32 slots, of which those that the module uses have names."""

    _fields_ = [
        ("before", c_void_p * 16),
        ("characters", c_void_p),
        ("comment", c_void_p),
        ("cdata", c_void_p),
        ("processingInstruction", c_void_p),
        ("error", c_void_p),
        ("between", c_void_p * 8),
        ("startElementNs", c_void_p),
        ("behind", c_void_p * 2),
    ]


class ObjectList(ctypes.Structure):
    """Schema_ObjectList."""

    _fields_ = [("items", c_void_p), ("capacity", c_uint32), ("count", c_uint32)]


class SchemaRoot(ctypes.Structure):
    """Schema_Root."""

    _fields_ = [("lists", ObjectList * 6), ("attributeForm", c_uint32), ("elementForm", c_uint32)]


class ValidateResult(ctypes.Structure):
    """Schema_ValidateResult."""

    _fields_ = [
        ("code", c_uint32),
        ("node", c_void_p),
        ("elementName", c_char_p),
        ("elementNamespace", c_char_p),
        ("attrName", c_char_p),
        ("attrNamespace", c_char_p),
        ("detail", ctypes.c_char * 1024),
    ]


def _load() -> tuple[ctypes.PyDLL, ctypes.CDLL]:
    name = os.environ.get("NETXML_LIBRARY") or "libnetxml.so.1"
    try:
        return ctypes.PyDLL(name), ctypes.CDLL(name)
    except OSError as failure:
        raise ImportError(
            f"the netxml library is not found; NETXML_LIBRARY may name it: {failure}"
        ) from failure


_short, _long = _load()


def _function(library: ctypes.CDLL, name: str, result: Any, *arguments: Any) -> Any:
    function = library[name]
    function.restype = result
    function.argtypes = arguments
    return function


_Texts = ctypes.POINTER(c_char_p)
_Size = ctypes.POINTER(c_size_t)

# Walking.
get_parent = _function(_short, "XML_DOM_GetNodeParent", c_void_p, c_void_p)
get_first_child = _function(_short, "XML_DOM_GetFirstChild", c_void_p, c_void_p)
get_next_sibling = _function(_short, "XML_DOM_GetNextSibling", c_void_p, c_void_p)
get_type = _function(_short, "XML_DOM_GetNodeType", c_uint32, c_void_p)
get_name = _function(_short, "XML_DOM_GetNodeName", c_char_p, c_void_p)
get_value = _function(_short, "XML_DOM_GetNodeValue", c_char_p, c_void_p)
get_namespace = _function(_short, "XML_DOM_GetNodeNameSpace", c_uint32, c_void_p, _Texts, _Texts)
get_first_attribute = _function(_short, "XML_DOM_GetFirstAttr", c_void_p, c_void_p)
get_next_attribute = _function(_short, "XML_DOM_GetNextAttr", c_void_p, c_void_p)
get_attribute_value = _function(_short, "XML_DOM_GetAttrValByHandle", c_char_p, c_void_p)
get_attribute_name = _function(
    _short, "XML_DOM_GetAttrNameSpace", c_uint32, c_void_p, _Texts, _Texts
)
get_path = _function(_short, "XML_DOM_GetXPath", c_size_t, c_void_p, c_size_t, c_char_p)
get_encoding = _function(_short, "XML_DOM_GetEncoding", c_uint32, c_void_p)
begin_to_text = _function(_short, "XML_DOM_NodeBegin2Str", c_void_p, c_void_p, c_uint32, _Size)

# Making and changing.
create_element = _function(_short, "XML_DOM_CreateElementNode", c_void_p, c_char_p)
create_text = _function(_short, "XML_DOM_CreateTextNode", c_void_p, c_char_p)
create_cdata = _function(_short, "XML_DOM_CreateCDataNode", c_void_p, c_char_p)
add_child = _function(_short, "XML_DOM_AddChildNode", c_uint32, c_void_p, c_void_p)
insert_before = _function(_short, "XML_DOM_InsertBeforeNode", c_uint32, c_void_p, c_void_p)
set_value = _function(_short, "XML_DOM_SetNodeValue", c_uint32, c_void_p, c_char_p)
set_name = _function(_short, "XML_DOM_SetNodeName", c_uint32, c_void_p, c_char_p)
set_root = _function(_short, "XML_DOM_SetRoot", c_uint32, c_void_p)
set_encoding = _function(_short, "XML_DOM_SetEncoding", c_uint32, c_void_p, c_uint32)
add_attribute = _function(
    _short, "XML_DOM_AddAttr", c_void_p, c_void_p, c_char_p, c_char_p, c_char_p
)
delete_attribute = _function(_short, "XML_DOM_DelAttr", None, c_void_p, c_char_p, c_char_p)
declare = _function(_short, "XML_DOM_AddNodeNameSpace", c_uint32, c_void_p, c_char_p, c_char_p)
bind = _function(_short, "XML_DOM_SetNodeNameSpace", c_uint32, c_void_p, c_char_p)
copy_node = _function(_short, "XML_DOM_CopyNode", c_void_p, c_void_p)

# Names and encodings.
check_name = _function(_short, "XML_CheckQName", c_uint32, c_char_p)
check_namespace = _function(_short, "XML_CheckNamespace", c_uint32, c_char_p, c_char_p)
encoding_of_name = _function(_short, "XML_DOM_EncodingStrToEnum", c_uint32, c_char_p)
name_of_encoding = _function(_short, "XML_DOM_EncodingEnumToStr", c_char_p, c_uint32)
create_stream = _function(_short, "XML_IO_MemOutStreamCreate", c_void_p, c_uint32, c_uint32)
append_to_stream = _function(
    _short, "XML_IO_OutStreamAppend", c_uint32, c_void_p, c_char_p, c_size_t
)
look_at_stream = _function(_short, "XML_IO_MemOutStreamGetBuf", c_void_p, c_void_p, _Size)
empty_stream = _function(_short, "XML_IO_MemOutStreamCleanBuf", None, c_void_p)
destroy_stream = _function(_short, "XML_IO_OutStreamDestroy", None, c_void_p)

# What may take long.
build_by_mem = _function(
    _long, "XML_DOM_BuildTreeByMem", c_void_p, c_char_p, c_uint32, c_uint32, c_char_p
)
build_by_list = _function(
    _long, "XML_DOM_BuildTreeByMemList", c_void_p, ctypes.POINTER(MemList), c_uint32, c_char_p
)
parse_by_mem = _function(
    _long, "XML_Parser_ByMem", c_uint32, c_char_p, c_uint32, ctypes.POINTER(Handler)
)
parse_by_list = _function(
    _long, "XML_Parser_ByMemList", c_uint32, ctypes.POINTER(MemList), ctypes.POINTER(Handler)
)
delete_node = _function(_long, "XML_DOM_DelNode", None, c_void_p)
copy_children = _function(_long, "XML_DOM_CopySubTree", c_uint32, c_void_p, c_void_p)
to_text = _function(
    _long, "XML_DOM_TranslateStr", c_uint32, c_void_p, c_uint32, ctypes.POINTER(c_void_p), _Size
)
init_root = _function(_short, "Schema_InitRoot", c_uint64, ctypes.POINTER(SchemaRoot))
exit_root = _function(_short, "Schema_ExitRoot", None, ctypes.POINTER(SchemaRoot))
validate = _function(
    _long,
    "Schema_ValidateXml",
    c_uint32,
    c_void_p,
    ctypes.POINTER(SchemaRoot),
    ctypes.POINTER(ValidateResult),
)
describe = _function(
    _short, "Schema_GetErrorDesc", c_uint32, ctypes.POINTER(ValidateResult), c_uint32, c_char_p
)

free = _function(ctypes.PyDLL(None), "free", None, c_void_p)
