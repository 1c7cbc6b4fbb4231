// A compiled schema as records of the library, made at run time.
#pragma once

#include "xsd/records.hpp"

#include <memory>

namespace netxml::xsd {

class RuntimeSchema {
public:
    // Registers everything. Throws std::bad_alloc.
    explicit RuntimeSchema(const SchemaRecords& records);
    RuntimeSchema(const RuntimeSchema&) = delete;
    RuntimeSchema& operator=(const RuntimeSchema&) = delete;
    ~RuntimeSchema();

    const Schema_Root* root() const;

private:
    class Records;

    std::unique_ptr<Records> records_;
};

// The address of a built-in type's record.
const Schema_SimpleType* builtinRecord(const std::string& name);

}  // namespace netxml::xsd
