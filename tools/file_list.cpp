#include "file_list.hpp"

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace netxml::tool {
namespace {

namespace fs = std::filesystem;

bool isWanted(const fs::path& path)
{
    const std::string ending = path.extension().string();
    return std::find(std::begin(kEndings), std::end(kEndings), ending) != std::end(kEndings);
}

void report(FileList& list, const std::string& directory, const std::error_code& error)
{
    const Failure failure = fileFailure(directory, "read", error.value());
    list.unreadable.problems.push_back(failure.problem());
    list.unreadable.worsen(failure.status());
}

// One directory at a time, so that one that cannot be read does not hide the others.
void addDirectory(FileList& list, const std::string& top)
{
    std::vector<fs::path> directories{top};
    std::vector<std::string> found;
    while (!directories.empty()) {
        const fs::path directory = std::move(directories.back());
        directories.pop_back();
        std::error_code error;
        for (fs::directory_iterator entry{directory, error}, end; !error && entry != end;
             entry.increment(error)) {
            std::error_code unknown;
            if (entry->is_directory(unknown) && !entry->is_symlink(unknown))
                directories.push_back(entry->path());
            else if (isWanted(entry->path()) && entry->is_regular_file(unknown))
                found.push_back(entry->path().string());
        }
        if (error) report(list, directory.string(), error);
    }
    std::sort(found.begin(), found.end());
    list.files.insert(list.files.end(), found.begin(), found.end());
}

}  // namespace

FileList listFiles(const std::vector<std::string>& arguments, bool recursive)
{
    FileList list;
    for (const std::string& argument : arguments) {
        std::error_code unknown;
        if (recursive && argument != "-" && fs::is_directory(argument, unknown))
            addDirectory(list, argument);
        else list.files.push_back(argument);
    }
    return list;
}

}  // namespace netxml::tool
