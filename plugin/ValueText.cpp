// AudioEffect's conversions from numbers to text. Hosts show these texts digit by digit, so the way
// each digit is obtained is part of the result.
#include "plugin/AudioEffect.h"
#include "plugin/VstText.h"

#include <cmath>

namespace {

constexpr VstInt32 kFieldWidth = 8; // characters of a number, sign and point counted
constexpr VstInt32 kIntegerLimit = 100000000;

char digitOf(double x) {
    return static_cast<char>('0' + static_cast<int>(std::fmod(x, 10.0)));
}

} // namespace

void AudioEffect::dB2string(float value, char* text, VstInt32 maxLen) {
    if (!(value > 0.0f)) {
        vst_strncpy(text, "-oo", maxLen);
    } else {
        float2string(20.0f * std::log10(value), text, maxLen);
    }
}

void AudioEffect::Hz2string(float samples, char* text, VstInt32 maxLen) {
    const float rate = getSampleRate();
    if (!(samples < 0.0f || samples > 0.0f)) { // zero or not a number
        float2string(0.0f, text, maxLen);
    } else {
        float2string(rate / samples, text, maxLen);
    }
}

void AudioEffect::ms2string(float samples, char* text, VstInt32 maxLen) {
    const double ms = static_cast<double>(samples) * 1000.0 / static_cast<double>(getSampleRate());
    float2string(static_cast<float>(ms), text, maxLen);
}

void AudioEffect::float2string(float value, char* text, VstInt32 maxLen) {
    double v = static_cast<double>(value);
    const bool negative = value < 0.0f;
    const bool inRange = negative ? value >= -9999999.0f : v <= 99999999.0;
    if (!inRange) {
        return; // the caller's text stays
    }

    VstInt32 used = 0;
    if (negative) {
        v = -v;
        used = 1;
    }

    char integerPart[kFieldWidth + 2];
    char* left = integerPart + sizeof(integerPart);
    *--left = 0;
    *--left = '.';
    ++used;

    const double integ = std::floor(v);
    *--left = digitOf(integ);
    ++used;
    // The powers are products of 0.1, not the nearest doubles of the decimal fractions.
    for (double power = 0.1;; power *= 0.1) {
        const double x = integ * power;
        if (x < 1.0 || used >= kFieldWidth) {
            break;
        }
        *--left = digitOf(x);
        ++used;
    }
    if (negative) {
        *--left = '-';
    }
    vst_strncpy(text, left, maxLen);
    if (used >= kFieldWidth) {
        return;
    }

    const VstInt32 places = kFieldWidth - used;
    double m = std::fmod(v, 1.0) * std::pow(10.0, places);
    char fraction[kFieldWidth];
    fraction[places] = 0;
    for (VstInt32 i = places - 1; i >= 0; --i) {
        if (m <= 0.0) {
            fraction[i] = '0';
        } else {
            fraction[i] = digitOf(m);
            m *= 0.1;
        }
    }
    vst_strncat(text, fraction, maxLen);
}

void AudioEffect::int2string(VstInt32 value, char* text, VstInt32 maxLen) {
    if (value >= kIntegerLimit) {
        vst_strncpy(text, "Huge!", maxLen);
        return;
    }
    if (value < 0) {
        vst_strncpy(text, "-", maxLen);
        // The lowest value stays as it is, and then has no digit above zero.
        value = static_cast<VstInt32>(0u - static_cast<std::uint32_t>(value));
    } else {
        vst_strncpy(text, "", maxLen);
    }
    bool written = false;
    for (VstInt32 div = kIntegerLimit; div >= 1; div /= 10) {
        const VstInt32 digit = value / div;
        value -= digit * div;
        if (written || digit > 0) {
            const char character[2] = {static_cast<char>('0' + digit), 0};
            vst_strncat(text, character, maxLen);
            written = true;
        }
    }
}
