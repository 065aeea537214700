// What the classes of the editor have to be for nibs, hosts and one another.
#pragma once

#include "tests/bundle/ObjcMetadata.h"

// Methods are those that a class has at least.
const std::vector<ObjcClass>& expectedClasses();
