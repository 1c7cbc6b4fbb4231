#include "violations.hpp"

#include "documents.hpp"
#include "tally.hpp"

namespace netxml::bench {
namespace {

struct Change {
    const char* why;
    std::string_view found;
    std::string_view replacement;
};

// clang-format off
constexpr Change kChanges[] = {
    {"a name against the pattern passes",     "<name>Gigabit",            "<name>gigabit"},
    {"a name with more behind it passes",     "</name>",                  "x</name>"},
    {"a description too long passes",         "<description>",
     "<description>longer than sixty-four characters are: "},
    {"a boolean that is none passes",         "<enabled>true",            "<enabled>maybe"},
    {"a number above the range passes",       "<mtu>",                    "<mtu>6"},
    {"a number that is none passes",          "<vlan>",                   "<vlan>x"},
    {"an address against the pattern passes", "<ip>10.",                  "<ip>10"},
    {"a mask out of the enumeration passes",  "<netmask>255.255.255.0",
     "<netmask>255.255.255.1"},
    {"a missing element passes",              "<enabled>true</enabled>",  ""},
    {"an unknown element passes",             "</address>",
     "</address><mtu>1500</mtu>"},
    {"an element out of its order passes",    "<interface>",
     "<interface><vlan>1</vlan>"},
    {"an unknown attribute passes",           "<interface>",
     "<interface speed=\"1\">"},
    {"text between elements passes",          "<interface>",              "<interface>up"},
};
// clang-format on

}  // namespace

std::vector<Violation> violations()
{
    const std::string valid = makeDocument("config-12k-compact").text;
    std::vector<Violation> made;
    for (const Change& change : kChanges) {
        std::string text = valid;
        const std::size_t at = text.rfind(change.found);
        require(at != std::string::npos, change.why);
        text.replace(at, change.found.size(), change.replacement);
        made.push_back({change.why, std::move(text)});
    }
    return made;
}

}  // namespace netxml::bench
