#pragma once
// Says in the user's words why a list file gave no list, or a doubtful one.

#include <string>

#include "mail/list_reader.h"

namespace brindle {

// The last part of a path.
std::string FileNameOf(const std::string& path);

// Why the list that was read from `path` is not what the user wanted; empty when nothing is wrong.
// `rows` is how many came of it.
std::string WrongWithList(const std::string& path, ReadStatus status, size_t rows);

}  // namespace brindle
