// Plain content to events; see tree_content.cpp.
#include "parser/handler_sink.hpp"
#include "parser/scan_plain.hpp"

namespace netxml {

template ParseError Scanner<HandlerSink>::plainContent(bool atRoot) noexcept;

}  // namespace netxml
