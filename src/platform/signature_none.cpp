// Built without libsodium: nobody can be believed.

#include "platform/signature.h"

namespace brindle {

bool IsSignedBy(std::string_view, std::string_view, std::string_view) { return false; }

}  // namespace brindle
