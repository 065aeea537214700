// One check of a plug-in: what it is called, from which level on it runs and what it protects.
#pragma once

namespace tvhost {

class CheckRun;

struct Check {
    const char* name;       // lower case and hyphens; stays from version to version
    int level;              // 1 to 10
    const char* protects;   // one sentence, shown wherever the check is
    void (*run)(CheckRun&); // in a process of its own; findings go to the CheckRun
    bool needsDisplay = false;
    bool needsWatch = false;   // runs with the preloaded watch, see RealTimeWatch
    bool guardsMemory = false; // large memory ends where touching more of it crashes, by the watch
    bool endsInOrder = false;  // leaves its process by exit(), as hosts do
};

} // namespace tvhost
