/* Comes before libnetxml in a process and counts what the agent does with trees, so that a test can
 * tell how work grows without a clock: each step and each comparison is one; taking a node out and
 * putting one in front of another cost the siblings in front of it, and a copy what is copied. */
#include <dlfcn.h>
#include <netxml/dom.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

static unsigned long work;

/* The library's own function; what this file does with it is not counted. */
static void* own(const char* name)
{
    void* found = dlsym(RTLD_NEXT, name);
    if (!found) _exit(99);
    return found;
}

typedef XML_DOM_Node* (*Step)(const XML_DOM_Node*);

static Step firstChild;
static Step nextSibling;
static Step parentOf;
static const char* (*nameOf)(const XML_DOM_Node*);
static void (*deleteNode)(XML_DOM_Node*);
static uint32_t (*insertBefore)(XML_DOM_Node*, XML_DOM_Node*);
static uint32_t (*copySubTree)(XML_DOM_Node*, const XML_DOM_Node*);

/* A pointer to a function is no object: so its bytes are copied. */
#define FIND(pointer, name)                                                                        \
    do {                                                                                           \
        void* found_ = own(name);                                                                  \
        memcpy(&(pointer), &found_, sizeof(pointer));                                              \
    } while (0)

__attribute__((constructor)) static void find(void)
{
    FIND(firstChild, "XML_DOM_GetFirstChild");
    FIND(nextSibling, "XML_DOM_GetNextSibling");
    FIND(parentOf, "XML_DOM_GetNodeParent");
    FIND(nameOf, "XML_DOM_GetNodeName");
    FIND(deleteNode, "XML_DOM_DelNode");
    FIND(insertBefore, "XML_DOM_InsertBeforeNode");
    FIND(copySubTree, "XML_DOM_CopySubTree");
}

static unsigned long siblingsBefore(const XML_DOM_Node* node)
{
    unsigned long count = 1;
    const XML_DOM_Node* sibling = node ? firstChild(parentOf(node)) : NULL;
    for (; sibling && sibling != node; sibling = nextSibling(sibling)) ++count;
    return count;
}

static unsigned long nodesBelow(const XML_DOM_Node* top)
{
    unsigned long count = 0;
    const XML_DOM_Node* node = top;
    while (node) {
        const XML_DOM_Node* next = firstChild(node);
        for (; !next && node != top; node = parentOf(node)) next = nextSibling(node);
        node = next;
        ++count;
    }
    return count;
}

XML_DOM_Node* XML_DOM_GetFirstChild(const XML_DOM_Node* node)
{
    ++work;
    return firstChild(node);
}

XML_DOM_Node* XML_DOM_GetNextSibling(const XML_DOM_Node* node)
{
    ++work;
    return nextSibling(node);
}

const char* XML_DOM_GetNodeName(const XML_DOM_Node* node)
{
    ++work;
    return nameOf(node);
}

void XML_DOM_DelNode(XML_DOM_Node* node)
{
    work += siblingsBefore(node);
    deleteNode(node);
}

uint32_t XML_DOM_InsertBeforeNode(XML_DOM_Node* reference, XML_DOM_Node* node)
{
    work += siblingsBefore(reference);
    return insertBefore(reference, node);
}

uint32_t XML_DOM_CopySubTree(XML_DOM_Node* destination, const XML_DOM_Node* source)
{
    work += nodesBelow(source);
    return copySubTree(destination, source);
}

__attribute__((destructor)) static void sayWork(void)
{
    char text[64];
    const int length = snprintf(text, sizeof text, "work: %lu\n", work);
    if (length > 0 && write(STDERR_FILENO, text, (size_t)length) != length) _exit(99);
}
