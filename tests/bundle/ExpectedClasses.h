// What the classes of the editor have to be for nibs, hosts and one another.
#pragma once

#include "tests/bundle/ObjcMetadata.h"

#include <set>
#include <string>
#include <vector>

// Methods are those that a class has at least.
const std::vector<ObjcClass>& expectedClasses();

// Of methods that the classes have for themselves, under names that no framework has.
const std::set<std::string>& helperSelectors();
