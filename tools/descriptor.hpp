// The owner of an open file.
#pragma once

#include <unistd.h>
#include <utility>

namespace netxml::tool {

class Descriptor {
public:
    explicit Descriptor(int number) : number_{number} {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (number_ >= 0) close(number_);
    }
    int get() const { return number_; }
    // Closes now; the result is close()'s.
    int closeNow() { return close(std::exchange(number_, -1)); }

private:
    int number_;
};

}  // namespace netxml::tool
