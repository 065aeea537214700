// Standard output, kept for what tvhost itself has to say.
#pragma once

namespace tvhost {

// From now on std::cout alone reaches standard output; what anybody else in this process writes
// there, plug-ins above all, goes to standard error. Call once, at the start.
void keepStandardOutput();

// The descriptor of standard output, for sound; std::cout is not to be used after. From now on a
// reader that goes away is an error of the write and not a signal. Throws UserError when standard
// output is closed or a terminal.
int takeStandardOutput();

} // namespace tvhost
