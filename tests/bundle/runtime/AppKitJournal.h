// What AppKit and its neighbours are told, in the order of the telling. One thread.
#pragma once

#include <string>
#include <vector>

#ifdef __OBJC__
#import <AppKit/AppKit.h>

std::string describe(NSRect rect); // as in (1 2 3 4)
#endif

const std::vector<std::string>& journal();
// Those that begin so.
std::vector<std::string> journalOf(const std::string& beginning);
void writeJournal(const std::string& entry);
void forgetJournal();

// Lets GNUstep's classes write down how they are called. Once in a process.
void startJournal();
