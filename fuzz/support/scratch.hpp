// A directory of its own, which is the working directory as long as it is entered, so that nothing
// outside can be named without a slash.
#pragma once

#include "fuzz/support/require.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

class Scratch {
public:
    Scratch()
    {
        const char* parent = std::getenv("TMPDIR");
        path_ = std::string{parent ? parent : "/tmp"} + "/netxml-fuzz-XXXXXX";
        require(mkdtemp(path_.data()) != nullptr, "a directory can be made");
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    // By name, with the content; directories have none.
    using Files = std::map<std::string, std::string>;

    // Makes these all that is in the directory; the last part of a name may lie in others.
    void fill(const Files& files) const
    {
        for (const auto& entry : std::filesystem::directory_iterator{path_})
            std::filesystem::remove_all(entry);
        for (const auto& [name, content] : files) {
            const std::filesystem::path file = path_ + "/" + name;
            std::filesystem::create_directories(file.parent_path());
            std::ofstream{file, std::ios::binary} << content;
        }
    }
    Files files() const
    {
        Files found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator{path_}) {
            if (!entry.is_regular_file()) continue;
            std::ifstream file{entry.path(), std::ios::binary};
            found[entry.path().string().substr(path_.size() + 1)] =
                std::string{std::istreambuf_iterator<char>{file}, {}};
        }
        return found;
    }

    class Entered {
    public:
        explicit Entered(const Scratch& scratch) : before_{open(".", O_PATH | O_CLOEXEC)}
        {
            require(before_ >= 0 && chdir(scratch.path_.c_str()) == 0,
                    "a directory can be entered");
        }
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;
        ~Entered()
        {
            require(fchdir(before_) == 0, "a directory can be left");
            close(before_);
        }

    private:
        int before_;
    };

private:
    std::string path_;
};
