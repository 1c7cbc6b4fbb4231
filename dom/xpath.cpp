// The location path of a node.
#include "dom/node.hpp"

#include <cstring>

namespace netxml {
namespace {

// One step, "/name" or "/name[position]", as three pieces.
struct Step {
    std::size_t nameSize;
    char digits[24];  // "[", the position and "]"; empty for the top
    std::size_t digitsSize;

    std::size_t size() const noexcept { return 1 + nameSize + digitsSize; }
};

void writePosition(Step& step, std::size_t position) noexcept
{
    char reversed[24];
    std::size_t count = 0;
    do {
        reversed[count++] = static_cast<char>('0' + position % 10);
        position /= 10;
    } while (position != 0);
    char* out = step.digits;
    *out++ = '[';
    while (count != 0) *out++ = reversed[--count];
    *out++ = ']';
    step.digitsSize = static_cast<std::size_t>(out - step.digits);
}

// Counts among the siblings of the same name; the top of a tree has no position.
Step stepOf(const XML_DOM_Node* node) noexcept
{
    Step step{};
    step.nameSize = std::strlen(node->name);
    if (!node->parent) return step;
    std::size_t position = 1;
    for (const XML_DOM_Node* s = node->parent->firstChild; s && s != node; s = s->nextSibling) {
        if (s->name && std::strcmp(s->name, node->name) == 0) ++position;
    }
    writePosition(step, position);
    return step;
}

// A buffer that takes pieces at any place and ignores what lies beyond its end.
class PathBuffer {
public:
    PathBuffer(char* buffer, std::size_t room) noexcept : buffer_{buffer}, room_{room} {}

    void put(std::size_t at, const char* text, std::size_t size) noexcept
    {
        if (at >= room_) return;
        std::memcpy(buffer_ + at, text, size < room_ - at ? size : room_ - at);
    }

private:
    char* buffer_;
    std::size_t room_;
};

}  // namespace
}  // namespace netxml

// Goes up twice, to measure and to write from the end to the front: no memory, whatever the depth.
size_t XML_DOM_GetXPath(const XML_DOM_Node* node, size_t size, char* buffer)
{
    using namespace netxml;
    if (!node || !buffer || size == 0) return 0;
    std::size_t end = 0;
    for (const XML_DOM_Node* n = node; n; n = n->parent) {
        if (n->name) end += stepOf(n).size();
    }
    const std::size_t stored = end < size ? end : size - 1;
    PathBuffer path{buffer, stored};
    for (const XML_DOM_Node* n = node; n; n = n->parent) {
        if (!n->name) continue;
        const Step step = stepOf(n);
        end -= step.size();
        path.put(end, "/", 1);
        path.put(end + 1, n->name, step.nameSize);
        path.put(end + 1 + step.nameSize, step.digits, step.digitsSize);
    }
    buffer[stored] = '\0';
    return stored;
}
