// Which form of a content model is given to the engine.
#pragma once

#include "xsd/content_model.hpp"
#include "xsd/diagnostics.hpp"
#include "xsd/model_check.hpp"

namespace netxml::xsd {

// The model itself where the engine's verdict on it is that of XML Schema, else an equal one on
// which it is. Where there is none the nearest one, and a message that shows children on which the
// two differ.
ContentModel engineForm(const ContentModel& meant, ModelChecks& checks, Diagnostics& diagnostics);

}  // namespace netxml::xsd
