// Plain content to a tree: in a file of its own, because this is where a parse spends its time, and
// the compiler is told to make it fast rather than small.
#include "parser/scan_plain.hpp"
#include "parser/tree_sink.hpp"

namespace netxml {

template ParseError Scanner<TreeSink>::plainContent(bool atRoot) noexcept;

}  // namespace netxml
