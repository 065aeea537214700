// Standard output, kept for what tvhost itself has to say.
#pragma once

namespace tvhost {

// From now on std::cout alone reaches standard output; what anybody else in this process writes
// there, plug-ins above all, goes to standard error. Call once, at the start.
void keepStandardOutput();

// The descriptor of standard output, for bytes that std::cout is not for; flush that first. It may
// be one that cannot be written to when the program was started without standard output.
int standardOutputDescriptor();

} // namespace tvhost
