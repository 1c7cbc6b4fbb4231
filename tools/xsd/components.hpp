// Elements and complex types of a schema as records.
#pragma once

#include "xsd/attribute_uses.hpp"
#include "xsd/content_model.hpp"
#include "xsd/model_check.hpp"
#include "xsd/simple_types.hpp"

#include <deque>
#include <map>

namespace netxml::xsd {

class Components {
public:
    Components(SchemaSet& set, SchemaRecords& records, SimpleTypes& types, Attributes& attributes,
               Diagnostics& diagnostics);

    const ElementRecord* topElement(const QName& name, const Component& from);
    const ComplexTypeRecord* namedType(const QName& name, const Component& from);
    // Reads the groups that no type refers to, too, for what is wrong in them.
    void checkGroups();
    // Fills the types that were only referred to so far.
    void finish();

private:
    // A complex type on its way to a record.
    struct Type {
        Component at;
        ComplexTypeRecord* record = nullptr;
        bool filled = false;
        bool open = false;
        bool mixed = false;
        ContentModel content;  // as XML Schema means it, that of the base included
        AttributeUses attributes;
        const SimpleType* text = nullptr;
        bool isAny = false;
    };
    struct TypeChoice {
        const SimpleType* simple = nullptr;
        Type* complex = nullptr;
    };

    Type* complexType(const QName& name, const Component& from);
    Type* anonymousType(const Component& at);
    Type& anyType();
    TypeChoice namedChoice(const QName& name, const Component& from);
    TypeChoice typeOf(const Component& element);

    void describe(ElementRecord& record, const Component& at);
    void setValue(ElementRecord& record, const Component& at, const TypeChoice& type);
    const ElementRecord* localElement(const Component& at);

    void fill(Type& type);
    Type* baseOf(const Type& type);
    void fillOne(Type& type);
    void fillComplexContent(Type& type, const Component& content);
    void fillSimpleContent(Type& type, const Component& content);
    void checkAbsent(const Component& at);

    ContentModel contentIn(const Component& at);
    ContentModel particle(const Component& at);
    ContentModel groupReference(const Component& at);
    ContentModel elementParticle(const Component& at);
    ContentModel wildcardParticle(const Component& at);
    ContentModel substitutes(const QName& head, const Component& at);
    void setBounds(ContentModel& model, const Component& at);
    std::uint32_t bound(const Component& at, const char* name);

    SchemaSet& set_;
    SchemaRecords& records_;
    SimpleTypes& types_;
    Attributes& attributes_;
    Diagnostics& diagnostics_;
    ModelChecks checks_;
    std::map<QName, ElementRecord*> tops_;
    std::map<const SchemaNode*, const ElementRecord*> locals_;
    std::map<QName, Type*> named_;
    std::map<const SchemaNode*, Type*> anonymous_;
    std::deque<Type> complexTypes_;
    std::size_t finished_ = 0;
    std::size_t particles_ = 0;  // of the type that is being filled
    Type* any_ = nullptr;
    std::multimap<QName, QName> members_;  // of substitution groups
    std::vector<const SchemaNode*> openGroups_;
};

}  // namespace netxml::xsd
