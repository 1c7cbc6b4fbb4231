#include "xsd/runtime_schema.hpp"

#include "recode.hpp"

#include <deque>
#include <new>
#include <unordered_map>
#include <unordered_set>

namespace netxml::xsd {
namespace {

struct BuiltinAddress {
    const char* name;
    void* (*address)();
};

#define BUILTIN(name)                                                                              \
    {                                                                                              \
#name, Schema_BLDIN_##name                                                                 \
    }
constexpr BuiltinAddress kBuiltins[] = {
    BUILTIN(anySimpleType),
    BUILTIN(byte),
    BUILTIN(short),
    BUILTIN(unsignedByte),
    BUILTIN(unsignedShort),
    BUILTIN(int),
    BUILTIN(long),
    BUILTIN(unsignedInt),
    BUILTIN(unsignedLong),
    BUILTIN(integer),
    BUILTIN(positiveInteger),
    BUILTIN(nonPositiveInteger),
    BUILTIN(negativeInteger),
    BUILTIN(nonNegativeInteger),
    BUILTIN(duration),
    BUILTIN(dateTime),
    BUILTIN(date),
    BUILTIN(time),
    BUILTIN(gYear),
    BUILTIN(gMonth),
    BUILTIN(gDay),
    BUILTIN(gYearMonth),
    BUILTIN(gMonthDay),
    BUILTIN(string),
    BUILTIN(boolean),
    BUILTIN(hexBinary),
    BUILTIN(base64Binary),
    BUILTIN(anyURI),
    BUILTIN(QName),
    BUILTIN(language),
};
#undef BUILTIN

}  // namespace

const Schema_SimpleType* builtinRecord(const std::string& name)
{
    for (const BuiltinAddress& row : kBuiltins) {
        if (name == row.name) return static_cast<const Schema_SimpleType*>(row.address());
    }
    return nullptr;
}

// Makes a record of each one the first time that something refers to it.
class RuntimeSchema::Records {
public:
    explicit Records(const SchemaRecords& from) : from_{from}
    {
        if (Schema_InitRoot(&root_) != XML_RET_OK) fail();
        for (const std::string& type : from.networkTypes) {
            Schema_ReplaceInnerTypeNS(type.c_str(), nullptr, text(from.networkNamespace));
        }
        for (const SimpleTypeRecord* type : from.topSimpleTypes)
            enter(of(type), SCHEMA_KIND_SIMPLE_TYPE);
        for (const AttributeRecord* attribute : from.topAttributes)
            enter(of(attribute), SCHEMA_KIND_ATTRIBUTE);
        for (const ComplexTypeRecord* type : from.topComplexTypes)
            enter(of(type), SCHEMA_KIND_COMPLEX_TYPE);
        for (const ElementRecord* element : from.topElements)
            enter(of(element), SCHEMA_KIND_ELEMENT);
        fillComplexTypes();
    }
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;
    ~Records() { leave(); }

    const Schema_Root* root() const { return &root_; }

private:
    template <class To>
    using Known = std::unordered_map<const void*, const To*>;

    // An array that lives as long as the schema.
    template <class T>
    const T* kept(std::vector<T> items)
    {
        if (items.empty()) return nullptr;
        const auto owner = std::make_shared<std::vector<T>>(std::move(items));
        arrays_.push_back(owner);
        return owner->data();
    }

    const char* keep(std::string bytes) { return texts_.insert(std::move(bytes)).first->c_str(); }
    const char* text(const std::string& utf8)
    {
        if (utf8.empty()) return nullptr;
        const auto bytes = tool::recode(utf8, XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
        return keep(bytes ? *bytes : utf8);
    }
    const char* name(const std::string& utf8) { return utf8.empty() ? "" : text(utf8); }

    static std::uint32_t count(std::size_t size) { return static_cast<std::uint32_t>(size); }

    const Schema_Facet* facets(const std::vector<FacetRecord>& from)
    {
        std::vector<Schema_Facet> result;
        result.reserve(from.size());
        for (const FacetRecord& facet : from) {
            result.push_back(
                {facet.raw ? keep(facet.value) : name(facet.value), facet.kind, facet.baseKind});
        }
        return kept(std::move(result));
    }

    const Schema_SimpleType* of(const SimpleTypeRecord* from)
    {
        if (!from) return nullptr;
        if (!from->builtin.empty()) return builtinRecord(from->builtin);
        const auto [place, added] = simpleTypes_.try_emplace(from);
        if (!added) return place->second;
        Schema_SimpleType& to = simple_.emplace_back();
        simpleTypes_[from] = &to;
        std::vector<const Schema_SimpleType*> members;
        for (const SimpleTypeRecord* member : from->members) members.push_back(of(member));
        to.memberCount = count(members.size());
        to.members = kept(std::move(members));
        to.facets = facets(from->facets);
        to.facetCount = count(from->facets.size());
        to.name = text(from->name);
        to.namespaceName = text(from->nameSpace);
        return &to;
    }

    const Schema_AttributeDecl* of(const AttributeRecord* from)
    {
        const auto [place, added] = attributes_.try_emplace(from);
        if (!added) return place->second;
        Schema_AttributeDecl& to = attribute_.emplace_back();
        attributes_[from] = &to;
        to.ref = from->ref ? of(from->ref) : nullptr;
        to.type = of(from->type);
        to.name = text(from->name);
        to.namespaceName = text(from->nameSpace);
        to.value = from->fixed ? name(*from->fixed) : nullptr;
        to.use = from->use;
        to.form = from->form;
        to.fixed = from->fixed ? 1 : 0;
        return &to;
    }

    const Schema_AttributeWildcard* of(const AttributeWildcardRecord* from)
    {
        if (!from) return nullptr;
        return kept(std::vector<Schema_AttributeWildcard>{
            {text(from->targetNamespace), name(from->constraint), from->processContents}});
    }

    const Schema_AttributeGroup* of(const AttributeGroupRecord* from)
    {
        const auto [place, added] = attributeGroups_.try_emplace(from);
        if (!added) return place->second;
        Schema_AttributeGroup& to = attributeGroup_.emplace_back();
        attributeGroups_[from] = &to;
        to.attributes = all<Schema_AttributeDecl>(from->attributes);
        to.attributeCount = count(from->attributes.size());
        to.anyAttribute = of(from->anyAttribute);
        return &to;
    }

    template <class To, class From>
    const To* const* all(const std::vector<const From*>& from)
    {
        std::vector<const To*> result;
        result.reserve(from.size());
        for (const From* item : from) result.push_back(of(item));
        return kept(std::move(result));
    }

    const Schema_ElementDecl* of(const ElementRecord* from)
    {
        const auto [place, added] = elements_.try_emplace(from);
        if (!added) return place->second;
        Schema_ElementDecl& to = element_.emplace_back();
        elements_[from] = &to;
        to.ref = from->ref ? of(from->ref) : nullptr;
        to.name = text(from->name);
        to.namespaceName = text(from->nameSpace);
        if (from->head) {
            to.substitutionGroupName = text(from->head->first);
            to.substitutionGroupNamespace = text(from->head->second);
        }
        if (from->simpleType) {
            to.type = of(from->simpleType);
            to.typeKind = SCHEMA_KIND_SIMPLE_TYPE;
        } else if (from->complexType) {
            to.type = shell(from->complexType);
            to.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
        }
        to.value = from->fixed ? name(*from->fixed) : nullptr;
        to.fixed = from->fixed ? 1 : 0;
        to.minOccurs = from->min;
        to.maxOccurs = from->max;
        to.form = from->form;
        to.abstract = from->abstract ? 1 : 0;
        to.nillable = from->nillable ? 1 : 0;
        return &to;
    }

    // A complex type may hold itself, so it is filled later.
    Schema_ComplexType* shell(const ComplexTypeRecord* from)
    {
        const auto [place, added] = complexTypes_.try_emplace(from);
        if (!added) return place->second;
        waiting_.push_back(from);
        return complexTypes_[from] = &complex_.emplace_back();
    }
    const Schema_ComplexType* of(const ComplexTypeRecord* from) { return shell(from); }

    void fillComplexTypes()
    {
        while (!waiting_.empty()) {
            const ComplexTypeRecord& from = *waiting_.back();
            waiting_.pop_back();
            Schema_ComplexType& to = *complexTypes_[&from];
            to.attributes = all<Schema_AttributeDecl>(from.attributes);
            to.attributeCount = count(from.attributes.size());
            to.attributeGroups = all<Schema_AttributeGroup>(from.attributeGroups);
            to.attributeGroupCount = count(from.attributeGroups.size());
            to.anyAttribute = of(from.anyAttribute);
            to.name = text(from.name);
            to.namespaceName = text(from.nameSpace);
            to.mixed = from.mixed ? 1 : 0;
            if (from.content) to.content = of(from.content);
            if (from.textType) to.derivation = simpleContent(from.textType);
        }
    }

    const Schema_Derivation* simpleContent(const SimpleTypeRecord* type)
    {
        Schema_Derivation derivation{};
        derivation.kind = SCHEMA_KIND_SIMPLE_EXTENSION;
        derivation.base = of(type);
        derivation.baseKind = SCHEMA_KIND_SIMPLE_TYPE;
        return kept(std::vector<Schema_Derivation>{derivation});
    }

    const Schema_ModelGroup* of(const GroupRecord* from)
    {
        const auto [place, added] = groups_.try_emplace(from);
        if (!added) return place->second;
        Schema_ModelGroup& to = group_.emplace_back();
        groups_[from] = &to;
        std::vector<Schema_Object> particles;
        for (const ParticleRecord& particle : from->particles) {
            if (particle.element) particles.push_back({of(particle.element), SCHEMA_KIND_ELEMENT});
            else if (particle.wildcard)
                particles.push_back({of(particle.wildcard), SCHEMA_KIND_WILDCARD});
            else particles.push_back({of(particle.group), SCHEMA_KIND_MODEL_GROUP});
        }
        to.particleCount = count(particles.size());
        to.particles = kept(std::move(particles));
        to.compositor = from->compositor;
        to.minOccurs = from->min;
        to.maxOccurs = from->max;
        return &to;
    }

    const Schema_Wildcard* of(const WildcardRecord* from)
    {
        return kept(
            std::vector<Schema_Wildcard>{{text(from->targetNamespace), name(from->constraint),
                                          from->min, from->max, from->processContents}});
    }

    void enter(const void* record, Schema_ObjectKind kind)
    {
        const Schema_Object object{record, kind};
        if (Schema_RegTopObject(&root_, &object) != XML_RET_OK) fail();
        entered_.push_back(object);
    }

    void leave()
    {
        for (; !entered_.empty(); entered_.pop_back())
            Schema_DeregTopObject(&root_, &entered_.back());
        for (const std::string& type : from_.networkTypes)
            Schema_ReplaceInnerTypeNS(type.c_str(), text(from_.networkNamespace), nullptr);
        Schema_ExitRoot(&root_);
    }
    [[noreturn]] void fail()
    {
        leave();
        throw std::bad_alloc{};
    }

    const SchemaRecords& from_;
    Schema_Root root_{};
    std::vector<Schema_Object> entered_;
    std::vector<const ComplexTypeRecord*> waiting_;

    std::unordered_set<std::string> texts_;
    std::vector<std::shared_ptr<void>> arrays_;
    std::deque<Schema_SimpleType> simple_;
    std::deque<Schema_AttributeDecl> attribute_;
    std::deque<Schema_AttributeGroup> attributeGroup_;
    std::deque<Schema_ElementDecl> element_;
    std::deque<Schema_ModelGroup> group_;
    std::deque<Schema_ComplexType> complex_;
    Known<Schema_SimpleType> simpleTypes_;
    Known<Schema_AttributeDecl> attributes_;
    Known<Schema_AttributeGroup> attributeGroups_;
    Known<Schema_ElementDecl> elements_;
    Known<Schema_ModelGroup> groups_;
    std::unordered_map<const void*, Schema_ComplexType*> complexTypes_;
};

RuntimeSchema::RuntimeSchema(const SchemaRecords& records)
    : records_{std::make_unique<Records>(records)}
{
}

RuntimeSchema::~RuntimeSchema() = default;

const Schema_Root* RuntimeSchema::root() const
{
    return records_->root();
}

}  // namespace netxml::xsd
