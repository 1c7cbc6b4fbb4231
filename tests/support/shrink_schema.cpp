#include "tests/support/shrink_schema.hpp"

#include <utility>

namespace {

// A change towards something simpler; false when there is nothing to change.
using Edit = std::function<bool()>;

class Shrinker {
public:
    Shrinker(SchemaGraph& graph, Instance& instance, const std::function<bool()>& interesting)
        : graph_{graph}, instance_{instance}, interesting_{interesting}
    {
    }
    void run();

private:
    template <typename Field, typename Value>
    void set(Field& field, Value value)
    {
        const Field target = static_cast<Field>(value);
        edits_.push_back([&field, target] {
            if (field == target) return false;
            field = target;
            return true;
        });
    }
    template <typename Item>
    void removeItems(std::vector<Item>& items)
    {
        for (std::size_t i = items.size(); i-- != 0;)
            edits_.push_back([&items, i] {
                if (i >= items.size()) return false;
                items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
                return true;
            });
    }
    template <typename Record>
    void simplerBounds(Record& record)
    {
        // The plainest first.
        edits_.push_back([&record] {
            if (record.minOccurs == 1 && record.maxOccurs == 1) return false;
            record.minOccurs = record.maxOccurs = 1;
            return true;
        });
        edits_.push_back([&record] { return lower(record.minOccurs, record.maxOccurs == 1); });
        edits_.push_back([&record] { return lower(record.maxOccurs, record.minOccurs == 1); });
    }
    static bool lower(uint32_t& bound, bool done)
    {
        if (bound <= 1 || done) return false;
        bound = bound > 100 ? 3 : bound - 1;
        return true;
    }
    template <typename Node>
    void simplerUses(Node& node)
    {
        removeItems(node.attributes);
        removeItems(node.attributeGroups);
        set(node.record.anyAttribute, nullptr);
    }

    void listElements();
    void listAttributes();
    void listGroups();
    void listTypes();
    void listDocument();
    void tryEdits(bool& progress);

    SchemaGraph& graph_;
    Instance& instance_;
    const std::function<bool()>& interesting_;
    std::vector<Edit> edits_;
};

void Shrinker::listElements()
{
    for (Schema_ElementDecl& decl : graph_.elements) {
        edits_.push_back([&decl] {  // a copy in place of a reference
            if (!decl.ref) return false;
            const Schema_ElementDecl own = decl;
            decl = *own.ref;
            decl.minOccurs = own.minOccurs;
            decl.maxOccurs = own.maxOccurs;
            return true;
        });
        edits_.push_back([&decl] {
            if (!decl.type) return false;
            decl.type = nullptr;
            return true;
        });
        edits_.push_back([&decl] {
            if (!decl.type || decl.type == Schema_BLDIN_string()) return false;
            if (decl.typeKind != SCHEMA_KIND_SIMPLE_TYPE) return false;
            decl.type = Schema_BLDIN_string();
            return true;
        });
        simplerBounds(decl);
        set(decl.substitutionGroupName, nullptr);
        set(decl.substitutionGroupNamespace, nullptr);
        set(decl.namespaceName, nullptr);
        set(decl.form, 0);
        set(decl.fixed, 0);
        set(decl.abstract, 0);
        set(decl.nillable, 0);
    }
    for (Schema_Wildcard& any : graph_.wildcards) {
        simplerBounds(any);
        set(any.processContents, SCHEMA_PROCESS_SKIP);
        set(any.namespaceName, "##any");
        set(any.targetNamespace, nullptr);
    }
}

void Shrinker::listAttributes()
{
    for (Schema_AttributeDecl& decl : graph_.attributes) {
        edits_.push_back([&decl] {
            if (!decl.ref) return false;
            decl = *decl.ref;
            return true;
        });
        edits_.push_back([&decl] {
            if (!decl.type || decl.type == Schema_BLDIN_string()) return false;
            decl.type = static_cast<const Schema_SimpleType*>(Schema_BLDIN_string());
            return true;
        });
        set(decl.use, 0);
        set(decl.form, 0);
        set(decl.fixed, 0);
        set(decl.namespaceName, nullptr);
    }
    for (Schema_AttributeWildcard& any : graph_.attributeWildcards) {
        set(any.processContents, SCHEMA_PROCESS_SKIP);
        set(any.namespaceName, "##any");
        set(any.targetNamespace, nullptr);
    }
    for (AttributeGroupNode& node : graph_.attributeGroups) {
        simplerUses(node);
        set(node.record.ref, nullptr);
    }
}

void Shrinker::listGroups()
{
    for (GroupNode& node : graph_.groups) {
        removeItems(node.particles);
        for (std::size_t i = 0; i < node.particles.size(); ++i)
            edits_.push_back([&node, i] {  // the particles of a nested group in its place
                if (i >= node.particles.size()) return false;
                const Schema_Object nested = node.particles[i];
                if (nested.kind != SCHEMA_KIND_MODEL_GROUP || !nested.def) return false;
                const auto& inner = *static_cast<const Schema_ModelGroup*>(nested.def);
                if (&inner == &node.record) return false;
                const std::vector<Schema_Object> particles{inner.particles,
                                                           inner.particles + inner.particleCount};
                const auto place = node.particles.begin() + static_cast<std::ptrdiff_t>(i);
                node.particles.insert(node.particles.erase(place), particles.begin(),
                                      particles.end());
                return true;
            });
        simplerBounds(node.record);
        set(node.record.compositor, SCHEMA_COMPOSITOR_SEQUENCE);
    }
}

void Shrinker::listTypes()
{
    for (ComplexNode& node : graph_.complexTypes) {
        edits_.push_back([&node] {
            if (!node.record.derivation) return false;
            if (!node.record.content) node.record.content = node.record.derivation->content;
            node.record.derivation = nullptr;
            return true;
        });
        set(node.record.content, nullptr);
        set(node.record.mixed, 0);
        simplerUses(node);
    }
    for (DerivationNode& node : graph_.derivations) {
        set(node.record.content, nullptr);
        removeItems(node.facets);
        simplerUses(node);
    }
    for (SimpleNode& node : graph_.simpleTypes) {
        removeItems(node.members);
        removeItems(node.facets);
        set(node.record.kind, SCHEMA_BUILTIN_NONE);
    }
    removeItems(graph_.top);
    set(graph_.elementForm, SCHEMA_FORM_QUALIFIED);
    set(graph_.attributeForm, SCHEMA_FORM_UNQUALIFIED);
}

// Nodes are found by their place in the document, since they move.
void Shrinker::listDocument()
{
    const std::size_t count = instance_.nodes().size();
    const auto edit = [this](std::size_t at, auto change) {
        edits_.push_back([this, at, change] {
            const std::vector<InstanceNode*> nodes = instance_.nodes();
            return at < nodes.size() && change(*nodes[at]);
        });
    };
    for (std::size_t at = 0; at < count; ++at) {
        for (std::size_t i = instance_.nodes()[at]->children.size(); i-- != 0;)
            edit(at, [i](InstanceNode& node) {
                if (i >= node.children.size()) return false;
                node.children.erase(node.children.begin() + static_cast<std::ptrdiff_t>(i));
                return true;
            });
        for (std::size_t i = instance_.nodes()[at]->attributes.size(); i-- != 0;)
            edit(at, [i](InstanceNode& node) {
                if (i >= node.attributes.size()) return false;
                node.attributes.erase(node.attributes.begin() + static_cast<std::ptrdiff_t>(i));
                return true;
            });
        edit(at, [](InstanceNode& node) { return !std::exchange(node.nameSpace, "").empty(); });
        edit(at, [](InstanceNode& node) { return !std::exchange(node.text, "").empty(); });
    }
    edits_.push_back([this] {  // a child as the document element
        for (const InstanceNode& child : instance_.root.children) {
            if (child.kind != InstanceNode::Kind::Element) continue;
            instance_.root = InstanceNode{child};
            return true;
        }
        return false;
    });
    set(instance_.defaultNamespace, "");
}

void Shrinker::tryEdits(bool& progress)
{
    for (const Edit& edit : edits_) {
        const SchemaGraph::Saved saved = graph_.save();
        const Instance before = instance_;
        if (!edit()) continue;
        graph_.sync();
        if (interesting_()) {
            progress = true;
            continue;
        }
        graph_.restore(saved);
        instance_ = before;
    }
}

void Shrinker::run()
{
    // A cycle of records may look smaller for ever.
    bool progress = true;
    for (int round = 0; round < 30 && progress; ++round) {
        progress = false;
        edits_.clear();
        listDocument();
        listTypes();
        listGroups();
        listElements();
        listAttributes();
        tryEdits(progress);
    }
}

}  // namespace

void shrinkPair(SchemaGraph& graph, Instance& instance, const std::function<bool()>& interesting)
{
    Shrinker{graph, instance, interesting}.run();
}
