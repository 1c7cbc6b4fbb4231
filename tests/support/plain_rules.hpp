// The parts of the plain validator: names, values, and one run over a tree.
#pragma once

#include "netxml/netxml.h"

#include <set>
#include <string>
#include <vector>

namespace plain {

struct Violation {};     // thrown when one is recorded: the first one ends the run
struct BrokenSchema {};  // thrown when the schema cannot be used

inline bool equal(const char* a, const char* b)
{
    return XML_Strcmp(a, b) == 0;
}

// A record at the end of its references, and whether there were any.
template <typename Decl>
struct Followed {
    const Decl* decl;
    bool global;
};

template <typename Record>
Followed<Record> follow(const Record* record)
{
    if (!record) throw BrokenSchema{};
    std::set<const Record*> seen;
    bool global = false;
    for (; record->ref; record = record->ref) {
        if (!seen.insert(record).second) throw BrokenSchema{};
        global = true;
    }
    return {record, global};
}

// Whether an instance's namespace is within a constraint. A declaration's own namespace is a
// constraint without a target namespace.
bool namespaceMatches(const char* instance, const char* constraint, const char* targetNamespace);

// What elements and attributes are matched by.
class Names {
public:
    explicit Names(const Schema_Root& root) : root_{root} {}

    const Schema_ElementDecl* findElement(const XML_DOM_Node* element) const;
    const Schema_AttributeDecl* findAttribute(const char* name, const char* nameSpace) const;
    // The first top-level element that `element` matches and that names `head`, or NULL.
    const Schema_ElementDecl* findSubstitute(const XML_DOM_Node* element,
                                             const Schema_ElementDecl& head) const;
    // Whether the first top-level element that `element` matches names `head`.
    // By the name and namespace of a global declaration, whatever its form.
    bool isCalled(const XML_DOM_Node* element, const Schema_ElementDecl& decl) const;
    bool standsFor(const XML_DOM_Node* element, const Schema_ElementDecl& head) const;
    bool matches(const XML_DOM_Node* element, const Schema_ElementDecl& particle) const;
    bool accepts(const Schema_Wildcard& wildcard, const XML_DOM_Node* element) const;
    const char* expectedNamespace(const Followed<Schema_AttributeDecl>& attribute) const;

private:
    const Schema_Root& root_;
};

// Checks of single values; the sentence of the last failure is kept.
class Values {
public:
    bool check(const Schema_SimpleType* type, const char* value);
    bool checkFacets(const Schema_Facet* facets, uint32_t count, const char* value);
    bool checkFixed(const char* fixed, const char* value);
    bool checkLanguage(const char* value);
    const char* detail() const { return detail_; }

private:
    char detail_[512] = "";
    std::set<const Schema_SimpleType*> open_;
};

// One run over a tree.
class Run {
public:
    Run(const Schema_Root& root, Schema_ValidateResult& result) : names_{root}, result_{result} {}

    void document(const XML_DOM_Node* element);
    // `decl` is the end of its references.
    void checkElement(const XML_DOM_Node* element, const Schema_ElementDecl* decl);
    const Names& names() const { return names_; }

    [[noreturn]] void fail(Schema_ErrorCode code, const XML_DOM_Node* node);
    [[noreturn]] void failElement(Schema_ErrorCode code, const XML_DOM_Node* node, const char* name,
                                  const char* nameSpace = nullptr);

private:
    struct Attribute {
        const XML_DOM_Attr* handle;
        const char* name;
        const char* nameSpace;
        bool pending;
    };
    using Attributes = std::vector<Attribute>;

    void checkSimple(const XML_DOM_Node* element, const Schema_ElementDecl& decl);
    void checkComplex(const XML_DOM_Node* element, const Schema_ElementDecl& decl);
    void checkText(const XML_DOM_Node* element, const Schema_ElementDecl& decl);
    void checkContent(const XML_DOM_Node* element, const Schema_ComplexType& type,
                      class Content& content);
    [[noreturn]] void failValue(const XML_DOM_Node* element);

    static Attributes attributesOf(const XML_DOM_Node* element);
    void checkSimpleAttributes(const XML_DOM_Node* element);
    void checkComplexAttributes(const XML_DOM_Node* element, const Schema_ComplexType& type);
    void useType(const XML_DOM_Node* element, Attributes& all, const Schema_ComplexType& type);
    void useDerivation(const XML_DOM_Node* element, Attributes& all, const Schema_Derivation& from);
    void useGroups(const XML_DOM_Node* element, Attributes& all,
                   const Schema_AttributeGroup* const* groups, uint32_t count);
    void useScope(const XML_DOM_Node* element, Attributes& all,
                  const Schema_AttributeDecl* const* uses, uint32_t count,
                  const Schema_AttributeWildcard* wildcard);
    void useAttribute(const XML_DOM_Node* element, Attributes& all,
                      const Schema_AttributeDecl* record);
    void useWildcard(const XML_DOM_Node* element, Attributes& all,
                     const Schema_AttributeWildcard& wildcard);
    void applyAttribute(const XML_DOM_Node* element, Attribute& attribute,
                        const Schema_AttributeDecl& decl);
    [[noreturn]] void failAttribute(Schema_ErrorCode code, const XML_DOM_Node* element,
                                    const Attribute& attribute);

    Names names_;
    Values values_;
    Schema_ValidateResult& result_;
    std::vector<const Schema_AttributeGroup*> openGroups_;
};

// The children of one element against the content models of its type.
class Content {
public:
    Content(Run& run, const XML_DOM_Node* element);

    void match(const Schema_ModelGroup& top) { runGroup(top); }
    // The first child element that nothing has consumed.
    const XML_DOM_Node* child() const { return child_; }

private:
    static constexpr std::size_t kDeepest = 6;  // groups one in another

    struct Frame {
        const Schema_ModelGroup* group;
        uint32_t low;         // repetitions so far, at least
        uint32_t high;        // and at most
        bool emptiable;       // the group can match nothing
        uint32_t current;     // the particle that is run
        uint32_t required;    // of a sequence: the particles that are not emptiable
        bool othersOptional;  // of a sequence: every particle but the current one is emptiable
        bool added;           // of a sequence: a particle of this pass has added to `high`
        uint32_t passLow;     // of a sequence: `low` when this pass began
    };
    using Stack = std::vector<Frame>;
    struct Estimates {
        uint32_t fewest;
        uint32_t most;
    };

    static bool occurs(uint32_t count, uint32_t least, uint32_t most);
    static Estimates estimate(uint32_t count, uint32_t least, uint32_t most);
    static Estimates estimate(const Frame& frame);
    static void add(Frame& frame, Estimates estimates);
    static Frame grown(Frame frame, Estimates estimates);

    bool emptiable(const Schema_Object& particle, std::size_t level) const;
    bool emptiable(const Schema_ModelGroup& group, std::size_t level) const;
    bool canStart(const Schema_Object& particle, const XML_DOM_Node* child,
                  std::size_t level) const;
    bool canStart(const Schema_ModelGroup& group, const XML_DOM_Node* child,
                  std::size_t level) const;
    bool othersEmptiable(const Stack& stack, std::size_t at) const;
    bool complete(const Stack& stack) const;
    bool goesOn(uint32_t count, uint32_t least, uint32_t most, bool repeatable) const;

    void runParticle(const Schema_Object& particle, bool repeatable);
    void runElement(const Schema_ElementDecl& particle, bool repeatable);
    void runWildcard(const Schema_Wildcard& wildcard, bool repeatable);
    void runGroup(const Schema_ModelGroup& group);
    void runForbidden(const Schema_ModelGroup& group);
    void runChoice(const Schema_ModelGroup& group);
    void runSequence(const Schema_ModelGroup& group);
    void runPass(const Schema_ModelGroup& group);
    void runAll(const Schema_ModelGroup& group);
    void checkAll(const Schema_ModelGroup& group, const std::vector<uint32_t>& counters);
    int pick(Stack copy) const;
    void push(const Schema_ModelGroup& group);
    void handOn();

    Run& run_;
    const XML_DOM_Node* element_;
    const XML_DOM_Node* child_;
    Stack stack_;
    uint32_t lastCount_ = 0;
};

const XML_DOM_Node* elementFrom(const XML_DOM_Node* node);  // itself or the next that is one

}  // namespace plain
