// Values of the eight types of dates and times (XML Schema 1.0 part 2, section 3.2.7 to 3.2.14,
// with years of four digits and without a sign).
#pragma once

#include "netxml/schema.h"

namespace netxml {

// True, with the parts stored, when the text is a value of the kind (20 to 27); else the record is
// all 0. What the kind lacks is 0.
bool parseDateTime(Schema_BuiltinKind kind, const char* text, Schema_DateTimeValue& value) noexcept;

// Negative, 0 or positive as a is before, equal to or after b. A year, month or day that the kind
// lacks is taken for the first one.
int compareDateTimes(Schema_DateTimeValue a, Schema_DateTimeValue b) noexcept;

}  // namespace netxml
