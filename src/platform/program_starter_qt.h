#pragma once

#include "update/update_folder.h"

namespace brindle {

class QtProgramStarter : public ProgramStarter {
 public:
  std::optional<std::string> Start(const std::string& name) override;
};

}  // namespace brindle
