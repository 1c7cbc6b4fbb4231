// Registering, validating, sentences and tracing.
#include "tests/faults/scenario.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <array>

namespace {

std::string countsOf(const Schema_Root& root)
{
    std::string text;
    for (const Schema_ObjectList* list :
         {&root.simpleTypes, &root.attributes, &root.elements, &root.complexTypes, &root.reserved,
          &root.attributeGroups})
        text += std::to_string(list->count) + "/" + std::to_string(list->items != nullptr) + " ";
    return text;
}

// A root can be released whatever has failed.
class InitRoot : public Trial {
public:
    bool act() override
    {
        const uint64_t status = NOTED(Schema_InitRoot)(&root_);
        if (status != XML_RET_OK) Schema_ExitRoot(&root_);
        return status == XML_RET_OK;
    }
    std::string product() override
    {
        std::string text = countsOf(root_);
        NOTED(Schema_ExitRoot)(&root_);
        text += countsOf(root_);
        EXPECT_EQ(NOTED(SchemaReg_xml_schema_buildin)(&root_), XML_RET_OK);
        text += countsOf(root_);
        NOTED(SchemaDereg_xml_schema_buildin)(&root_);
        return text + countsOf(root_);
    }

private:
    Schema_Root root_{};
};

class RegisterBuiltin : public Trial {
public:
    bool act() override
    {
        const uint64_t status = NOTED(SchemaReg_xml_schema_buildin)(&root_);
        if (status != XML_RET_OK) SchemaDereg_xml_schema_buildin(&root_);
        return status == XML_RET_OK;
    }
    std::string product() override
    {
        const std::string text = countsOf(root_);
        SchemaDereg_xml_schema_buildin(&root_);
        return text + countsOf(root_);
    }

private:
    Schema_Root root_{};
};

// The lists begin with 32 places, so that the last records registered make them grow.
template <Schema_ObjectKind kind>
class Register : public Trial {
public:
    Register()
    {
        for (std::size_t i = 0; i < 32; ++i) change(Schema_RegTopObject, i);
    }
    ~Register() override
    {
        for (std::size_t i = 0; i < 33; ++i) change(Schema_DeregTopObject, i);
    }
    bool act() override
    {
        const Schema_Object object{&records_[32], kind};
        return NOTED(Schema_RegTopObject)(&root_, &object) == XML_RET_OK;
    }
    std::string held() override { return countsOf(root_); }
    std::string product() override
    {
        const Schema_Object object{&records_[32], kind};
        const std::string text = countsOf(root_);
        NOTED(Schema_DeregTopObject)(&root_, &object);
        return text + countsOf(root_);
    }

private:
    template <class Function>
    void change(Function function, std::size_t i)
    {
        const Schema_Object object{&records_[i], kind};
        function(&root_, &object);
    }

    std::array<char, 33> records_{};
    Schema_Root root_{};
};

constexpr Schema_Facet kFacets[] = {
    {"^[a-z]+$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
    {"^[[:alpha:]]+$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},  // for the C library
    {"2", SCHEMA_FACET_MIN_LENGTH, SCHEMA_BUILTIN_STRING},
};

// Simple types with patterns, attributes of a group, a wildcard, choices, and recursion.
class Validate : public Trial {
public:
    explicit Validate(std::string_view document) : tree_{treeOf(document)}
    {
        auto* word = kit_.make<Schema_SimpleType>();
        word->memberCount = 1;
        word->members = kit_.array<Schema_SimpleType>(
            {static_cast<const Schema_SimpleType*>(Schema_BLDIN_string())});
        word->facets = kFacets;
        word->facetCount = std::size(kFacets);
        auto* use = kit_.make<Schema_AttributeDecl>();
        use->name = "w";
        use->type = word;
        auto* group = kit_.make<Schema_AttributeGroup>();
        group->attributeCount = 1;
        group->attributes = kit_.array<Schema_AttributeDecl>({use});
        group->anyAttribute = &lax_;
        Schema_ModelGroup* leaf = kit_.model("(a?,(b|c)*,(x,y)?)");
        Schema_ComplexType* type = kit_.complexType(leaf);
        type->attributeGroupCount = 1;
        type->attributeGroups = kit_.array<Schema_AttributeGroup>({group});
        Schema_ElementDecl* item = kit_.element("e", type);
        item->minOccurs = 0;
        item->maxOccurs = SCHEMA_UNBOUNDED;
        Schema_ModelGroup* list = kit_.model("(e*)");
        const_cast<Schema_Object*>(list->particles)->def = item;
        const_cast<Schema_Object*>(leaf->particles)->def = item;
        kit_.add(kit_.element("r", kit_.complexType(list)));
    }
    ~Validate() override { XML_DOM_DelNode(tree_); }
    bool act() override
    {
        Schema_ValidateResult result;
        const uint32_t status = NOTED(Schema_ValidateXml)(tree_, &kit_.root(), &result);
        if (status == XML_RET_OK) return describe(result);
        EXPECT_EQ(status, XML_RET_FAIL);
        EXPECT_EQ(result.code, 0u);
        EXPECT_EQ(result.node, nullptr);
        return false;
    }
    std::string held() override { return dump(tree_) + countsOf(kit_.root()); }
    std::string product() override { return said_; }

private:
    // A verdict is the right one, or there is none: not that the document is wrong because there
    // was no memory for a pattern.
    bool describe(const Schema_ValidateResult& result)
    {
        char sentence[1024] = "valid";
        EXPECT_EQ(NOTED(Schema_GetErrorDesc)(&result, sizeof sentence, sentence), XML_RET_OK);
        said_ = sentence;
        return true;
    }

    SchemaKit kit_;
    Schema_AttributeWildcard lax_{nullptr, "##any", SCHEMA_PROCESS_LAX};
    XML_DOM_Node* tree_;
    std::string said_;
};

std::string deep(const char* inmost)
{
    std::string text = "<r>";
    for (int item = 0; item < 2; ++item) {
        for (int level = 0; level < 150; ++level) {
            text += "<e w='word'";
            for (int a = 0; level < 3 && a < 20; ++a) text += " a" + std::to_string(a) + "='1'";
            text += ">";
        }
        text += std::string{"<b/><c/>"} + inmost;
        for (int level = 0; level < 150; ++level) text += "</e>";
    }
    return text + "</r>";
}

struct ValidateGood : Validate {
    ValidateGood() : Validate{deep("<x/><y/>")} {}
};
struct ValidateBad : Validate {
    ValidateBad() : Validate{deep("<x/><z/>")} {}
};
struct ValidateBadValue : Validate {
    ValidateBadValue() : Validate{deep("<x/><y/></e><e w='W'>")} {}
};

// What is printed goes to a file of its own.
class Trace : public Trial {
public:
    Trace() { kit_.add(kit_.element("r")); }
    ~Trace() override { XML_DOM_DelNode(tree_); }
    bool act() override
    {
        NOTED(Schema_Debug_Enable)(1);
        testing::internal::CaptureStdout();
        NOTED(Schema_Debug_BlankAdd)();
        NOTED(Schema_Debug_ShowMsgLine)("%d", 1);
        NOTED(Schema_Debug_ShowMsg)("%s", "more");
        NOTED(Schema_Debug_ShowNode)(tree_, "act");
        NOTED(Schema_Debug_ListTopObjects)(&kit_.root());
        NOTED(Schema_Debug_BlankSub)();
        std::fflush(stdout);
        printed_ = testing::internal::GetCapturedStdout();
        Schema_Debug_Enable(0);
        return true;
    }
    // An address stands there, too.
    std::string product() override { return printed_.substr(0, printed_.find("addr=")); }

private:
    SchemaKit kit_;
    XML_DOM_Node* tree_ = treeOf("<r>text</r>");
    std::string printed_;
};

}  // namespace

std::vector<Scenario> schemaScenarios()
{
    return {
        scenario<InitRoot>("a root"),
        scenario<RegisterBuiltin>("the built-in types in a root"),
        scenario<Register<SCHEMA_KIND_ATTRIBUTE>>("a top-level attribute"),
        scenario<Register<SCHEMA_KIND_ATTRIBUTE_GROUP>>("a top-level attribute group"),
        scenario<Register<SCHEMA_KIND_COMPLEX_TYPE>>("a top-level complex type"),
        scenario<Register<SCHEMA_KIND_ELEMENT>>("a top-level element"),
        scenario<Register<SCHEMA_KIND_SIMPLE_TYPE>>("a top-level simple type"),
        scenario<ValidateGood>("a valid document"),
        scenario<ValidateBad>("a document with a wrong element"),
        scenario<ValidateBadValue>("a document with a wrong value"),
        scenario<Trace>("tracing"),
    };
}
