#pragma once
// For machines without an AOL client.

#include "aol/aol_link.h"

namespace brindle {

class NoAolLink : public AolLink {
 public:
  std::string GetAolScreenName() override { return ""; }
};

}  // namespace brindle
