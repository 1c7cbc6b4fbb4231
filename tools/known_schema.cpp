#include "known_schema.hpp"

#include "interfaces_schema.h"

#include <new>

namespace netxml::tool {
namespace {

constexpr KnownSchema kSchemas[] = {
    {"interfaces", interfaces_schema_register, interfaces_schema_deregister},
};

}  // namespace

const KnownSchema* findSchema(std::string_view name)
{
    for (const KnownSchema& schema : kSchemas) {
        if (name == schema.name) return &schema;
    }
    return nullptr;
}

std::string schemaNames()
{
    std::string names;
    for (const KnownSchema& schema : kSchemas) {
        if (!names.empty()) names += ", ";
        names += schema.name;
    }
    return names;
}

RegisteredSchema::RegisteredSchema(const KnownSchema& schema) : schema_{schema}
{
    const bool ready = Schema_InitRoot(&root_) == XML_RET_OK;
    if (ready && schema_.enter(&root_) == XML_RET_OK) return;
    Schema_ExitRoot(&root_);
    throw std::bad_alloc{};
}

RegisteredSchema::~RegisteredSchema()
{
    schema_.leave(&root_);
    Schema_ExitRoot(&root_);
}

}  // namespace netxml::tool
