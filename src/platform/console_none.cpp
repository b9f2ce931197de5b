#include "platform/console.h"

namespace brindle {

void UseCallersConsole() {}

}  // namespace brindle
