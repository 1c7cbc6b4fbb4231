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
    GrowBuffer(const GrowBuffer&) = delete;
    GrowBuffer& operator=(const GrowBuffer&) = delete;
    ~GrowBuffer() { heap::release(data_); }

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
        data_[size_++] = value;
        return true;
    }
    // A place behind the last one, to be written and then counted by commit(); nullptr when memory
    // runs out.
    T* next() noexcept { return reserve(1) ? data_ + size_ : nullptr; }
    void commit() noexcept { ++size_; }
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
        T* data = static_cast<T*>(heap::resize(data_, capacity * sizeof(T)));
        if (!data) return false;
        data_ = data;
        capacity_ = capacity;
        return true;
    }

    T* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace netxml
