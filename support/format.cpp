#include "support/format.hpp"

#include <cstring>

namespace netxml {
namespace {

class Writer {
public:
    Writer(char* to, std::size_t room) noexcept : to_{to}, room_{room} {}

    void put(const char* text, std::size_t limit) noexcept
    {
        const std::size_t size = strnlen(text, limit < room_ ? limit : room_);
        std::memcpy(to_, text, size);
        to_ += size;
        room_ -= size;
    }
    char* end() const noexcept { return to_; }

private:
    char* to_;
    std::size_t room_;
};

}  // namespace

std::size_t formatTexts(char* to, std::size_t size, const char* form,
                        std::initializer_list<FormatText> texts) noexcept
{
    if (!to || size == 0) return 0;
    Writer writer{to, size - 1};
    for (const FormatText& text : texts) {
        const char* place = std::strstr(form, "%s");
        if (!place) break;
        writer.put(form, static_cast<std::size_t>(place - form));
        writer.put(text.text, text.limit);
        form = place + 2;
    }
    writer.put(form, static_cast<std::size_t>(-1));
    *writer.end() = '\0';
    return static_cast<std::size_t>(writer.end() - to);
}

}  // namespace netxml
