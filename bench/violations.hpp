// Small configurations that the schema must refuse, each for one reason.
#pragma once

#include <string>
#include <vector>

namespace netxml::bench {

struct Violation {
    const char* why;  // what was let pass, for the report
    std::string text;
};

std::vector<Violation> violations();

}  // namespace netxml::bench
