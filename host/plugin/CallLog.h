// A file with every call between host and plug-in, for people who debug theirs.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <string>

namespace tvhost {

// From now on all effects that are made are logged into `file`, line by line, until the process
// ends; at most one file a process. Each line has the seconds since then, the thread, who calls,
// the call with what it was given, and its answer. Calls of all threads are logged, and the thread
// that plays waits for the file. Throws UserError when the file cannot be written.
void logCallsInto(const std::string& file);

// Makes an effect by `entry`, with its calls logged if logCallsInto() was called. Null where
// `entry` answers null.
AEffect* createLoggedEffect(AEffect* (*entry)(audioMasterCallback), audioMasterCallback host);

} // namespace tvhost
