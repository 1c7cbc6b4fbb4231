// Schemas that are built in: an example's, to try the tool on.
#pragma once

#include "netxml/schema.h"

#include <string>
#include <string_view>

namespace netxml::tool {

struct KnownSchema {
    const char* name;
    std::uint32_t (*enter)(Schema_Root* root);
    void (*leave)(Schema_Root* root);
};

// Nothing for another name.
const KnownSchema* findSchema(std::string_view name);

// All names, between commas.
std::string schemaNames();

// A root that holds a schema. Throws std::bad_alloc.
class RegisteredSchema {
public:
    explicit RegisteredSchema(const KnownSchema& schema);
    RegisteredSchema(const RegisteredSchema&) = delete;
    RegisteredSchema& operator=(const RegisteredSchema&) = delete;
    ~RegisteredSchema();

    const Schema_Root* root() const { return &root_; }

private:
    const KnownSchema& schema_;
    Schema_Root root_{};
};

}  // namespace netxml::tool
