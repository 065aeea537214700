// What shells read to complete the words of a tvhost command line.
#pragma once

#include "host/commands/CommandTree.h"

#include <string>
#include <vector>

namespace tvhost {

std::string bashCompletion(const std::vector<DescribedCommand>& tree);
std::string zshCompletion(const std::vector<DescribedCommand>& tree);
std::string fishCompletion(const std::vector<DescribedCommand>& tree);

} // namespace tvhost
