// Standard input, for what tvhost itself reads.
#pragma once

namespace tvhost {

// The descriptor of standard input; it becomes the caller's, and from now on anybody else in this
// process who reads there finds nothing. Call it before a plug-in is loaded. Throws UserError when
// standard input is closed or a terminal.
int takeStandardInput();

} // namespace tvhost
