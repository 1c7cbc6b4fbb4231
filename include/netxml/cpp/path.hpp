/**
 * @file
 * Elements by their path. Nothing here is for users: see BasicElement::find().
 */
#ifndef NETXML_CPP_PATH_HPP
#define NETXML_CPP_PATH_HPP

#include "netxml/cpp/range.hpp"
#include "netxml/parser.h"

#include <vector>

namespace netxml {
inline namespace face {
namespace detail {

// The steps of a path, and the walk over what they lead to, in the order of the document.
class Path {
public:
    // Reads "name[2]/name", or the same behind a "/".
    static Result<Path> read(std::string_view text)
    {
        Path path;
        std::string_view left = text;
        if (!left.empty() && left.front() == '/') {
            path.absolute_ = true;
            left.remove_prefix(1);
        }
        for (;;) {
            const std::size_t end = left.find('/');
            if (!path.add(end == std::string_view::npos ? left
                                                        : std::string_view{left.data(), end}))
                return failure(ErrorKind::Argument, '"' + std::string{text} + "\" is no path");
            if (end == std::string_view::npos) return path;
            left.remove_prefix(end + 1);
        }
    }

    // Calls `found` with each element at the path, from `start` or from its root, until that
    // returns false. Nothing is changed: the elements come back as what the caller may do with
    // them.
    template <class Found>
    void walk(XML_DOM_Node* start, Found&& found) const
    {
        std::size_t depth = 0;
        XML_DOM_Node* node = nullptr;
        if (absolute_) {
            while (XML_DOM_Node* above = XML_DOM_GetNodeParent(start)) start = above;
            if (start && !matchesTop(start)) return;
            if (steps_.size() == 1) return static_cast<void>(found(start));
            depth = 1;
        }
        const std::size_t first = depth;
        node = match(XML_DOM_GetFirstChild(start), steps_[depth], 0);
        for (;;) {
            if (!node) {  // nothing more at this depth: on beside what lies above
                if (depth == first) return;
                --depth;
                node = current_[depth];
            } else if (depth + 1 < steps_.size()) {
                current_.resize(steps_.size());
                current_[depth++] = node;
                node = match(XML_DOM_GetFirstChild(node), steps_[depth], 0);
                continue;
            } else if (!found(node)) {
                return;
            }
            // A step with a position has one match for each parent.
            node = steps_[depth].position != 0
                       ? nullptr
                       : match(XML_DOM_GetNextSibling(node), steps_[depth], 0);
        }
    }

private:
    struct Step {
        std::string name;
        std::size_t position;  // 0 is all of that name
    };

    bool add(std::string_view step)
    {
        std::size_t position = 0;
        const std::size_t open = step.find('[');
        if (open != std::string_view::npos) {
            if (step.back() != ']' || open + 2 >= step.size() || step[open + 1] == '0')
                return false;
            for (std::size_t at = open + 1; at + 1 < step.size(); ++at) {
                if (step[at] < '0' || step[at] > '9' || position > SIZE_MAX / 10 - 10) return false;
                position = position * 10 + static_cast<std::size_t>(step[at] - '0');
            }
            step = {step.data(), open};
        }
        const TreeText name{step};
        if (!name || XML_CheckQName(name.text()) != XML_RET_OK) return false;
        steps_.push_back({name.text(), position});
        return true;
    }
    bool matchesTop(const XML_DOM_Node* top) const noexcept
    {
        const char* name = XML_DOM_GetNodeName(top);
        return name && steps_[0].name == name && steps_[0].position <= 1;
    }
    static XML_DOM_Node* match(XML_DOM_Node* node, const Step& step, std::size_t count) noexcept
    {
        for (node = namedFrom(node, step.name.c_str()); node;
             node = namedFrom(XML_DOM_GetNextSibling(node), step.name.c_str())) {
            if (step.position == 0 || ++count == step.position) return node;
        }
        return nullptr;
    }

    std::vector<Step> steps_;
    mutable std::vector<XML_DOM_Node*> current_;  // what each step above stands at
    bool absolute_ = false;
};

}  // namespace detail
}  // namespace face
}  // namespace netxml

#endif
