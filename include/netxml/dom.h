/**
 * @file
 * The document tree: walking, editing, copying, namespaces, paths, and writing it as XML text.
 *
 * A tree has three kinds of node: elements, text and CDATA sections. Comments and processing
 * instructions are not kept. There is no separate document object: any node of a tree stands for
 * the document it belongs to.
 *
 * Strings in and out are NUL-terminated GB18030 (see base.h); every string given is copied. A
 * string obtained from the tree belongs to the tree and is valid until that node is edited or
 * deleted.
 *
 * Ownership: a node belongs to its parent once attached; a detached node (no parent) belongs to the
 * caller, who attaches it or deletes it with XML_DOM_DelNode(). Deleting a root deletes its
 * document. Nothing is reference-counted: deleting a node ends every pointer into its subtree.
 *
 * Memory: what the parser or XML_DOM_CopySubTree() builds lies in slabs of at most 64 KiB, each
 * released when its last record is deleted; a single deleted node may therefore leave up to 64 KiB
 * held until its neighbours go. Deleting a parsed document's root releases all of it. A string that
 * is replaced stays with its record until that is deleted, unless it is longer than 4 KiB: then it
 * goes at once.
 *
 * Threads: one tree belongs to one thread at a time; several threads may read a tree that nobody
 * edits; distinct trees are independent, also where nodes were made by one call.
 */
#ifndef NETXML_DOM_H
#define NETXML_DOM_H

#include "netxml/base.h"

#ifdef __cplusplus
extern "C" {
#endif

/** A kind of node. 0 is no kind: what XML_DOM_GetNodeType() gives for NULL. */
typedef uint32_t XML_DOM_NodeType;
/** The values of ::XML_DOM_NodeType. */
enum {
    XML_DOM_NODE_ELEMENT = 1, /**< name, attributes, namespace declarations, children */
    XML_DOM_NODE_TEXT = 2,    /**< value */
    XML_DOM_NODE_CDATA = 3    /**< value */
};

/* ------------------------------------------------------------------------------------------------
 * The document
 */

/** Returns the root element of the document that `node` belongs to, or NULL if it has none. */
XML_API XML_DOM_Node* XML_DOM_GetRoot(const XML_DOM_Node* node);

/**
 * Makes an element the root of a new document with version "1.0" and encoding UTF-8.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL when `node` is NULL, is no element, has a parent, is a
 * root already, or when memory runs out.
 */
XML_API uint32_t XML_DOM_SetRoot(XML_DOM_Node* node);

/** Returns the version of the node's document, "1.0", or NULL if it has no document. */
XML_API const char* XML_DOM_GetVersion(const XML_DOM_Node* node);

/**
 * Sets the version of the node's document. Only "1.0" is accepted.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL for any other version, NULL, or a missing document.
 */
XML_API uint32_t XML_DOM_SetVersion(XML_DOM_Node* node, const char* version);

/**
 * Returns the encoding that the node's document is written in, or ::XML_ENCODING_NONE if `node` is
 * NULL or has no document.
 */
XML_API XML_Encoding XML_DOM_GetEncoding(const XML_DOM_Node* node);

/**
 * Sets the encoding that the node's document is written in, 0 to 12.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL for a larger value, NULL, or a missing document.
 */
XML_API uint32_t XML_DOM_SetEncoding(XML_DOM_Node* node, XML_Encoding encoding);

/* ------------------------------------------------------------------------------------------------
 * Walking
 */

/** Returns the node's parent, or NULL. */
XML_API XML_DOM_Node* XML_DOM_GetNodeParent(const XML_DOM_Node* node);

/** Returns the node's first child, or NULL. */
XML_API XML_DOM_Node* XML_DOM_GetFirstChild(const XML_DOM_Node* node);

/** Returns the node's next sibling, or NULL. */
XML_API XML_DOM_Node* XML_DOM_GetNextSibling(const XML_DOM_Node* node);

/** Returns the node's kind, or 0 for NULL. */
XML_API XML_DOM_NodeType XML_DOM_GetNodeType(const XML_DOM_Node* node);

/** Returns an element's name without its prefix, or NULL for text, CDATA and NULL. */
XML_API const char* XML_DOM_GetNodeName(const XML_DOM_Node* node);

/** Returns the value of a text or CDATA node, or NULL for an element and NULL. */
XML_API const char* XML_DOM_GetNodeValue(const XML_DOM_Node* node);

/** Returns the value of the first direct child that is text, or NULL if there is none. */
XML_API const char* XML_DOM_GetFirstTextChildValue(const XML_DOM_Node* node);

/** Returns the value of the first direct child that is a CDATA section, or NULL if there is none.
 */
XML_API const char* XML_DOM_GetFirstCDataChildValue(const XML_DOM_Node* node);

/** Returns an element's first attribute, or NULL. */
XML_API XML_DOM_Attr* XML_DOM_GetFirstAttr(const XML_DOM_Node* node);

/** Returns the next attribute of the same element, or NULL. */
XML_API XML_DOM_Attr* XML_DOM_GetNextAttr(const XML_DOM_Attr* attr);

/** Returns the attribute's value, or NULL for NULL. */
XML_API const char* XML_DOM_GetAttrValByHandle(const XML_DOM_Attr* attr);

/**
 * Reads an attribute's name (without prefix) and the namespace name its prefix is bound to.
 *
 * `name` and `namespaceName` receive pointers into the tree; one of them may be NULL. An attribute
 * without a prefix has the namespace name NULL.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL when `attr` or both outputs are NULL.
 */
XML_API uint32_t XML_DOM_GetAttrNameSpace(const XML_DOM_Attr* attr, const char** name,
                                          const char** namespaceName);

/** Returns the value of the element's first attribute of that name in any namespace, or NULL. */
XML_API const char* XML_DOM_GetNodeAttrValByName(const XML_DOM_Node* node, const char* name);

/** Compares two strings as strcmp does; NULL is read as the empty string. */
XML_API int XML_Strcmp(const char* a, const char* b);

/* ------------------------------------------------------------------------------------------------
 * Creating nodes. Every result is detached and the caller's; NULL on any refusal or without memory.
 */

/** Makes an element; the name is not checked. NULL for a NULL name. */
XML_API XML_DOM_Node* XML_DOM_CreateElementNodeInner(const char* name);

/** Makes an element; `name` must pass XML_CheckQName() (and so has no colon). */
XML_API XML_DOM_Node* XML_DOM_CreateElementNode(const char* name);

/**
 * Makes a text (2) or CDATA (3) node from `length` bytes at `data`, which need no terminator. The
 * type is stored unchanged. NULL for NULL data.
 */
XML_API XML_DOM_Node* XML_DOM_CreateTextualNodeInner(XML_DOM_NodeType type, const char* data,
                                                     size_t length);

/** Makes a text node; the empty string is allowed. NULL for NULL. */
XML_API XML_DOM_Node* XML_DOM_CreateTextNode(const char* text);

/** Makes a CDATA node; the empty string is allowed. NULL for NULL. */
XML_API XML_DOM_Node* XML_DOM_CreateCDataNode(const char* text);

/**
 * Makes an element that holds one text child.
 *
 * `name` must pass XML_CheckQName(). A NULL `text` gives an element without children; the empty
 * string gives one empty text child.
 */
XML_API XML_DOM_Node* XML_DOM_CreateElementWithText(const char* name, const char* text);

/** As XML_DOM_CreateElementWithText(), with a CDATA child. */
XML_API XML_DOM_Node* XML_DOM_CreateElementWithCData(const char* name, const char* text);

/* ------------------------------------------------------------------------------------------------
 * Linking and changing
 */

/**
 * Appends a detached node as the last child of an element, which then owns it.
 *
 * Whether `child` is an ancestor of `parent` is not checked.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL when an argument is NULL, `parent` is no element, or
 * `child` has a parent or is the root of a document.
 */
XML_API uint32_t XML_DOM_AddChildNode(XML_DOM_Node* parent, XML_DOM_Node* child);

/**
 * Puts a detached node in front of `reference`, into the same parent.
 *
 * `node` is deliberately not checked: its kind, a parent it may have or a document record are not
 * looked at. Pass a detached node.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL when an argument is NULL or `reference` has no parent.
 */
XML_API uint32_t XML_DOM_InsertBeforeNode(XML_DOM_Node* reference, XML_DOM_Node* node);

/**
 * Replaces the value of a text or CDATA node. `value` may be the node's own.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL for NULL, an empty value, an element, or without memory;
 * the node is unchanged then.
 */
XML_API uint32_t XML_DOM_SetNodeValue(XML_DOM_Node* node, const char* value);

/**
 * Renames an element; its namespace binding stays. `name` must pass XML_CheckQName() and may be the
 * node's own.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL for NULL, a refused name, a node that is no element, or
 * without memory; the node is unchanged then.
 */
XML_API uint32_t XML_DOM_SetNodeName(XML_DOM_Node* node, const char* name);

/**
 * Appends an attribute without any check and without a namespace.
 *
 * Returns the attribute, which the element owns, or NULL for a NULL argument or without memory.
 */
XML_API XML_DOM_Attr* XML_DOM_AddAttrInner(XML_DOM_Node* element, const char* name,
                                           const char* value);

/**
 * Appends an attribute.
 *
 * `prefix` may be NULL or empty for an attribute without a namespace; any other must be declared on
 * the element or above it, or be `xml`. `name` must pass XML_CheckQName() and not be "xmlns".
 *
 * Returns the attribute, which the element owns, or NULL when `element` is NULL or no element, the
 * name or the prefix is refused, the value is NULL, the element has an attribute of that name in
 * the same namespace (by namespace name, not by prefix), or memory runs out. Nothing has changed
 * then.
 */
XML_API XML_DOM_Attr* XML_DOM_AddAttr(XML_DOM_Node* element, const char* prefix, const char* name,
                                      const char* value);

/**
 * Deletes the element's first attribute with that prefix (NULL or empty for none) and name, if it
 * has one. Matching is by prefix here, not by namespace name.
 */
XML_API void XML_DOM_DelAttr(XML_DOM_Node* element, const char* prefix, const char* name);

/**
 * Deletes a node with its whole subtree and, for a root, its document; takes it out of its parent
 * first. NULL does nothing. Takes no stack for depth. Finding the predecessor costs a walk over the
 * siblings before the node.
 */
XML_API void XML_DOM_DelNode(XML_DOM_Node* node);

/* ------------------------------------------------------------------------------------------------
 * Copying
 */

/**
 * Copies one node: a text or CDATA node with its value; an element with its attributes and
 * declarations but without its children. A declaration that the copy needs and that the source has
 * from an ancestor is declared on the copy.
 *
 * Returns the detached copy, or NULL for NULL, a binding that cannot be resolved, or without
 * memory.
 */
XML_API XML_DOM_Node* XML_DOM_CopyNode(const XML_DOM_Node* node);

/**
 * Makes a new document whose root is a copy of the source document's root without its children,
 * with the same version and encoding. `node` is any node of the source document.
 *
 * Returns the new root, or NULL if the node has no document or on failure.
 */
XML_API XML_DOM_Node* XML_DOM_CopyRoot(const XML_DOM_Node* node);

/**
 * Copies every child of `source`, with its subtree, to the end of `destination`'s children.
 *
 * Prefixes are resolved at the destination first: a declaration in scope there wins even if its
 * namespace name differs; what it lacks is declared on the copied element. With `destination` equal
 * to `source`, the children that were there when the call began are copied.
 *
 * Returns ::XML_RET_OK, also when there is nothing to copy; ::XML_RET_FAIL for NULL, a destination
 * that is no element or that lies inside the source's subtree, a binding that cannot be resolved,
 * or without memory. The destination is unchanged then.
 */
XML_API uint32_t XML_DOM_CopySubTree(XML_DOM_Node* destination, const XML_DOM_Node* source);

/* ------------------------------------------------------------------------------------------------
 * Namespaces (Namespaces in XML 1.0)
 *
 * Declarations are kept apart from attributes. A name is bound to a declaration through its prefix;
 * the nearest declaration of the prefix wins, and `xml` is bound without one. NULL and the empty
 * string are the same prefix: the default namespace.
 */

/**
 * Declares a prefix on a node; refuses to change a declaration of the same prefix there.
 *
 * `prefix` NULL or empty declares the default namespace; only that one may have a NULL or empty
 * `namespaceName`. Neither the node's kind nor the prefix's syntax is checked.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL for a NULL node, a prefix without a name, a prefix that
 * is declared there already, or without memory.
 */
XML_API uint32_t XML_DOM_AddNodeNameSpace(XML_DOM_Node* node, const char* prefix,
                                          const char* namespaceName);

/**
 * As XML_DOM_AddNodeNameSpace(), but gives a declaration of the same prefix on that node the new
 * name. Whatever is bound to it sees the new name.
 */
XML_API uint32_t XML_DOM_SetNodeDefineNsVal(XML_DOM_Node* node, const char* prefix,
                                            const char* namespaceName);

/**
 * The unchecked worker of the two functions above. `prefix` NULL is the default namespace;
 * `overwrite` non-zero replaces the name of an existing declaration.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL for a NULL node or name, a declared prefix without
 * `overwrite`, or without memory.
 */
XML_API uint32_t XML_DOM_AddNodeNameSpaceInner(XML_DOM_Node* node, const char* prefix,
                                               const char* namespaceName, uint16_t overwrite);

/**
 * Binds an element to the declaration of `prefix` in scope; NULL or empty removes the binding.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL when the node is no element or nothing in scope declares
 * the prefix; the binding is unchanged then.
 */
XML_API uint32_t XML_DOM_SetNodeNameSpace(XML_DOM_Node* element, const char* prefix);

/** As XML_DOM_SetNodeNameSpace(), for an attribute; resolved from the element that owns it. */
XML_API uint32_t XML_DOM_SetAttrNsInner(XML_DOM_Attr* attr, const char* prefix);

/**
 * Reads the namespace of a node: of its binding, or else the default namespace in scope.
 *
 * `prefix` and `namespaceName` receive pointers into the tree, NULL where there is none; one of the
 * outputs may be NULL. Text reports the default namespace in scope of its place.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL when `node` or both outputs are NULL.
 */
XML_API uint32_t XML_DOM_GetNodeNameSpace(const XML_DOM_Node* node, const char** prefix,
                                          const char** namespaceName);

/**
 * Returns the value of the first attribute of that name in that namespace, or NULL.
 *
 * `namespaceName` NULL matches any. An attribute without a prefix counts, deliberately, as a member
 * of the default namespace in scope of its element.
 */
XML_API const char* XML_DOM_GetNodeNsAttribute(const XML_DOM_Node* node, const char* namespaceName,
                                               const char* name);

/* ------------------------------------------------------------------------------------------------
 * Paths and visits
 */

/**
 * Writes the node's location path, such as "/config/interface[2]/name[1]".
 *
 * Every element below the top carries its position among the siblings of the same name; prefixes
 * are not written; the path of text is its parent's. `size` is the size of `buffer` in bytes. A
 * longer path is cut at size - 1 bytes; the buffer is always terminated.
 *
 * Returns the number of bytes written without the terminator; 0 when the node or the buffer is NULL
 * or the size is 0. Allocates nothing; takes no stack for depth.
 */
XML_API size_t XML_DOM_GetXPath(const XML_DOM_Node* node, size_t size, char* buffer);

/** Called for a node; returns 0 to go on, anything else to stop. It must not delete nodes. */
typedef uint32_t (*XML_DOM_Visit)(XML_DOM_Node* node, void* context);

/**
 * Visits a node, its subtree, and then its following siblings with theirs, each node before its
 * children, text and CDATA included. Started at a root, that is exactly one tree.
 *
 * Returns ::XML_RET_OK when every node was visited, ::XML_RET_FAIL when `visit` stopped it, and
 * ::XML_RET_EMPTY when `start` or `visit` is NULL. Allocates nothing; takes no stack for depth.
 */
XML_API uint32_t XML_DOM_ScanTree(XML_DOM_Node* start, XML_DOM_Visit visit, void* context);

/* ------------------------------------------------------------------------------------------------
 * Writing
 *
 * The text is compact: nothing is added to what the tree holds. It is written in the encoding of
 * the node's document, or in UTF-8 without one. Whatever is written in UTF-16 or UTF-32 begins with
 * the byte-order mark that iconv writes: once for each string that a function returns, and before
 * the first piece that a callback gets. Join separately written strings accordingly.
 *
 * Escaped are "<", ">" and "&", and a blank (space, tab, line feed, carriage return) at either end
 * of a value. A double quote in an attribute's value is deliberately written as it is, although it
 * stands between double quotes; such text does not parse back.
 */

/** Do not write the XML declaration. */
#define XML_DOM_WRITE_NO_DECLARATION UINT32_C(0x00000001)
/** Do not write declarations of "urn:ietf:params:xml:ns:netconf:base:1.0" (RFC 6241). */
#define XML_DOM_WRITE_NO_NETCONF_BASE UINT32_C(0x80000000)

/** Takes a piece of text; returns 0, or anything else to report a failure. */
typedef uint32_t (*XML_DOM_Write)(void* context, const char* bytes, size_t length);

/**
 * Writes a node with its subtree into a new string; for a document's root, after the XML
 * declaration.
 *
 * `flags` is 0 or any of the XML_DOM_WRITE_ values. `text` receives the string, which is terminated
 * by a NUL of the encoding and which the caller releases with free(); `length` (may be NULL) the
 * number of bytes rendered, without the terminator, also when rendering fails.
 *
 * Returns ::XML_RET_OK, or another value on failure; `text` is left as it was then.
 */
XML_API uint32_t XML_DOM_TranslateStr(const XML_DOM_Node* node, uint32_t flags, char** text,
                                      size_t* length);

/**
 * As XML_DOM_TranslateStr(), for the node's children without the node's own tags and without a
 * declaration. Without children the string is empty.
 */
XML_API uint32_t XML_DOM_TranslateStr4AllChild(const XML_DOM_Node* node, char** text,
                                               size_t* length);

/**
 * Writes the text of XML_DOM_TranslateStr() to a callback, piece by piece: each token, name and run
 * of text is one call. An empty CDATA section makes it fail, deliberately.
 *
 * Returns ::XML_RET_OK, or the sum of what failed. The callback may have had part of the text then.
 */
XML_API uint32_t XML_DOM_OutPutTranslateStr(const XML_DOM_Node* node, uint32_t flags,
                                            XML_DOM_Write callback, void* context);

/**
 * Writes the begin of a node into a new string: an element's start tag, always open; text and CDATA
 * whole; before a document's root the XML declaration.
 *
 * `length` (may be NULL) receives the bytes without the terminator. Returns the string, which the
 * caller releases with free(), or NULL on failure.
 */
XML_API char* XML_DOM_NodeBegin2Str(const XML_DOM_Node* node, uint32_t flags, size_t* length);

/** As XML_DOM_NodeBegin2Str(), for an element's end tag; for other nodes the string is empty. */
XML_API char* XML_DOM_NodeEnd2Str(const XML_DOM_Node* node, size_t* length);

/**
 * Writes a string, escaped as described above, to a callback, piece by piece, without converting
 * it.
 *
 * Returns the sum of what the callback returned; ::XML_RET_FAIL for a NULL string or callback.
 */
XML_API uint32_t XML_OutTextString(const char* string, XML_DOM_Write sink, void* context);

#ifdef __cplusplus
}
#endif

#endif
