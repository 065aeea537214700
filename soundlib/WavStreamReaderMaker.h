// Allocation of a `WavStreamReader` that is ready for `start`.
#pragma once

#include "soundlib/WavStreamReader.h"

// Makes an unbound reader with two cleared buffers. Threads of its background fills are detached,
// since the reader never joins them. Throws std::bad_alloc; not for an audio thread.
WavStreamReader* makeWavStreamReader();

// Releases `reader` with its buffers and closes its file. No fill may be under way. A null pointer
// does nothing.
void destroyWavStreamReader(WavStreamReader* reader);
