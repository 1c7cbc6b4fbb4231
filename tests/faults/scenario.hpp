// What the failure harness runs: every exported function, in scenarios of a few calls each.
#pragma once

#include "netxml/netxml.h"

#include <functional>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// One call, or a few that belong together, on things of its own.
class Trial {
public:
    Trial() = default;
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;
    virtual ~Trial() = default;

    // Makes the calls. False when one of them has failed; what it returned then is checked here.
    virtual bool act() = 0;
    // All that was there before and that a failure must leave as it is.
    virtual std::string held() { return {}; }
    // What act() has come to, as text; releases what only that made.
    virtual std::string product() = 0;
    // Whether a run that met a fault and still succeeded may have come to `got`.
    virtual bool mayComeTo(const std::string& clean, const std::string& got) const
    {
        return clean == got;
    }
};

struct Scenario {
    const char* name;
    std::function<std::unique_ptr<Trial>()> make;
};

// For the reports of GoogleTest.
inline void PrintTo(const Scenario& scenario, std::ostream* out)
{
    *out << scenario.name;
}

template <class SomeTrial>
Scenario scenario(const char* name)
{
    return {name, [] { return std::make_unique<SomeTrial>(); }};
}

// The exported functions that were called so far, by name.
std::set<std::string>& calledFunctions();

template <class Function>
Function* noteCall(const char* name, Function* function)
{
    calledFunctions().insert(name);
    return function;
}

// Calls an exported function and remembers that.
#define NOTED(function) noteCall(#function, &function)

std::vector<Scenario> readingScenarios();
std::vector<Scenario> walkingScenarios();
std::vector<Scenario> editingScenarios();
std::vector<Scenario> copyingScenarios();
std::vector<Scenario> writingScenarios();
std::vector<Scenario> streamScenarios();
std::vector<Scenario> handlerScenarios();
std::vector<Scenario> valueScenarios();
std::vector<Scenario> schemaScenarios();

// All of them.
std::vector<Scenario> everyScenario();

// A tree with its declarations, attributes and every string, whatever it is made of.
std::string dump(const XML_DOM_Node* root);

// A block that the library handed out, as text; and it is released.
std::string taken(char* block, size_t length);
