#include "host/presets/ShownValue.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace tvhost {

namespace {

constexpr int kBlockSize = 512;
// Places between the ends at which the effect is asked; what it shows for less is not found.
constexpr int kSteps = 1024;

struct Unit {
    const char* name;
    const char* quantity;
    double factor; // 0 stands for the length of a sample
};

constexpr Unit kUnits[] = {
    {"s", "time", 1.0},      {"sec", "time", 1.0},           {"secs", "time", 1.0},
    {"second", "time", 1.0}, {"seconds", "time", 1.0},       {"ms", "time", 1e-3},
    {"msec", "time", 1e-3},  {"milliseconds", "time", 1e-3}, {"samples", "time", 0.0},
    {"smp", "time", 0.0},    {"hz", "frequency", 1.0},       {"khz", "frequency", 1e3}};

const Unit* unitCalled(const std::string& name) {
    for (const Unit& unit : kUnits) {
        if (equalWithoutCase(unit.name, name)) {
            return &unit;
        }
    }
    return nullptr;
}

float valueAt(int step) {
    return static_cast<float>(step) / kSteps;
}

} // namespace

ShownValue::ShownValue(const EffectInstance& effect, int parameter)
    : probe_(effect.sharedModule()), parameter_(parameter), sampleRate_(effect.sampleRate()) {
    probe_.start(sampleRate_, kBlockSize);
    // What one parameter shows may depend on others.
    for (int i = 0; i < probe_.parameterCount(); ++i) {
        probe_.setParameter(i, effect.parameter(i));
    }
}

std::string ShownValue::shownAt(float value) {
    probe_.setParameter(parameter_, value);
    const std::string label = probe_.parameterLabel(parameter_);
    const std::string display = probe_.parameterDisplay(parameter_);
    return label.empty() ? display : display + " " + label;
}

std::optional<ShownValue::Quantity> ShownValue::quantityIn(const std::string& text) {
    // As much of the text as is a number.
    for (std::size_t length = std::min(text.find_first_not_of("+-.0123456789eE"), text.size());
         length > 0; --length) {
        const std::size_t sign = text[0] == '+' ? 1 : 0;
        if (const auto value = parseNumber(text.substr(sign, length - sign))) {
            return Quantity{*value, plainText(text.substr(length))};
        }
    }
    return std::nullopt;
}

std::optional<ShownValue::Quantity> ShownValue::quantityAt(float value) {
    return quantityIn(shownAt(value));
}

std::optional<double> ShownValue::scale(const std::string& from, const std::string& to) const {
    if (equalWithoutCase(from, to)) {
        return 1.0;
    }
    const Unit* const a = unitCalled(from);
    const Unit* const b = unitCalled(to);
    if (!a || !b || std::string(a->quantity) != b->quantity) {
        return std::nullopt;
    }
    const auto factor = [&](const Unit& unit) {
        return unit.factor == 0.0 ? 1.0 / sampleRate_ : unit.factor;
    };
    return factor(*a) / factor(*b);
}

std::optional<float> ShownValue::findNumber(const Quantity& wanted) {
    // How far what is shown at `value` is above what is wanted, in the unit that is shown there.
    const auto excess = [&](float value) -> std::optional<double> {
        const auto shown = quantityAt(value);
        if (!shown) {
            return std::nullopt;
        }
        const auto factor = scale(wanted.unit, shown->unit);
        return factor ? std::optional(shown->number - wanted.number * *factor) : std::nullopt;
    };
    std::optional<double> before;
    for (int step = 0; step <= kSteps; ++step) {
        const auto here = excess(valueAt(step));
        if (here && *here == 0.0) {
            return valueAt(step);
        }
        if (here && before && std::signbit(*here) != std::signbit(*before)) {
            float low = valueAt(step - 1);
            float high = valueAt(step);
            for (float middle = 0.5f * (low + high); middle > low && middle < high;
                 middle = 0.5f * (low + high)) {
                const auto there = excess(middle);
                if (!there) {
                    break;
                }
                (std::signbit(*there) == std::signbit(*before) ? low : high) = middle;
            }
            const auto below = excess(low);
            const auto above = excess(high);
            return below && above && std::abs(*below) < std::abs(*above) ? low : high;
        }
        before = here;
    }
    return std::nullopt;
}

std::optional<float> ShownValue::findWord(const std::string& word) {
    const auto shows = [&](int step) {
        probe_.setParameter(parameter_, valueAt(step));
        return equalWithoutCase(probe_.parameterDisplay(parameter_), word) ||
               equalWithoutCase(shownAt(valueAt(step)), word);
    };
    int first = 0;
    while (first <= kSteps && !shows(first)) {
        ++first;
    }
    if (first > kSteps) {
        return std::nullopt;
    }
    int last = first;
    while (last < kSteps && shows(last + 1)) {
        ++last;
    }
    // An end is where a plug-in itself would put it.
    return first == 0 ? 0.0f : last == kSteps ? 1.0f : valueAt((first + last) / 2);
}

std::optional<float> ShownValue::find(const std::string& text) {
    const std::string wanted = plainText(text);
    if (wanted.empty()) {
        return std::nullopt;
    }
    if (const auto word = findWord(wanted)) {
        return word;
    }
    const auto quantity = quantityIn(wanted);
    return quantity && !quantity->unit.empty() ? findNumber(*quantity) : std::nullopt;
}

std::string ShownValue::range() {
    // Some show nothing but the unit at an end.
    const auto end = [this](float value) {
        const std::string shown = shownAt(value);
        return probe_.parameterDisplay(parameter_).empty() ? "nothing" : shown;
    };
    return end(0.0f) + " to " + end(1.0f);
}

} // namespace tvhost
