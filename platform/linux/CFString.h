#pragma once

#include "platform/linux/CFObject.h"

#include <string>
#include <utility>

struct __CFString : CFObject {
    explicit __CFString(std::string text) : utf8(std::move(text)) {}
    const std::string utf8;
};
