// A block of records that grows by doubling, for what is gathered and thrown away as a whole.
#pragma once

#include "support/heap.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace netxml {

template <class T>
class GrowBuffer {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    GrowBuffer() = default;
    // Starts in the caller's bytes, which must outlive the buffer.
    GrowBuffer(T* first, std::size_t capacity) noexcept
        : data_{first}, first_{first}, capacity_{capacity}
    {
    }
    GrowBuffer(const GrowBuffer&) = delete;
    GrowBuffer& operator=(const GrowBuffer&) = delete;
    ~GrowBuffer()
    {
        if (data_ != first_) heap::release(data_);
    }

    T* data() noexcept { return data_; }
    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    T& operator[](std::size_t index) noexcept { return data_[index]; }
    T& back() noexcept { return data_[size_ - 1]; }
    void pop() noexcept { --size_; }
    void clear() noexcept { size_ = 0; }

    // Makes room for `count` more; false when memory runs out, and nothing has changed then.
    bool reserve(std::size_t count) noexcept { return count <= capacity_ - size_ || grow(count); }
    bool push(const T& value) noexcept
    {
        if (!reserve(1)) return false;
        add(value);
        return true;
    }
    // Where there is room for it.
    void add(const T& value) noexcept { data_[size_++] = value; }
    // Counts what was written behind the last one, where room was made for it.
    void addCount(std::size_t count) noexcept { size_ += count; }
    bool append(const T* values, std::size_t count) noexcept
    {
        if (!reserve(count)) return false;
        if (count != 0) std::memcpy(data_ + size_, values, count * sizeof(T));
        size_ += count;
        return true;
    }

private:
    bool grow(std::size_t count) noexcept
    {
        constexpr std::size_t kMost = SIZE_MAX / 2 / sizeof(T);
        if (count > kMost - size_) return false;
        std::size_t capacity = capacity_ < 16 ? 16 : capacity_;
        while (capacity < size_ + count) capacity = capacity < kMost / 2 ? capacity * 2 : kMost;
        const bool inFirst = data_ == first_;
        T* data = static_cast<T*>(heap::resize(inFirst ? nullptr : data_, capacity * sizeof(T)));
        if (!data) return false;
        if (inFirst && size_ != 0) std::memcpy(data, data_, size_ * sizeof(T));
        data_ = data;
        capacity_ = capacity;
        return true;
    }

    T* data_ = nullptr;
    T* first_ = nullptr;  // the caller's
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// A buffer whose first records cost no heap.
template <class T, std::size_t kCount>
class InlineGrowBuffer : public GrowBuffer<T> {
public:
    InlineGrowBuffer() noexcept : GrowBuffer<T>{reinterpret_cast<T*>(first_), kCount} {}

private:
    alignas(T) char first_[kCount * sizeof(T)];
};

}  // namespace netxml
