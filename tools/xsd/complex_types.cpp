// Complex types: what they take from their bases, and their content as the engine gets it.
#include "xsd/components.hpp"
#include "xsd/content_choice.hpp"
#include "xsd/group_record.hpp"

namespace netxml::xsd {
namespace {

// complexContent or simpleContent, and in it extension or restriction.
struct DerivationNodes {
    const SchemaNode* content = nullptr;
    const SchemaNode* derivation = nullptr;
    bool simple = false;
    bool extension = false;
};

DerivationNodes derivationOf(const SchemaNode& type)
{
    DerivationNodes result;
    result.content = type.child("complexContent");
    if (!result.content) {
        result.content = type.child("simpleContent");
        result.simple = result.content != nullptr;
    }
    if (!result.content) return result;
    result.derivation = result.content->child("extension");
    result.extension = result.derivation != nullptr;
    if (!result.derivation) result.derivation = result.content->child("restriction");
    return result;
}

}  // namespace

// The complex type that another one is derived from; nothing for none, and for a simple type.
Components::Type* Components::baseOf(const Type& type)
{
    if (type.isAny) return nullptr;
    const DerivationNodes nodes = derivationOf(*type.at.node);
    if (!nodes.derivation) return nullptr;
    const Component at = type.at.with(nodes.derivation);
    const auto name = set_.resolve(at, nodes.derivation->get("base"));
    return name ? namedChoice(*name, at).complex : nullptr;
}

// Bases come first, whatever their number.
void Components::fill(Type& type)
{
    std::vector<Type*> chain{&type};
    while (!chain.empty()) {
        Type& next = *chain.back();
        if (next.filled) {
            chain.pop_back();
            continue;
        }
        const bool again = next.open;  // its base is filled
        next.open = true;
        Type* base = again ? nullptr : baseOf(next);
        if (base && base->open) {
            diagnostics_.error(next.at.node->place,
                               "the type \"" + next.record->name + "\" is derived from itself.");
            base = nullptr;
        }
        if (base && !base->filled) {
            chain.push_back(base);
            continue;
        }
        next.filled = true;
        fillOne(next);
        next.open = false;
        chain.pop_back();
    }
}

void Components::fillOne(Type& type)
{
    const SchemaNode& node = *type.at.node;
    particles_ = 0;
    type.mixed = isTrue(node.get("mixed"));
    const DerivationNodes nodes = derivationOf(node);
    if (nodes.content && !nodes.derivation) {
        diagnostics_.error(nodes.content->place, "expected \"extension\" or \"restriction\" in \"" +
                                                     nodes.content->name.local + "\".");
    } else if (nodes.simple) {
        fillSimpleContent(type, type.at.with(nodes.content));
    } else if (nodes.content) {
        fillComplexContent(type, type.at.with(nodes.content));
    } else {
        type.content = contentIn(type.at);
        type.attributes = attributes_.declaredIn(type.at);
    }
}

void Components::fillComplexContent(Type& type, const Component& content)
{
    const DerivationNodes nodes = derivationOf(*type.at.node);
    const Component at = content.with(nodes.derivation);
    if (const std::string* mixed = content.node->find("mixed")) type.mixed = isTrue(*mixed);
    const AttributeUses own = attributes_.declaredIn(at);
    type.content = contentIn(at);
    const auto name = set_.resolve(at, nodes.derivation->get("base"));
    if (!name) return;
    const TypeChoice base = namedChoice(*name, at);
    if (!base.complex) {
        diagnostics_.error(at.node->place,
                           "\"" + shown(*name) + "\" is a simple type; expected a complex one.");
        return;
    }
    if (nodes.extension) {
        const SourcePlace place = type.content.place;
        if (type.content.isEmpty()) {
            type.content = base.complex->content;
            type.mixed = type.mixed || base.complex->mixed;
        } else if (!base.complex->content.isEmpty()) {
            type.content =
                group(ContentModel::Kind::Sequence, {base.complex->content, type.content});
        }
        type.content.place = place;
        type.text = base.complex->text;
    }
    type.attributes = Attributes::derived(base.complex->attributes, own, nodes.extension);
}

void Components::fillSimpleContent(Type& type, const Component& content)
{
    const DerivationNodes nodes = derivationOf(*type.at.node);
    const Component at = content.with(nodes.derivation);
    const AttributeUses own = attributes_.declaredIn(at);
    const auto name = set_.resolve(at, nodes.derivation->get("base"));
    if (!name) return;
    const TypeChoice base = namedChoice(*name, at);
    const SimpleType* text = base.simple    ? base.simple
                             : base.complex ? base.complex->text
                                            : nullptr;
    if (const SchemaNode* inner = at.node->child("simpleType"); inner && !nodes.extension)
        text = &types_.declared(at.with(inner));
    if (!text) {
        diagnostics_.error(at.node->place, "\"" + shown(*name) + "\" has no simple content.");
        text = &types_.builtin("anySimpleType", at);
    }
    const bool restricts =
        !nodes.extension &&
        std::any_of(at.node->children.begin(), at.node->children.end(),
                    [](const SchemaNode* node) { return node->find("value") != nullptr; });
    type.text = restricts ? &types_.restricted(*text, at, types_.anonymous(at)) : text;
    type.attributes =
        base.complex ? Attributes::derived(base.complex->attributes, own, nodes.extension) : own;
}

void Components::finish()
{
    for (; finished_ != complexTypes_.size(); ++finished_) {
        Type& type = complexTypes_[finished_];
        fill(type);
        ComplexTypeRecord& record = *type.record;
        record.mixed = type.mixed;
        attributes_.fill(record, type.attributes);
        if (type.text) {
            record.textType = type.text->record;
            continue;
        }
        const ContentModel form = engineForm(type.content, checks_, diagnostics_);
        // Text may only stand where there is a content model, if an empty one.
        if (!form.isEmpty() || type.mixed) record.content = groupRecord(form, records_);
    }
}

}  // namespace netxml::xsd
