// Parameter values by what a plug-in shows for them.
#pragma once

#include "host/plugin/EffectInstance.h"

#include <optional>
#include <string>
#include <vector>

namespace tvhost {

// A parameter's values as the effect shows them, looked at through an effect of its own, so that
// the effect in use is left alone.
class ShownValue {
public:
    // `effect` as it is set now; `parameter` is an index of it.
    ShownValue(const EffectInstance& effect, int parameter);

    // The value that shows `text`: a number with its unit, such as "300 ms", or a word, such as
    // "On", without regard to case. Seconds, milliseconds and samples stand for each other, and so
    // do Hz and kHz. Nothing when the effect shows no such thing; of several values the lowest
    // place where it does.
    std::optional<float> find(const std::string& text);

    // What it shows at both ends, for a message.
    std::string range();

private:
    // A number and what stands behind it.
    struct Quantity {
        double number;
        std::string unit;
    };

    std::string shownAt(float value);
    std::optional<Quantity> quantityAt(float value);
    std::optional<double> scale(const std::string& from, const std::string& to) const;
    std::optional<float> findNumber(const Quantity& wanted);
    std::optional<float> findWord(const std::string& word);
    static std::optional<Quantity> quantityIn(const std::string& text);

    EffectInstance probe_;
    int parameter_;
    double sampleRate_;
};

} // namespace tvhost
