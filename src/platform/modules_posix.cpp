#include <dlfcn.h>

#include <string>

#include "platform/modules.h"

namespace brindle {

void* AddressInModule(const char* module, const char* name) {
  // Found where the program's own search path says. It stays for good, as the toolkit's parts in it
  // expect.
  void* const library = dlopen((std::string(module) + ".so").c_str(), RTLD_NOW | RTLD_NODELETE);
  return library == nullptr ? nullptr : dlsym(library, name);
}

}  // namespace brindle
