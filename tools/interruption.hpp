// What a signal that ends the tool must still do.
#pragma once

#include <cstddef>
#include <string>

namespace netxml::tool {

// Makes the signals that interrupt the tool remove its temporary files first, and lets writes to a
// closed pipe or beyond a size limit fail instead of ending it. Open standard descriptors are also
// ensured: a file that is opened later must not become standard output.
void prepareProcess();

// As long as it lives, an interrupting signal removes the file.
class RemovedOnSignal {
public:
    explicit RemovedOnSignal(const std::string& path);
    ~RemovedOnSignal();
    RemovedOnSignal(const RemovedOnSignal&) = delete;
    RemovedOnSignal& operator=(const RemovedOnSignal&) = delete;

private:
    std::size_t slot_;
};

}  // namespace netxml::tool
