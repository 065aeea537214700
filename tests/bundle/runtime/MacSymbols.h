// What mapped code asks of macOS's Objective-C runtime, AppKit and their neighbours, as this
// process has it.
#pragma once

#include <string>

// By the name with its leading underscore. Null for what is none of theirs.
void* macSymbol(const std::string& symbol);
