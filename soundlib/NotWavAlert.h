// The one message to the user about sample files.
#pragma once

#include <string>

// Tells the user that a file isn't a 16-bit WAV file, with `text` below the headline. Blocks until
// the user answers, 20 seconds at most. Whoever finds such a file calls it; the reader never does.
void showNotWavAlert(const std::string& text);
