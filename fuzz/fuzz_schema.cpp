// Validation says what the plain rules say, for every schema and document that the bytes decode to:
// records of every kind that refer to one another at will, in cycles too, and documents that nearly
// fit. A second validation says the same again, and every result makes a sentence.
//
// The first eight bytes are a seed. The others make the choices of the random makers as long as
// they last; then the seed does.
#include "fuzz/support/fuzz_input.hpp"
#include "fuzz/support/require.hpp"
#include "tests/support/validation_pair.hpp"

namespace {

constexpr std::size_t kInputBound = 4096;

void requireSentence(const Schema_ValidateResult& result)
{
    char whole[4096] = "#";
    require(Schema_GetErrorDesc(&result, sizeof whole, whole) == XML_RET_OK,
            "every result makes a sentence");
    char cut[512] = "#";
    require(Schema_GetErrorDesc(&result, sizeof cut, cut) == XML_RET_OK, "also where it is cut");
    requireSame(cut, std::string_view{whole}.substr(0, sizeof cut - 1),
                "a short buffer has the begin of the sentence");
    require((result.code == 0) == (whole[0] == '#'), "a violation alone has a sentence");
}

void lookAgain(const XML_DOM_Node* element, const Schema_Root* root,
               const ValidationOutcome& outcome)
{
    if (outcome.status != XML_RET_OK) return;
    requireSentence(outcome.result);
    Schema_ValidateResult again{};
    require(Schema_ValidateXml(element, root, &again) == outcome.status &&
                again.code == outcome.result.code && again.node == outcome.result.node,
            "a second validation says the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BalancedHeap heap;
    if (size < 10 || size > kInputBound) return 0;
    FuzzInput input{data, size};
    std::uint64_t seed = 0;
    for (int i = 0; i < 8; ++i) seed = seed << 8 | input.byte();
    const std::size_t breaks = input.below(8);
    Random random{seed, input.restBytes()};
    ValidationPair pair{random};
    for (std::size_t i = 5; i < breaks; ++i) pair.breakOnce(random);
    if (!pair.agree(lookAgain)) {
        std::fprintf(stderr, "%s\n", pair.explain().c_str());
        require(false, "validation agrees with the plain rules");
    }
    return 0;
}
