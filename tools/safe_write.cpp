#include "safe_write.hpp"

#include "descriptor.hpp"
#include "interruption.hpp"
#include "outcome.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>

namespace netxml::tool {
namespace {

constexpr std::size_t kLargestWrite = std::size_t{1} << 20;
constexpr int kMostLinks = 40;

std::string directoryOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string{} : path.substr(0, slash + 1);
}

// Follows symbolic links at the end of a path, also to a file that does not exist yet.
std::string finalTarget(const std::string& path)
{
    std::string target = path;
    for (int links = 0;; ++links) {
        char buffer[PATH_MAX];
        const ssize_t size = readlink(target.c_str(), buffer, sizeof buffer);
        if (size < 0) return target;
        if (links == kMostLinks) throw fileFailure(path, "write", ELOOP);
        const std::string_view pointed{buffer, static_cast<std::size_t>(size)};
        target = pointed.starts_with('/') ? std::string{pointed}
                                          : directoryOf(target) + std::string{pointed};
    }
}

// A new file beside the target; removed again unless it takes the target's name.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target)
    {
        static std::atomic<unsigned> made{0};
        const std::string stem = directoryOf(target) + ".netxml-" + std::to_string(getpid()) + "-";
        int number = -1;
        do {
            name_ = stem + std::to_string(made++) + ".tmp";
            number = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (number < 0 && errno == EEXIST);
        if (number < 0) throw fileFailure(target, "write", errno);
        file_.emplace(number);
        removal_.emplace(name_);
    }
    ~TemporaryFile()
    {
        if (!renamed_) unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int descriptor() const { return file_->get(); }
    int closeNow() { return file_->closeNow(); }
    int rename(const std::string& target)
    {
        if (std::rename(name_.c_str(), target.c_str()) != 0) return errno;
        renamed_ = true;
        return 0;
    }

private:
    std::string name_;
    std::optional<Descriptor> file_;
    std::optional<RemovedOnSignal> removal_;
    bool renamed_ = false;
};

// Permissions and, where that is allowed, owner and group.
int takeOver(int descriptor, const struct stat& status)
{
    if (fchown(descriptor, status.st_uid, status.st_gid) != 0) {
        // Not the owner's to give away: the file is then the caller's own.
    }
    return fchmod(descriptor, status.st_mode & 07777) == 0 ? 0 : errno;
}

void commitDirectory(const std::string& target)
{
    const std::string directory = directoryOf(target);
    const Descriptor opened{
        open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (opened.get() >= 0) fsync(opened.get());
}

void writeDirectly(const std::string& path, std::string_view contents)
{
    const Descriptor file{open(path.c_str(), O_WRONLY | O_CLOEXEC)};
    const int error = file.get() < 0 ? errno : writeAll(file.get(), contents);
    if (error != 0) throw fileFailure(path, "write", error);
}

// What a file is to hold, complete in a new file beside it. A device or a pipe has none.
class PreparedFile {
public:
    PreparedFile(const std::string& path, std::string_view contents)
        : path_{path}, contents_{contents}
    {
        struct stat status {};
        const bool exists = stat(path.c_str(), &status) == 0;
        if (exists && S_ISDIR(status.st_mode)) throw fileFailure(path, "write", EISDIR);
        if (exists && !S_ISREG(status.st_mode)) return;
        // A new file could replace one that is write-protected; that protection is meant.
        if (exists && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
            throw fileFailure(path, "write", errno);

        target_ = finalTarget(path);
        file_.emplace(target_);
        int error = exists ? takeOver(file_->descriptor(), status) : 0;
        if (error == 0) error = writeAll(file_->descriptor(), contents);
        if (error == 0 && fsync(file_->descriptor()) != 0) error = errno;
        if (file_->closeNow() != 0 && error == 0) error = errno;
        if (error != 0) throw fileFailure(path, "write", error);
    }

    // Puts it into its place.
    void commit()
    {
        if (!file_) return writeDirectly(path_, contents_);
        const int error = file_->rename(target_);
        if (error != 0) throw fileFailure(path_, "write", error);
        commitDirectory(target_);
    }

private:
    std::string path_;
    std::string_view contents_;
    std::string target_;
    std::optional<TemporaryFile> file_;
};

}  // namespace

int writeAll(int descriptor, std::string_view contents)
{
    while (!contents.empty()) {
        const ssize_t count =
            write(descriptor, contents.data(), std::min(contents.size(), kLargestWrite));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        contents.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

void writeFile(const std::string& path, std::string_view contents)
{
    writeFiles({NewContents{path, contents}});
}

void writeFiles(const std::vector<NewContents>& files)
{
    std::vector<std::unique_ptr<PreparedFile>> prepared;
    prepared.reserve(files.size());
    for (const NewContents& file : files)
        prepared.push_back(std::make_unique<PreparedFile>(file.path, file.contents));
    for (const auto& file : prepared) file->commit();
}

std::string finalPath(const std::string& path)
{
    return finalTarget(path);
}

}  // namespace netxml::tool
