#pragma once

#include <array>
#include <string>
#include <string_view>

namespace dunkman::reference {

// The schemas that editors check and complete data files with, JSON Schema draft 7: docs/schema/NAME.schema.json.
// "objects" holds what the other three refer to.
inline constexpr std::array<std::string_view, 4> schemaNames = {"objects", "recipes", "prefabs", "scene"};

// The text of one of them; empty for another name.
std::string jsonSchema(std::string_view name);

} // namespace dunkman::reference
