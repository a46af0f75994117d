#pragma once

#include <string>

namespace dunkman::reference {

// The reference of the data files that make a level, as a Markdown text: docs/data-reference.md.
std::string dataReference();

} // namespace dunkman::reference
