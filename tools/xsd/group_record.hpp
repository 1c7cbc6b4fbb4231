// The records of a content model.
#pragma once

#include "xsd/content_model.hpp"
#include "xsd/records.hpp"

namespace netxml::xsd {

// Makes the group and all inside of it in `to`. An element's own record is its particle where the
// bounds are its own; a top-level element is referred to.
const GroupRecord* groupRecord(const ContentModel& model, SchemaRecords& to);

}  // namespace netxml::xsd
