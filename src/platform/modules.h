#pragma once
// Parts of the program that are libraries of their own, because they stand on a dozen libraries
// that a session may end without: they are loaded when they are needed first, and stay.

namespace brindle {

// Null when the module is missing or is none of this version.
void* AddressInModule(const char* module, const char* name);

// A function that the module gives away.
template <typename Function>
Function* FromModule(const char* module, const char* name) {
  return reinterpret_cast<Function*>(AddressInModule(module, name));
}

}  // namespace brindle
