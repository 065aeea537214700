// Float to integer conversions that are defined for every input. The machine's truncating
// conversions answer the lowest integer for not-a-numbers and values out of range, where the
// language leaves the result undefined.
#pragma once

#include <cstdint>
#include <emmintrin.h>

inline std::int32_t truncateToInt32(float value) {
    return _mm_cvttss_si32(_mm_set_ss(value));
}

inline std::int64_t truncateToInt64(float value) {
    return _mm_cvttss_si64(_mm_set_ss(value));
}

inline std::int32_t truncateToInt32(double value) {
    return _mm_cvttsd_si32(_mm_set_sd(value));
}

inline std::int64_t truncateToInt64(double value) {
    return _mm_cvttsd_si64(_mm_set_sd(value));
}
