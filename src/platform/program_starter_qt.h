#pragma once

#include <optional>
#include <string>

namespace brindle {

// Starts the program `name`, without the system's suffix, that lies in `folder`: it lives on by
// itself, in that folder, with one argument. Nothing on success, otherwise what went wrong.
std::optional<std::string> StartProgramIn(const std::string& folder, const std::string& name,
                                          const std::string& argument);

}  // namespace brindle
