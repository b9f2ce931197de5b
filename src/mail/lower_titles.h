#pragma once
// Lower-cases titles in bulk, with the same outcome as LowerCase: ASCII by the byte kernels, the
// characters of two bytes (Latin, Greek, Cyrillic, Hebrew, Arabic) from a table.

#include <string_view>

#include "base/flat_array.h"

namespace brindle {

// Appends `title` in lower case to `lower`; the length in bytes may change.
void AppendLowerCase(std::string_view title, FlatArray<char>& lower);

}  // namespace brindle
