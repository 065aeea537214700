// What tvhost does when something other than its own main() ends it.
#pragma once

namespace tvhost {

// Makes the signals that end the program remove unfinished output first, and says on standard error
// when it is a crash, which is most likely the plug-in's. The program still ends by the signal.
// A file that grows beyond the system's limit becomes an error of the write. Call once, at the
// start.
void guardProcessSignals();

// A plug-in that calls exit() ends the program with status 2 and one line on standard error that
// says so, unfinished output removed, until endProcessGuard(). Not in forked processes. Call once.
void guardProcessExit();
void endProcessGuard();

} // namespace tvhost
