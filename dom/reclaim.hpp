// Giving records and their strings back.
#pragma once

#include "dom/slab.hpp"

namespace netxml {

// Frees records; links are not followed. Neighbours mostly lie in one slab, so its count is taken
// down once for many.
class Reclaimer {
public:
    Reclaimer() = default;
    Reclaimer(const Reclaimer&) = delete;
    Reclaimer& operator=(const Reclaimer&) = delete;
    ~Reclaimer() { settle(); }

    // A node with its attributes, declarations and document record.
    void node(XML_DOM_Node* node) noexcept
    {
        for (XML_DOM_NsDecl* decl = node->firstNs; decl;) {
            XML_DOM_NsDecl* next = decl->next;
            record(decl, decl->prefix, decl->name);
            decl = next;
        }
        for (XML_DOM_Attr* attr = node->firstAttr; attr;) {
            XML_DOM_Attr* next = attr->next;
            record(attr, attr->name, attr->value);
            attr = next;
        }
        if (node->document) record(node->document, nullptr, nullptr);
        record(node, node->name, node->value);
    }
    void attribute(XML_DOM_Attr* attr) noexcept { record(attr, attr->name, attr->value); }

private:
    template <class Record>
    void record(Record* record, const char* first, const char* second) noexcept
    {
        if (record->home.owns(Home::kFirstString)) heap::release(const_cast<char*>(first));
        if (record->home.owns(Home::kSecondString)) heap::release(const_cast<char*>(second));
        if (!record->home.inSlab()) {
            heap::release(record);
            return;
        }
        Slab* slab = slabOf(record);
        if (slab != slab_) {
            settle();
            slab_ = slab;
        }
        ++count_;
    }
    void settle() noexcept
    {
        if (count_ != 0) dropRecords(slab_, count_);
        count_ = 0;
    }

    Slab* slab_ = nullptr;
    std::uint32_t count_ = 0;
};

// Deletes what stands behind `last` among the children of `parent`, all of them for nullptr.
void deleteAfter(XML_DOM_Node* parent, XML_DOM_Node* last) noexcept;

}  // namespace netxml
