// The whole of tvhost but main().
#pragma once

namespace tvhost {

// Runs the subcommand that the arguments name and answers the exit status: the command's own, 0
// with most, when it did what was asked, and 2 after one line on standard error.
int runCommandLine(int argc, const char* const* argv);

} // namespace tvhost
