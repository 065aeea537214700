// Copying text into the host's buffers.
#pragma once

#include "plugin/vst2/AEffect.h"

// Copies as strncpy does, zero-filled up to `maxLen`, and ends the text at dst[maxLen] whatever its
// length: `dst` holds at least maxLen + 1 bytes. Returns `dst`.
char* vst_strncpy(char* dst, const char* src, VstInt32 maxLen);

// Appends as strncat does, at most up to dst[maxLen - 1], and sets dst[maxLen] to zero: `dst` holds
// at least maxLen + 1 bytes. Returns `dst`.
char* vst_strncat(char* dst, const char* src, VstInt32 maxLen);
