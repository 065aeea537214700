// Records the texts that views draw, as AppKit receives them.
#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

struct DrawnText {
    std::string text;
    NSRect place; // of drawAtPoint: without a size
    NSDictionary* attributes;
};

// Everything drawn as long as it lives, one at a time. The texts are drawn all the same.
class DrawnTexts {
public:
    DrawnTexts();
    ~DrawnTexts();
    DrawnTexts(const DrawnTexts&) = delete;
    DrawnTexts& operator=(const DrawnTexts&) = delete;

    std::vector<DrawnText> all;

    std::vector<std::string> texts() const;
};
