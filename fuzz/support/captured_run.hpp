// A call with standard input from a text and the standard outputs into texts.
#pragma once

#include "fuzz/support/memory_file.hpp"

#include <functional>
#include <string>
#include <string_view>

struct Captured {
    int status = 0;
    std::string output;
    std::string errors;
};

Captured capturedRun(std::string_view input, const std::function<int()>& call);
