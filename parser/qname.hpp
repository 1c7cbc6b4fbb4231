// A name as written.
#pragma once

#include "support/span.hpp"

namespace netxml {

// The prefix is empty where there is none.
struct QName {
    Span prefix;
    Span local;
};

}  // namespace netxml
