// Makes a schema and a document smaller, as long as they stay interesting.
#pragma once

#include "tests/support/random_instance.hpp"
#include "tests/support/schema_graph.hpp"

#include <functional>

void shrinkPair(SchemaGraph& graph, Instance& instance, const std::function<bool()>& interesting);
