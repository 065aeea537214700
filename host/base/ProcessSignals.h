// What tvhost does when a signal ends it.
#pragma once

namespace tvhost {

// Makes the signals that end the program remove unfinished output first, and says on standard error
// when it is a crash, which is most likely the plug-in's. The program still ends by the signal.
// A file that grows beyond the system's limit becomes an error of the write. Call once, at the
// start.
void guardProcessSignals();

} // namespace tvhost
