// Schemas for tests: records that live as long as their kit, and content models from a notation.
#pragma once

#include "netxml/netxml.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

class SchemaKit {
public:
    SchemaKit();
    SchemaKit(const SchemaKit&) = delete;
    SchemaKit& operator=(const SchemaKit&) = delete;
    ~SchemaKit();

    Schema_Root& root() { return root_; }

    // Zeroed records of the kit, for the test to fill.
    template <class Record>
    Record* make();

    // An element that occurs once. Without a type nothing in it is checked.
    Schema_ElementDecl* element(std::string_view name, const Schema_ComplexType* type = nullptr);
    Schema_ElementDecl* simpleElement(std::string_view name, const void* type);
    // A string that satisfies the facets, which must live as long as the kit.
    Schema_SimpleType* restrictedString(const Schema_Facet* facets, uint32_t count);
    Schema_ComplexType* complexType(const Schema_ModelGroup* content);

    // A content model: "(a,b?)" a sequence, "(a|b)" a choice, "(a&b)" an all group; behind each
    // particle "?", "*", "+", or "{2,5}" for its bounds ("{2,}" without a limit). Names are
    // elements without a type; "#" is a lax wildcard for any namespace, "~" a strict one.
    Schema_ModelGroup* model(std::string_view notation);

    const char* text(std::string_view text);
    template <class Record>
    const Record* const* array(std::vector<const Record*> items);

    void add(const Schema_ElementDecl* element);
    void add(const Schema_AttributeDecl* attribute);

    // The verdict on a document; status, when asked for, becomes the function's.
    Schema_ValidateResult validate(std::string_view document, uint32_t* status = nullptr);
    // The sentence of that verdict, "valid", or "failed".
    std::string sentence(std::string_view document);

private:
    class Reader;

    Schema_Root root_;
    std::deque<std::string> texts_;
    std::deque<std::vector<const void*>> arrays_;
    std::deque<std::vector<Schema_Object>> particles_;
    std::deque<std::vector<unsigned char>> records_;
    std::vector<Schema_Object> added_;
    XML_DOM_Node* document_ = nullptr;  // the one that the latest verdict points into
};

template <class Record>
Record* SchemaKit::make()
{
    return reinterpret_cast<Record*>(
        records_.emplace_back(sizeof(Record), static_cast<unsigned char>(0)).data());
}

template <class Record>
const Record* const* SchemaKit::array(std::vector<const Record*> items)
{
    auto& stored = arrays_.emplace_back(items.begin(), items.end());
    return reinterpret_cast<const Record* const*>(stored.data());
}
