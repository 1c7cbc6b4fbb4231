// The initializer of a record in generated code.
#pragma once

#include <cstddef>
#include <string>

namespace netxml::xsd {

// The fields of a record, in lines.
class RecordFields {
public:
    RecordFields& add(const std::string& field)
    {
        const std::string text = field + ",";
        if (line_.size() + text.size() + 3 > kLongestLine) flush();
        line_ += (line_.empty() ? "    " : " ") + text;
        return *this;
    }
    std::string finish()
    {
        flush();
        // No comma behind the last one.
        text_.erase(text_.size() - 2, 1);
        text_.pop_back();
        return "{\n" + text_ + "}";
    }

private:
    static constexpr std::size_t kLongestLine = 100;

    void flush()
    {
        if (!line_.empty()) text_ += line_ + "\n";
        line_.clear();
    }

    std::string text_;
    std::string line_;
};

}  // namespace netxml::xsd
