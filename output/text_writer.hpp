// Markup and strings of a tree written straight into the block of a memory stream.
//
// A string is copied in blocks while its end, and what has to be escaped or converted, is looked
// for. What is beyond ASCII goes through the stream's converter. Where that does not come out even,
// ok() is false, and what was written is worth nothing: the stream's own way judges it then.
#pragma once

#include "io/double_byte_cache.hpp"
#include "output/escape.hpp"
#include "output/out_stream.hpp"
#include "support/block_copy.hpp"

#include <cstring>

namespace netxml {

class TextWriter {
public:
    // `stream` converts ASCII into itself.
    explicit TextWriter(XML_IO_OutStream& stream) noexcept
        : stream_{stream}, memory_{*stream.target.memory}, converts_{stream.sourceEncoding !=
                                                                     stream.targetEncoding}
    {
    }
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;

    bool ok() const noexcept { return ok_; }
    // Counts in the stream what was written.
    void finish() noexcept
    {
        if (p_) memory_.commit(static_cast<std::size_t>(p_ - start_));
        p_ = end_ = nullptr;
    }

    template <std::size_t N>
    void markup(const char (&text)[N]) noexcept
    {
        static_assert(N - 1 <= kSpanSlack);
        if (!room()) return;
        std::memcpy(p_, text, N - 1);
        p_ += N - 1;
    }
    // A string as it is; `wide` says that whole blocks may be read from it.
    void string(const char* text, bool wide) noexcept
    {
        if (text) copy<false>(text, wide);
    }
    // A string with its escapes (see escape.hpp).
    void escaped(const char* text, bool wide) noexcept
    {
        if (isBorderBlank(*text)) entity(*text++);
        copy<true>(text, wide);
    }

private:
    using Byte = std::uint8_t;

    // Room for a block, and a little more.
    [[gnu::always_inline]] bool room() noexcept
    {
        return static_cast<std::size_t>(end_ - p_) >= 2 * kSpanSlack || grow();
    }
    bool grow() noexcept
    {
        finish();
        ok_ = ok_ && memory_.reserve(kArea);
        if (!ok_) return false;
        start_ = p_ = memory_.data + memory_.used;
        end_ = memory_.data + memory_.allocated;
        return true;
    }
    void entity(char c) noexcept
    {
        if (!room()) return;
        const std::string_view text = entityOf(static_cast<Byte>(c));
        std::memcpy(p_, text.data(), text.size());
        p_ += text.size();
    }

    template <bool kEscapes>
    static NativeBlock::Mask stops(const NativeBlock& block, bool converts) noexcept
    {
        NativeBlock::Mask mask = block.equal(0);
        if constexpr (kEscapes) mask |= block.equal('<') | block.equal('>') | block.equal('&');
        return converts ? mask | block.high() : mask;
    }
    template <bool kEscapes>
    static bool stopsAt(Byte byte, bool converts) noexcept
    {
        return byte == 0 || (converts && byte >= 0x80) ||
               (kEscapes && (byte == '<' || byte == '>' || byte == '&'));
    }

    // Copies up to the next stop, which is returned, or nullptr.
    template <bool kEscapes>
    [[gnu::always_inline]] const Byte* copyPlain(const Byte* s, const Byte* end) noexcept
    {
        for (;;) {
            if (!room()) return nullptr;
            if (end && static_cast<std::size_t>(end - s) < NativeBlock::kWidth) {
                while (!stopsAt<kEscapes>(*s, converts_)) *p_++ = static_cast<char>(*s++);
                return s;  // less than a block, which there is room for
            }
            const NativeBlock block = NativeBlock::load(s);
            std::memcpy(p_, s, NativeBlock::kWidth);
            const NativeBlock::Mask found = stops<kEscapes>(block, converts_);
            const std::size_t size = found ? NativeBlock::first(found) : NativeBlock::kWidth;
            p_ += size;
            s += size;
            if (found) return s;
        }
    }
    template <bool kEscapes>
    [[gnu::always_inline]] void copy(const char* text, bool wide) noexcept
    {
        const auto* s = reinterpret_cast<const Byte*>(text);
        const Byte* rest = s;  // behind the last escape
        const Byte* end = wide ? nullptr : s + std::strlen(text);
        while ((s = copyPlain<kEscapes>(s, end)) && *s != 0) {
            if (converts_ && *s >= 0x80) {
                s = convert<kEscapes>(s);
            } else {
                entity(static_cast<char>(*s++));
                rest = s;
            }
        }
        if (!kEscapes || !s || s == rest || !isBorderBlank(static_cast<char>(s[-1]))) return;
        --p_;
        entity(static_cast<char>(s[-1]));
    }
    // Converts what begins beyond ASCII and goes up to the next escape or the last blank.
    template <bool kEscapes>
    const Byte* convert(const Byte* s) noexcept
    {
        const Byte* stop = s;
        while (!stopsAt<kEscapes>(*stop, false)) ++stop;
        if (kEscapes && *stop == 0 && isBorderBlank(static_cast<char>(stop[-1]))) --stop;
        return converted_ < kWarmUp ? convertByStream(s, stop) : convertByCache(s, stop);
    }
    // `stop`, or nullptr when that does not come out even.
    const Byte* convertByStream(const Byte* s, const Byte* stop) noexcept;
    const Byte* convertByCache(const Byte* s, const Byte* stop) noexcept;

    // So much goes through the stream before the cache is worth filling.
    static constexpr std::size_t kWarmUp = std::size_t{16} * 1024;
    static constexpr std::size_t kArea = 1024;

    XML_IO_OutStream& stream_;
    MemoryBuffer& memory_;
    const bool converts_;
    bool ok_ = true;
    std::size_t converted_ = 0;  // bytes, by the stream
    DoubleByteCache cache_;
    char* start_ = nullptr;  // of what is not yet counted
    char* p_ = nullptr;
    char* end_ = nullptr;
};

}  // namespace netxml
