// A file with a path that lies in memory.
#pragma once

#include "fuzz/support/require.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

class MemoryFile {
public:
    explicit MemoryFile(std::string_view content = {})
        : descriptor_{memfd_create("netxml-fuzz", MFD_CLOEXEC)}, path_{"/proc/self/fd/" +
                                                                       std::to_string(descriptor_)}
    {
        require(descriptor_ >= 0, "a file in memory can be made");
        while (!content.empty()) {
            const ssize_t count = write(descriptor_, content.data(), content.size());
            require(count > 0, "a file in memory can be written");
            content.remove_prefix(static_cast<std::size_t>(count));
        }
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(descriptor_); }

    const char* path() const { return path_.c_str(); }
    int descriptor() const { return descriptor_; }

    std::string content() const
    {
        std::string text;
        char area[4096];
        for (off_t at = 0;; at += static_cast<off_t>(sizeof area)) {
            const ssize_t count = pread(descriptor_, area, sizeof area, at);
            if (count <= 0) return text;
            text.append(area, static_cast<std::size_t>(count));
        }
    }

private:
    int descriptor_;
    std::string path_;
};
