#include "node_index.h"

#include <stdlib.h>
#include <string.h>

enum { FIRST_SIZE = 64 };

/* FNV-1a, from a start that depends on the place. */
static uint64_t hashOf(size_t parent, const ModelRow* row, const char* identity)
{
    const uint64_t prime = UINT64_C(0x100000001b3);
    uint64_t hash = (UINT64_C(0xcbf29ce484222325) ^ parent) * prime;
    hash = (hash ^ modelNumber(row)) * prime;
    for (; *identity; ++identity) hash = (hash ^ (unsigned char)*identity) * prime;
    return hash ^ (hash >> 32);
}

/* The slot from which on an entry is looked for, and the one behind it. */
static size_t firstSlot(const NodeIndex* index, uint64_t hash)
{
    return (size_t)hash & (index->size - 1);
}

static size_t nextSlot(const NodeIndex* index, size_t slot)
{
    return (slot + 1) & (index->size - 1);
}

static bool isUsed(const NodeEntry* entry)
{
    return entry->number != 0;
}

NodeEntry* nodeIndexFind(const NodeIndex* index, size_t parent, const ModelRow* row,
                         const char* identity)
{
    if (index->size == 0) return NULL;
    const uint64_t hash = hashOf(parent, row, identity);
    size_t slot = firstSlot(index, hash);
    for (; isUsed(&index->entries[slot]); slot = nextSlot(index, slot)) {
        NodeEntry* entry = &index->entries[slot];
        if (entry->hash == hash && entry->node && entry->parent == parent && entry->row == row &&
            strcmp(modelIdentity(row, entry->node), identity) == 0)
            return entry;
    }
    return NULL;
}

static NodeEntry* freeSlot(const NodeIndex* index, uint64_t hash)
{
    size_t slot = firstSlot(index, hash);
    while (isUsed(&index->entries[slot])) slot = nextSlot(index, slot);
    return &index->entries[slot];
}

/* Doubles the table; what has been taken out stays behind. */
static bool grow(NodeIndex* index)
{
    NodeIndex larger = {NULL, index->size ? 2 * index->size : FIRST_SIZE, 0, index->lastNumber};
    larger.entries = calloc(larger.size, sizeof *larger.entries);
    if (!larger.entries) return false;
    for (size_t slot = 0; slot != index->size; ++slot) {
        const NodeEntry* entry = &index->entries[slot];
        if (!entry->node) continue;
        *freeSlot(&larger, entry->hash) = *entry;
        ++larger.used;
    }
    free(index->entries);
    *index = larger;
    return true;
}

NodeEntry* nodeIndexAdd(NodeIndex* index, size_t parent, const ModelRow* row, const char* identity,
                        XML_DOM_Node* node)
{
    if (2 * (index->used + 1) > index->size && !grow(index)) return NULL;
    const uint64_t hash = hashOf(parent, row, identity);
    NodeEntry* entry = freeSlot(index, hash);
    *entry = (NodeEntry){node, ++index->lastNumber, false, row, parent, hash};
    ++index->used;
    return entry;
}

void nodeIndexForgetBelow(NodeIndex* index, NodeEntry* entry)
{
    entry->number = ++index->lastNumber;
}

bool nodeIndexTree(NodeIndex* index, const XML_DOM_Node* top, const XML_DOM_Node** twin)
{
    size_t numbers[MODEL_DEPTH] = {NODE_INDEX_TOP}; /* of the node and of those above it */
    const ModelRow* row = modelTop();
    *twin = NULL;
    for (XML_DOM_Node* node = modelNext(top, top, &row); node; node = modelNext(top, node, &row)) {
        const unsigned depth = modelDepth(row);
        const size_t parent = numbers[depth - 1];
        const char* identity = modelIdentity(row, node);
        if (nodeIndexFind(index, parent, row, identity)) {
            *twin = node;
            return false;
        }
        const NodeEntry* entry = nodeIndexAdd(index, parent, row, identity, node);
        if (!entry) return false;
        numbers[depth] = entry->number;
    }
    return true;
}

void nodeIndexFree(NodeIndex* index)
{
    free(index->entries);
    memset(index, 0, sizeof *index);
}
