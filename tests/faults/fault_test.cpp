// Makes the n-th call of each kind fail, once and from there on, for every n, in scenarios that
// call every exported function: the documented failure comes back, nothing leaks, what was there is
// unchanged, and the same call works afterwards.
#include "tests/faults/call_faults.hpp"
#include "tests/faults/scenario.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <fstream>

namespace {

// A storm of signals ends, or nothing would ever be read; everything else may stay as it is.
// clang-format off
constexpr FaultPlan kPlans[] = {
    {"an allocation fails once",              Call::Allocation,    Fault::Error,       1},
    {"allocations fail from there on",        Call::Allocation,    Fault::Error,       kFromThereOn},
    {"a converter does not open",             Call::ConverterOpen, Fault::Error,       1},
    {"no converter opens from there on",      Call::ConverterOpen, Fault::Error,       kFromThereOn},
    {"a conversion fails",                    Call::Convert,       Fault::Error,       1},
    {"conversions fail from there on",        Call::Convert,       Fault::Error,       kFromThereOn},
    {"a pattern finds no memory",             Call::Compile,       Fault::Error,       1},
    {"patterns find no memory from there on", Call::Compile,       Fault::Error,       kFromThereOn},
    {"a match finds no memory",               Call::Match,         Fault::Error,       1},
    {"matches find no memory from there on",  Call::Match,         Fault::Error,       kFromThereOn},
    {"a file does not open",                  Call::Open,          Fault::Error,       1},
    {"no file opens from there on",           Call::Open,          Fault::Error,       kFromThereOn},
    {"a file does not tell its kind",         Call::Status,        Fault::Error,       1},
    {"no file tells its kind",                Call::Status,        Fault::Error,       kFromThereOn},
    {"a read fails",                          Call::Read,          Fault::Error,       1},
    {"reads fail from there on",              Call::Read,          Fault::Error,       kFromThereOn},
    {"a read brings one byte",                Call::Read,          Fault::Short,       1},
    {"reads bring one byte from there on",    Call::Read,          Fault::Short,       kFromThereOn},
    {"a read is interrupted",                 Call::Read,          Fault::Interrupted, 1},
    {"a read is interrupted often",           Call::Read,          Fault::Interrupted, 100},
    {"a write fails",                         Call::Write,         Fault::Error,       1},
    {"writes fail from there on",             Call::Write,         Fault::Error,       kFromThereOn},
    {"a write takes one byte",                Call::Write,         Fault::Short,       1},
    {"writes take one byte from there on",    Call::Write,         Fault::Short,       kFromThereOn},
    {"a write takes nothing",                 Call::Write,         Fault::Nothing,     1},
    {"writes take nothing from there on",     Call::Write,         Fault::Nothing,     kFromThereOn},
    {"a write is interrupted",                Call::Write,         Fault::Interrupted, 1},
    {"a write is interrupted often",          Call::Write,         Fault::Interrupted, 100},
    {"a file is not committed",               Call::Sync,          Fault::Error,       1},
    {"no file is committed",                  Call::Sync,          Fault::Error,       kFromThereOn},
};
// clang-format on

// What was done in all, printed at the end.
struct Totals {
    std::size_t scenarios = 0;
    std::size_t runs = 0;      // with at least one call that failed
    std::size_t injected = 0;  // calls that failed
    std::size_t refused = 0;   // runs that reported it; the others did without
};

struct Clean {
    std::string product;
    std::size_t calls[kCalls];
};

// A run without faults: it succeeds, and shows which calls there are to fail.
Clean cleanRun(const Scenario& scenario)
{
    Clean clean{};
    const Holdings before = Holdings::now();
    {
        const auto trial = scenario.make();
        for (std::size_t i = 0; i < kCalls; ++i) clean.calls[i] = callsMade(static_cast<Call>(i));
        {
            // Allowed is everything: this one only counts.
            const FaultPlan plan{"", Call::Allocation, Fault::Error, 1};
            const FaultInjection none{plan, kFromThereOn};
            EXPECT_TRUE(trial->act()) << "without any fault";
        }
        for (std::size_t i = 0; i < kCalls; ++i)
            clean.calls[i] = callsMade(static_cast<Call>(i)) - clean.calls[i];
        clean.product = trial->product();
    }
    EXPECT_EQ(Holdings::now(), before) << Holdings::now().text();
    return clean;
}

// One run with a fault at the n-th call; false when there was no such call any more.
bool runWithFault(const Scenario& scenario, const FaultPlan& plan, std::size_t n,
                  const std::string& clean, Totals& totals)
{
    const Holdings outside = Holdings::now();
    bool met = false;
    {
        const auto trial = scenario.make();
        const std::string held = trial->held();
        const Holdings before = Holdings::now();
        bool done = false;
        {
            const FaultInjection fault{plan, n};
            done = trial->act();
            met = FaultInjection::injected() != 0;
            totals.injected += FaultInjection::injected();
        }
        if (done) {
            const std::string product = trial->product();
            EXPECT_TRUE(met ? trial->mayComeTo(clean, product) : product == clean) << product;
        } else {
            EXPECT_TRUE(met) << "fails without a reason";
            EXPECT_EQ(trial->held(), held) << "what was there is changed";
            EXPECT_EQ(Holdings::now(), before)
                << Holdings::now().text() << " instead of " << before.text();
            EXPECT_TRUE(trial->act()) << "does not work afterwards";
            EXPECT_EQ(trial->product(), clean);
        }
        totals.runs += met;
        totals.refused += met && !done;
    }
    EXPECT_EQ(Holdings::now(), outside)
        << Holdings::now().text() << " instead of " << outside.text();
    return met;
}

Totals& totals()
{
    static Totals all;
    return all;
}

// Failed expectations of the running test.
int results()
{
    return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

class Faults : public testing::TestWithParam<Scenario> {};

TEST_P(Faults, DoNoHarm)
{
    const Scenario& scenario = GetParam();
    Totals here;
    const Clean clean = cleanRun(scenario);
    for (const FaultPlan& plan : kPlans) {
        SCOPED_TRACE(plan.name);
        for (std::size_t n = 0;; ++n) {
            SCOPED_TRACE("after " + std::to_string(n));
            const int resultsBefore = results();
            if (!runWithFault(scenario, plan, n, clean.product, here)) {
                EXPECT_GE(n, clean.calls[static_cast<std::size_t>(plan.call)])
                    << "a call of a clean run was not reached";
                break;
            }
            if (results() != resultsBefore) break;  // the rest of this plan would say the same
        }
    }
    std::printf("%s: %zu runs, %zu calls failed, %zu reported it\n", scenario.name, here.runs,
                here.injected, here.refused);
    Totals& all = totals();
    ++all.scenarios;
    all.runs += here.runs;
    all.injected += here.injected;
    all.refused += here.refused;
}

std::string testName(const testing::TestParamInfo<Scenario>& info)
{
    std::string name = info.param.name;
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(AnyCall, Faults, testing::ValuesIn(everyScenario()), testName);

// The figures of the whole run.
class PrintTotals : public testing::Environment {
public:
    void TearDown() override
    {
        const Totals& all = totals();
        std::printf("%zu scenarios, %zu runs with faults, %zu calls failed, %zu runs reported it\n",
                    all.scenarios, all.runs, all.injected, all.refused);
        testing::Test::RecordProperty("scenarios", std::to_string(all.scenarios));
        testing::Test::RecordProperty("runs_with_faults", std::to_string(all.runs));
        testing::Test::RecordProperty("injected_failures", std::to_string(all.injected));
    }
};

const testing::Environment* const kPrintTotals = testing::AddGlobalTestEnvironment(new PrintTotals);

// The names between "global:" and "local:" in the linker's list.
std::set<std::string> exportedFunctions()
{
    std::ifstream map{NETXML_EXPORTS};
    EXPECT_TRUE(map.is_open()) << NETXML_EXPORTS;
    std::set<std::string> names;
    bool global = false;
    for (std::string line; std::getline(map, line);) {
        if (line == "global:") global = true;
        else if (line == "local:") global = false;
        else if (global) names.insert(line.substr(4, line.size() - 5));
    }
    return names;
}

TEST(FaultScenarios, EveryExportedFunctionIsCalled)
{
    for (const Scenario& scenario : everyScenario()) cleanRun(scenario);
    const std::set<std::string> exported = exportedFunctions();
    EXPECT_GT(exported.size(), 100u);
    for (const std::string& name : exported)
        EXPECT_EQ(calledFunctions().count(name), 1u) << name << " is in no scenario";
    for (const std::string& name : calledFunctions())
        EXPECT_EQ(exported.count(name), 1u) << name << " is not exported";
    std::printf("%zu exported functions\n", exported.size());
}

}  // namespace
