// The capability strings of the interface, for hosts and effects that want to name them.
#pragma once

extern const char* const HostCanDos[14];
extern const char* const PlugCanDos[8];
