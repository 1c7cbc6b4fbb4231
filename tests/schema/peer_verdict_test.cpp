// Verdicts on content models beside those of a program that knows XML Schema: xmllint, of Debian's
// libxml2-utils. Where the rules agree on purpose there is no difference; where they do not, each
// row of the table in docs/validation.md shows it on both sides.
#include "tests/support/random.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <memory>

namespace {

// A content model that both sides are told: as records, and as a part of a schema document.
struct Model {
    char name = '\0';  // of an element; none for a group
    bool isChoice = false;
    uint32_t min = 1;
    uint32_t max = 1;
    std::vector<Model> particles;

    bool isEmptiable() const
    {
        if (min == 0) return true;
        if (name != '\0') return false;
        for (const Model& particle : particles) {
            if (particle.isEmptiable() == isChoice) return isChoice;
        }
        return !isChoice;
    }

    std::string notation() const
    {
        std::string text = name != '\0' ? std::string{name} : "(";
        for (const Model& particle : particles) {
            if (&particle != &particles.front()) text += isChoice ? '|' : ',';
            text += particle.notation();
        }
        if (name == '\0') text += ')';
        text += "{" + std::to_string(min) + ",";
        return text + (max == SCHEMA_UNBOUNDED ? "}" : std::to_string(max) + "}");
    }

    std::string schema() const
    {
        const std::string bounds = " minOccurs='" + std::to_string(min) + "' maxOccurs='" +
                                   (max == SCHEMA_UNBOUNDED ? "unbounded" : std::to_string(max)) +
                                   "'";
        if (name != '\0')
            return std::string{"<xs:element type='xs:anyType' name='"} + name + "'" + bounds + "/>";
        const std::string tag = isChoice ? "xs:choice" : "xs:sequence";
        std::string text = "<" + tag + bounds + ">";
        for (const Model& particle : particles) text += particle.schema();
        return text + "</" + tag + ">";
    }
};

// Reads "(a,b?)" as the table writes it.
class ModelReader {
public:
    explicit ModelReader(const std::string& text) : text_{text} {}

    Model read()
    {
        Model model;
        if (peek() != '(') {
            model.name = text_[at_++];
        } else {
            ++at_;
            while (peek() != ')') {
                model.particles.push_back(read());
                if (peek() == '|') model.isChoice = true;
                if (peek() != ')') ++at_;
            }
            ++at_;
        }
        bounds(model);
        return model;
    }

private:
    char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    void bounds(Model& model)
    {
        if (peek() == '?' || peek() == '*') model.min = 0;
        if (peek() == '*' || peek() == '+') model.max = SCHEMA_UNBOUNDED;
        if (peek() == '?' || peek() == '*' || peek() == '+') ++at_;
        if (peek() != '{') return;
        std::size_t used = 0;
        model.min = static_cast<uint32_t>(std::stoul(text_.substr(at_ + 1), &used));
        at_ += used + 2;
        model.max = SCHEMA_UNBOUNDED;
        if (peek() != '}') {
            model.max = static_cast<uint32_t>(std::stoul(text_.substr(at_), &used));
            at_ += used;
        }
        ++at_;
    }

    const std::string& text_;
    std::size_t at_ = 0;
};

// What docs/validation.md calls a plain model. `repeated`: a group around it repeats by it.
bool isPlain(const Model& model, bool repeated = false)
{
    repeated |= model.max > 1;
    std::size_t required = 0;
    bool emptiable = false;
    for (const Model& particle : model.particles) {
        required += particle.isEmptiable() ? 0 : 1;
        emptiable |= particle.isEmptiable();
    }
    // xmllint counts a choice of nothing differently when it must be made twice.
    if (model.isChoice && emptiable && model.min > 1) return false;
    for (const Model& particle : model.particles) {
        const bool isGroup = particle.name == '\0';
        const bool alone =
            model.isChoice || required == 0 || (required == 1 && !particle.isEmptiable());
        if (alone && particle.max > 1 && (model.isChoice || repeated || isGroup)) return false;
        if (isGroup && !isPlain(particle, alone && repeated)) return false;
    }
    return true;
}

class Generator {
public:
    explicit Generator(uint64_t seed) : random_{seed} {}

    Model model()
    {
        names_ = "abcdefghijk";
        for (std::size_t i = names_.size() - 1; i > 0; --i)
            std::swap(names_[i], names_[random_.below(i + 1)]);
        return group(0);
    }

    // Children that follow the model, often changed in one place.
    std::string childrenOf(const Model& model)
    {
        std::string children;
        follow(model, children);
        const std::size_t place = children.empty() ? 0 : random_.below(children.size());
        const char name = "abcdefghijk"[random_.below(11)];
        switch (random_.below(5)) {
        case 0:
            if (!children.empty()) children.erase(place, 1);
            break;
        case 1: children.insert(children.begin() + static_cast<long>(place), name); break;
        case 2:
            if (!children.empty()) children.push_back(children[place]);
            break;
        default: break;
        }
        return children;
    }

private:
    void bounds(Model& model)
    {
        constexpr uint32_t kBounds[][2] = {{1, 1},
                                           {1, 1},
                                           {1, 1},
                                           {0, 1},
                                           {0, 1},
                                           {1, 2},
                                           {2, 3},
                                           {0, SCHEMA_UNBOUNDED},
                                           {1, SCHEMA_UNBOUNDED}};
        const auto& chosen = kBounds[random_.below(std::size(kBounds))];
        model.min = chosen[0];
        model.max = chosen[1];
    }

    Model group(int depth)
    {
        Model model;
        model.isChoice = random_.below(2) == 0;
        bounds(model);
        const std::size_t count = 1 + random_.below(3);
        for (std::size_t i = 0; i < count && !names_.empty(); ++i) {
            if (depth < 2 && random_.below(3) == 0) {
                model.particles.push_back(group(depth + 1));
            } else {
                Model element;
                element.name = names_.back();
                names_.pop_back();
                bounds(element);
                model.particles.push_back(element);
            }
        }
        if (model.particles.empty()) model.min = 0;
        return model;
    }

    void follow(const Model& model, std::string& children)
    {
        const uint32_t extra = std::min<uint32_t>(model.max - model.min, 2);
        const std::size_t count = model.min + random_.below(extra + 1);
        for (std::size_t i = 0; i < count; ++i) {
            if (model.name != '\0') children += model.name;
            else if (model.isChoice && !model.particles.empty())
                follow(model.particles[random_.below(model.particles.size())], children);
            else
                for (const Model& particle : model.particles) follow(particle, children);
        }
    }

    Random random_;
    std::string names_;
};

std::string documentOf(const std::string& children)
{
    std::string document = "<r>";
    for (const char name : children) document += std::string{"<"} + name + "/>";
    return document + "</r>";
}

// The peer's verdicts on documents, in their order; none when it refuses the schema (which it does
// for models that are ambiguous).
std::vector<bool> peerVerdicts(const Model& model, const std::vector<std::string>& documents)
{
    const TempFile schema{"<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element "
                          "name='r'><xs:complexType>" +
                          model.schema() + "</xs:complexType></xs:element></xs:schema>"};
    std::vector<std::unique_ptr<TempFile>> files;
    std::string command = "xmllint --noout --schema " + std::string{schema.path()};
    for (const std::string& document : documents) {
        files.push_back(std::make_unique<TempFile>(document));
        command += std::string{" "} + files.back()->path();
    }
    FILE* output = popen((command + " 2>&1").c_str(), "r");
    std::string text;
    for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output)) text += static_cast<char>(c);
    const int status = pclose(output);
    EXPECT_NE(WEXITSTATUS(status), 127) << "xmllint is missing: apt-get install libxml2-utils";
    std::vector<bool> verdicts;
    if (text.find("failed to compile") != std::string::npos) return verdicts;
    for (const auto& file : files) {
        const std::string name = file->path();
        const bool valid = text.find(name + " validates") != std::string::npos;
        EXPECT_TRUE(valid || text.find(name + " fails to validate") != std::string::npos) << text;
        verdicts.push_back(valid);
    }
    return verdicts;
}

bool ownVerdict(const Model& model, const std::string& document)
{
    SchemaKit kit;
    kit.add(kit.element("r", kit.complexType(kit.model(model.notation()))));
    return kit.validate(document).code == SCHEMA_VALID;
}

TEST(PeerVerdict, IsTheSameOnPlainModels)
{
    const char* wanted = std::getenv("NETXML_TEST_MODELS");
    const std::size_t models = wanted ? std::strtoul(wanted, nullptr, 10) : 500;
    Generator generator{20260911};
    std::size_t compared = 0;
    std::size_t valid = 0;
    for (std::size_t done = 0; done < models;) {
        const Model model = generator.model();
        if (!isPlain(model)) continue;
        std::vector<std::string> documents;
        for (int i = 0; i < 12; ++i) documents.push_back(documentOf(generator.childrenOf(model)));
        const std::vector<bool> peer = peerVerdicts(model, documents);
        if (testing::Test::HasFailure()) return;
        if (peer.empty()) continue;
        ++done;
        for (std::size_t i = 0; i < documents.size(); ++i) {
            ASSERT_EQ(ownVerdict(model, documents[i]), peer[i])
                << model.notation() << " <- " << documents[i];
            ++compared;
            valid += peer[i];
        }
    }
    std::printf("%zu verdicts compared, %zu valid\n", compared, valid);
    EXPECT_GT(valid, compared / 5) << "too few valid ones to say much";
    EXPECT_LT(valid, compared) << "too few invalid ones to say much";
}

// "| `model` | `children` | accepts | refuses |": what XML Schema says, and what netxml says.
TEST(PeerVerdict, DiffersAsTheTableSays)
{
    std::ifstream page{NETXML_SOURCE_DIR "/docs/validation.md"};
    ASSERT_TRUE(page.is_open());
    std::size_t rows = 0;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("| `(", 0) != 0) continue;
        std::vector<std::string> cells;
        for (std::size_t at = 1; at < line.size();) {
            const std::size_t end = line.find(" |", at);
            cells.push_back(line.substr(at + 1, end - at - 1));
            at = end + 2;
        }
        ASSERT_GE(cells.size(), 4u) << line;
        const auto unquoted = [](const std::string& cell) {
            std::string text = cell.substr(1, cell.size() - 2);
            for (std::size_t at = text.find("\\|"); at != std::string::npos; at = text.find("\\|"))
                text.erase(at, 1);
            return text;
        };
        const std::string notation = unquoted(cells[0]);
        std::string children = unquoted(cells[1]);
        std::erase(children, ' ');
        const Model model = ModelReader{notation}.read();
        const std::vector<bool> peer = peerVerdicts(model, {documentOf(children)});
        ASSERT_EQ(peer.size(), 1u) << line;
        const auto word = [](bool accepted) { return accepted ? "accepts" : "refuses"; };
        EXPECT_EQ(cells[2], word(peer[0])) << line;
        EXPECT_EQ(cells[3], word(ownVerdict(model, documentOf(children)))) << line;
        ++rows;
    }
    EXPECT_GE(rows, 8u);
}

}  // namespace
