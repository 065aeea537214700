// The messages of macOS's frameworks that the bundle's code and the check's send, with the version
// that brought each.
#pragma once

#include <string>
#include <vector>

struct AppKitSelector {
    std::string declaredIn; // the class whose objects, or heirs, answer
    bool ofClass;           // sent to the class itself
    std::string selector;
    int since;    // macOS 10.x: the x
    bool guarded; // sent only to objects that were asked whether they answer
};

const std::vector<AppKitSelector>& appKitSelectors();

// Messages to delegates, nibs' views and splash views, which come from outside the bundle.
const std::vector<std::string>& outsideSelectors();
