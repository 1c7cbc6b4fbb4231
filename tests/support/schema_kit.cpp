#include "tests/support/schema_kit.hpp"

#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

SchemaKit::SchemaKit()
{
    EXPECT_EQ(Schema_InitRoot(&root_), XML_RET_OK);
}

SchemaKit::~SchemaKit()
{
    XML_DOM_DelNode(document_);
    for (const Schema_Object& object : added_) Schema_DeregTopObject(&root_, &object);
    Schema_ExitRoot(&root_);
}

const char* SchemaKit::text(std::string_view text)
{
    return texts_.emplace_back(text).c_str();
}

Schema_ElementDecl* SchemaKit::element(std::string_view name, const Schema_ComplexType* type)
{
    auto* decl = make<Schema_ElementDecl>();
    decl->name = text(name);
    decl->minOccurs = decl->maxOccurs = 1;
    decl->type = type;
    decl->typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    return decl;
}

Schema_ElementDecl* SchemaKit::simpleElement(std::string_view name, const void* type)
{
    Schema_ElementDecl* decl = element(name);
    decl->type = type;
    decl->typeKind = SCHEMA_KIND_SIMPLE_TYPE;
    return decl;
}

Schema_SimpleType* SchemaKit::restrictedString(const Schema_Facet* facets, uint32_t count)
{
    auto* type = make<Schema_SimpleType>();
    type->memberCount = 1;
    type->members =
        array<Schema_SimpleType>({static_cast<const Schema_SimpleType*>(Schema_BLDIN_string())});
    type->facets = facets;
    type->facetCount = count;
    return type;
}

Schema_ComplexType* SchemaKit::complexType(const Schema_ModelGroup* content)
{
    auto* type = make<Schema_ComplexType>();
    type->content = content;
    return type;
}

void SchemaKit::add(const Schema_ElementDecl* element)
{
    const Schema_Object object{element, SCHEMA_KIND_ELEMENT};
    ASSERT_EQ(Schema_RegTopObject(&root_, &object), XML_RET_OK);
    added_.push_back(object);
}

void SchemaKit::add(const Schema_AttributeDecl* attribute)
{
    const Schema_Object object{attribute, SCHEMA_KIND_ATTRIBUTE};
    ASSERT_EQ(Schema_RegTopObject(&root_, &object), XML_RET_OK);
    added_.push_back(object);
}

// Reads one group; the notation is the test's own, so a mistake in it is a failed test.
class SchemaKit::Reader {
public:
    Reader(SchemaKit& kit, std::string_view text) : kit_{kit}, text_{text} {}

    Schema_ModelGroup* group()
    {
        auto* group = kit_.make<Schema_ModelGroup>();
        group->compositor = SCHEMA_COMPOSITOR_SEQUENCE;
        std::vector<Schema_Object> particles;
        skip('(');
        while (peek() != ')' && peek() != '\0') {
            particles.push_back(particle());
            if (peek() == '|') group->compositor = SCHEMA_COMPOSITOR_CHOICE;
            if (peek() == '&') group->compositor = SCHEMA_COMPOSITOR_ALL;
            if (peek() == '|' || peek() == '&' || peek() == ',') ++at_;
        }
        skip(')');
        bounds(group->minOccurs, group->maxOccurs);
        group->particleCount = static_cast<uint32_t>(particles.size());
        group->particles = kit_.particles_.emplace_back(std::move(particles)).data();
        return group;
    }

    bool finished() const { return at_ == text_.size(); }

private:
    char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    void skip(char c)
    {
        EXPECT_EQ(peek(), c) << text_ << " at " << at_;
        ++at_;
    }

    Schema_Object particle()
    {
        if (peek() == '(') return {group(), SCHEMA_KIND_MODEL_GROUP};
        if (peek() == '#' || peek() == '~') return {wildcard(), SCHEMA_KIND_WILDCARD};
        const std::size_t start = at_;
        while (peek() >= 'a' && peek() <= 'z') ++at_;
        EXPECT_LT(start, at_) << text_ << " at " << at_;
        Schema_ElementDecl* element = kit_.element(text_.substr(start, at_ - start));
        bounds(element->minOccurs, element->maxOccurs);
        return {element, SCHEMA_KIND_ELEMENT};
    }

    Schema_Wildcard* wildcard()
    {
        auto* any = kit_.make<Schema_Wildcard>();
        any->namespaceName = "##any";
        any->processContents = text_[at_++] == '#' ? SCHEMA_PROCESS_LAX : SCHEMA_PROCESS_STRICT;
        bounds(any->minOccurs, any->maxOccurs);
        return any;
    }

    uint32_t number()
    {
        uint32_t value = 0;
        while (peek() >= '0' && peek() <= '9')
            value = value * 10 + static_cast<uint32_t>(text_[at_++] - '0');
        return value;
    }

    void bounds(uint32_t& min, uint32_t& max)
    {
        min = max = 1;
        switch (peek()) {
        case '?': min = 0; break;
        case '*':
            min = 0;
            max = SCHEMA_UNBOUNDED;
            break;
        case '+': max = SCHEMA_UNBOUNDED; break;
        case '{':
            ++at_;
            min = number();
            skip(',');
            max = peek() == '}' ? SCHEMA_UNBOUNDED : number();
            break;
        default: return;
        }
        ++at_;
    }

    SchemaKit& kit_;
    std::string_view text_;
    std::size_t at_ = 0;
};

Schema_ModelGroup* SchemaKit::model(std::string_view notation)
{
    Reader reader{*this, notation};
    Schema_ModelGroup* group = reader.group();
    EXPECT_TRUE(reader.finished()) << notation;
    return group;
}

Schema_ValidateResult SchemaKit::validate(std::string_view document, uint32_t* status)
{
    XML_DOM_DelNode(document_);
    document_ = treeOf(document);
    Schema_ValidateResult result;
    const uint32_t got = Schema_ValidateXml(document_, &root_, &result);
    if (status) *status = got;
    else EXPECT_EQ(got, XML_RET_OK) << document;
    return result;
}

std::string SchemaKit::sentence(std::string_view document)
{
    uint32_t status = XML_RET_OK;
    const Schema_ValidateResult result = validate(document, &status);
    if (status != XML_RET_OK) return "failed";
    if (result.code == SCHEMA_VALID) return "valid";
    char text[2048];
    EXPECT_EQ(Schema_GetErrorDesc(&result, sizeof text, text), XML_RET_OK);
    return text;
}
