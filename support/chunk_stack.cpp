#include "support/chunk_stack.hpp"

#include <cstring>

namespace netxml {

ChunkStack::~ChunkStack() noexcept
{
    dropTo(nullptr);
    heap::release(spare_);
}

char* ChunkStack::copyText(const std::uint8_t* text, std::size_t size) noexcept
{
    if (size > kLargest - 1) return nullptr;
    char* copy = static_cast<char*>(allocate(size + 1));
    if (!copy) return nullptr;
    if (size != 0) std::memcpy(copy, text, size);
    copy[size] = '\0';
    return copy;
}

bool ChunkStack::grow(std::size_t size) noexcept
{
    Chunk* chunk = spare_;
    if (chunk && chunk->size >= size) {
        spare_ = nullptr;
    } else {
        const std::size_t wanted = size < kChunkSize ? kChunkSize : size;
        chunk = static_cast<Chunk*>(heap::allocate(sizeof(Chunk) + wanted));
        if (!chunk) return false;
        chunk->size = wanted;
    }
    chunk->below = chunk_;
    enter(chunk);
    return true;
}

void ChunkStack::enter(Chunk* chunk) noexcept
{
    chunk_ = chunk;
    cursor_ = reinterpret_cast<char*>(chunk + 1);
    end_ = cursor_ + chunk->size;
}

// Leaves the cursor to the caller, who knows it from the mark.
void ChunkStack::dropTo(const Chunk* target) noexcept
{
    while (chunk_ != target) {
        Chunk* dropped = chunk_;
        chunk_ = dropped->below;
        if (!spare_ && dropped->size <= kChunkSize) spare_ = dropped;
        else heap::release(dropped);
    }
    if (chunk_) end_ = reinterpret_cast<char*>(chunk_ + 1) + chunk_->size;
    else end_ = firstEnd_;
}

}  // namespace netxml
