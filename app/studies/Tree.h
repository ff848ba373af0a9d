// Trees of named values, changed and written.
#pragma once

#include <string>
#include <string_view>

#include "RequestTree.h"

namespace frigana::studies {

// Puts a value at a dotted key, making the tables on the way; false where something else than a table is in the way.
bool put(catalogue::Node& tree, std::string_view key, const catalogue::Node& value);

// Takes away what stands at a dotted key, if anything does.
void take(catalogue::Node& tree, std::string_view key);

// JSON of a tree, in one line.
std::string jsonOf(const catalogue::Node& node);

catalogue::Node textNode(std::string text);
catalogue::Node numberNode(double number);

}  // namespace frigana::studies
