// The manual page of tvhost, from the declarations of its commands.
#pragma once

#include "host/commands/CommandTree.h"

#include <string>
#include <vector>

namespace tvhost {

// A page of section 1 in the language that man reads. `version` is tvhost's.
std::string manualPage(const std::vector<DescribedCommand>& tree, const std::string& version);

} // namespace tvhost
