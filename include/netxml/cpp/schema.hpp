/**
 * @file
 * Schemas: registered for as long as an object lives.
 */
#ifndef NETXML_CPP_SCHEMA_HPP
#define NETXML_CPP_SCHEMA_HPP

#include "netxml/cpp/document.hpp"
#include "netxml/schema.h"

#include <initializer_list>

namespace netxml {
inline namespace face {

/** What a validation found first. It owns its texts, which are UTF-8; a tree has no lines. */
struct [[nodiscard]] Verdict {
    Schema_ErrorCode code = SCHEMA_VALID; /**< 0, or the number of the violation (schema.h) */
    std::string sentence;                 /**< what is wrong, with the path; empty if valid */
    std::string path;                     /**< of what is wrong; for codes 1, 5, 8 of its parent */
    std::string element;                  /**< codes 1, 5, 7: of which element, or empty */
    std::string attribute;                /**< codes 2, 4, 7: of which attribute, or empty */
    std::string detail;                   /**< codes 3 and 4: what is wrong with the value */
    ConstNode node;                       /**< what `path` leads to; ends with the tree */

    /** Whether nothing is wrong. */
    bool valid() const noexcept { return code == SCHEMA_VALID; }
};

/**
 * A schema, registered while it lives. It can be moved but not copied.
 *
 * The records must live as long. Threads: any number may validate against one schema. The first
 * schema of a program must be registered, and whatever has network types registered and
 * deregistered, while no other thread validates (schema.h).
 */
class Schema {
public:
    /** A function that registers all of a schema, such as `netxml schema compile` writes. */
    using Register = uint32_t (*)(Schema_Root*);
    /** Its counterpart. */
    using Deregister = void (*)(Schema_Root*);

    /**
     * Registers what `registerAll` registers, and `deregisterAll` takes out in the end:
     * `Schema::of(config_schema_register, config_schema_deregister)`.
     */
    static Result<Schema> of(Register registerAll, Deregister deregisterAll)
    {
        Schema schema;
        if (!schema.begin() || registerAll(&schema.state_->root) != XML_RET_OK) return refused();
        schema.state_->deregisterAll = deregisterAll;
        return schema;
    }
    /** Registers top-level declarations, in this order. */
    static Result<Schema> of(std::initializer_list<Schema_Object> objects)
    {
        Schema schema;
        if (!schema.begin()) return refused();
        schema.state_->objects.reserve(objects.size());
        for (const Schema_Object& object : objects) {
            if (Schema_RegTopObject(&schema.state_->root, &object) != XML_RET_OK) return refused();
            schema.state_->objects.push_back(object);
        }
        return schema;
    }

    /** Validates a document. ErrorKind::Schema if the schema is broken, or memory ran out. */
    Result<Verdict> validate(const Document& document) const { return validate(document.root()); }
    /** The same for a temporary document: the verdict has no `node`, which would end with it. */
    Result<Verdict> validate(Document&& document) const
    {
        Result<Verdict> verdict = validate(document);
        if (verdict) verdict->node = {};
        return verdict;
    }
    /** Validates an element as if it were a document's root. */
    Result<Verdict> validate(ConstElement element) const
    {
        if (!element) return detail::emptyHandle();
        if (!state_) return detail::failure(ErrorKind::Misuse, "the schema was moved away");
        Schema_ValidateResult result;
        if (Schema_ValidateXml(element.raw(), &state_->root, &result) != XML_RET_OK)
            return detail::failure(ErrorKind::Schema, "the schema is broken, or memory ran out");
        return verdict(result);
    }

    /** The root of the C functions; NULL if the schema was moved away. */
    Schema_Root* raw() const noexcept { return state_ ? &state_->root : nullptr; }

private:
    // It keeps its place when the schema is moved.
    struct State {
        Schema_Root root{};
        Deregister deregisterAll = nullptr;
        std::vector<Schema_Object> objects;
    };
    struct End {
        void operator()(State* state) const
        {
            if (state->deregisterAll) state->deregisterAll(&state->root);
            for (const Schema_Object& object : state->objects)
                Schema_DeregTopObject(&state->root, &object);
            Schema_ExitRoot(&state->root);
            delete state;
        }
    };

    Schema() = default;
    bool begin()
    {
        state_.reset(new State);
        return Schema_InitRoot(&state_->root) == XML_RET_OK;
    }
    static Error refused()
    {
        return detail::failure(ErrorKind::Schema,
                               "the schema cannot be registered: a record is of no top-level kind, "
                               "its network types belong to another schema, or memory ran out");
    }
    static std::string text(const char* text) { return Text::fromTree(text).str(); }
    static Verdict verdict(const Schema_ValidateResult& result)
    {
        Verdict verdict;
        verdict.code = result.code;
        if (verdict.valid()) return verdict;
        char sentence[4096] = "";
        static_cast<void>(Schema_GetErrorDesc(&result, sizeof sentence, sentence));
        verdict.sentence = detail::fromCutText(sentence);
        verdict.node = ConstNode{result.node};
        verdict.path = verdict.node.path();
        verdict.element = text(result.elementName);
        verdict.attribute = text(result.attrName);
        verdict.detail = detail::fromCutText(result.detail);
        return verdict;
    }

    std::unique_ptr<State, End> state_;
};

}  // namespace face
}  // namespace netxml

#endif
