#pragma once

#include "platform/linux/CFObject.h"

#include <string>
#include <utility>

struct __CFURL : CFObject {
    explicit __CFURL(std::string filePath) : path(std::move(filePath)) {}
    const std::string path;
};
