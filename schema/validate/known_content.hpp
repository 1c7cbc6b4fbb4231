// How content was matched so far in a run: what each child led to, by its name and namespace.
//
// Which declaration a child belongs to depends on the model and on the children before it, and on
// nothing else. So what was matched once needs no matching again: from the state that the same
// children have led to, the same next child leads to the same declaration and state.
#pragma once

#include "schema/validate/element_facts.hpp"
#include "schema/validate/subject.hpp"
#include "support/chunk_stack.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {

// Namespaces by address: texts that are the same get the address of the first, so that comparing
// them takes no time. Beyond a few different ones each address stands for itself, which makes what
// is known by it be learnt again.
class NamespaceNames {
public:
    // nullptr for none, and for the empty one.
    const char* idOf(const char* name) noexcept
    {
        if (name == asked_) return id_;
        asked_ = name;
        id_ = name && *name != '\0' ? find(name) : nullptr;
        return id_;
    }

private:
    static constexpr std::size_t kInline = 32;
    static constexpr std::size_t kMostTexts = 16;

    const char* find(const char* name) noexcept;

    const char* asked_ = nullptr;
    const char* id_ = nullptr;
    PointerMap<const char*, kInline> ids_;
    const char* texts_[kMostTexts] = {};
    std::size_t textCount_ = 0;
};

// A name that others are compared with. Those with room behind them are compared in two words.
class KnownName {
public:
    explicit KnownName(const char* name) noexcept : name_{name}
    {
        char bytes[sizeof words_] = {};
        char mask[sizeof words_] = {};
        const std::size_t size = std::strlen(name) + 1;
        isShort_ = size <= sizeof words_;
        if (isShort_) {
            std::memcpy(bytes, name, size);
            std::memset(mask, -1, size);
        }
        std::memcpy(words_, bytes, sizeof words_);
        std::memcpy(masks_, mask, sizeof words_);
    }

    // `wide`: as many bytes as these words may be read.
    bool is(const char* name, bool wide) const noexcept
    {
        if (!wide || !isShort_) return std::strcmp(name, name_) == 0;
        std::uint64_t words[2];
        std::memcpy(words, name, sizeof words);
        return (((words[0] ^ words_[0]) & masks_[0]) | ((words[1] ^ words_[1]) & masks_[1])) == 0;
    }

private:
    static_assert(2 * sizeof(std::uint64_t) <= kSpanSlack);

    const char* name_;
    std::uint64_t words_[2];
    std::uint64_t masks_[2];  // of the bytes that count, the NUL among them
    bool isShort_;
};

// What the next child leads to.
struct ContentStep {
    ContentStep* other;  // from the same state
    KnownName name;
    const char* namespaceId;
    const ElementFacts* wanted;  // by which it is checked; nullptr: it is not
    ContentState* next;          // nullptr: the content has ended before this child
};

struct ContentState {
    ContentStep* steps;
    unsigned stepCount;
    bool mayEnd;  // with no child left

    bool isNew() const noexcept { return !steps && !mayEnd; }

    // The step of a child, or nullptr. `wide`: two words of its name may be read.
    const ContentStep* find(const char* name, bool wide, const char* namespaceId) const noexcept
    {
        const ContentStep* step = steps;
        while (step && (step->namespaceId != namespaceId || !step->name.is(name, wide)))
            step = step->other;
        return step;
    }
};

class KnownContent {
public:
    // States and steps lie in `kept`, which must not be released while they are used. The names are
    // those of the document.
    explicit KnownContent(ChunkStack& kept) noexcept : kept_{kept} {}

    // The state before the first child; nullptr when there is no room.
    ContentState* begin(ModelMemory& memory) noexcept
    {
        if (!memory.first) memory.first = newState(memory);
        return memory.first;
    }

    const ContentStep* find(const ContentState& at, const Subject& child, bool wide) noexcept
    {
        return at.find(child.name(), wide, names_.idOf(child.namespaceName));
    }

    // Notes that from a state the child was taken for `wanted`, and gives the state behind it:
    // `next`, or a new one where that is nullptr. nullptr when there is no room.
    ContentState* learn(ModelMemory& memory, ContentState& at, const Subject& child,
                        const ElementFacts* wanted, ContentState* next) noexcept;

    // Notes that the content ends in a state: with no child left, or before the child.
    void learnEnd(ContentState& at, const Subject& child) noexcept;

private:
    static constexpr unsigned kMostSteps = 16;     // from a state
    static constexpr unsigned kModelStates = 64;   // of a model
    static constexpr unsigned kMostStates = 1024;  // in all

    ContentState* newState(ModelMemory& memory) noexcept;
    bool add(ContentState& at, const Subject& child, const ElementFacts* wanted,
             ContentState* next) noexcept;

    ChunkStack& kept_;
    NamespaceNames names_;
    unsigned stateCount_ = 0;
};

}  // namespace netxml
