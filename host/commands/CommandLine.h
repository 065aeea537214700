// The whole of tvhost but main().
#pragma once

namespace tvhost {

// Runs the subcommand that the arguments name and answers the exit status: 0 when it did what was
// asked, 2 after one line on standard error.
int runCommandLine(int argc, const char* const* argv);

} // namespace tvhost
