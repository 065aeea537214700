#include "host/render/Automation.h"

#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectLookup.h"
#include "host/presets/EffectSettings.h"

#include <algorithm>
#include <cmath>

namespace tvhost {

namespace {

// Far beyond any file, and its frame still fits at any rate.
constexpr double kLatestTime = 1e6;

} // namespace

Automation::Automation(const EffectInstance& effect, const std::vector<std::string>& texts,
                       double sampleRate) {
    for (const std::string& text : texts) {
        const std::string where = "--automate " + text;
        const std::size_t sign = text.rfind('=');
        if (sign == std::string::npos || sign == 0 || sign + 1 == text.size()) {
            throw UserError(where + ": give NAME=T:V,T:V,..., such as Mix=0:0.2,1.5:0.8");
        }
        const int parameter = findParameter(effect, text.substr(0, sign));
        std::string rest = text.substr(sign + 1) + ",";
        while (!rest.empty()) {
            const std::size_t comma = rest.find(',');
            const std::string point = rest.substr(0, comma);
            rest.erase(0, comma + 1);
            points_.push_back(pointFrom(point, where, parameter, sampleRate));
        }
    }
    std::stable_sort(points_.begin(), points_.end(),
                     [](const Point& a, const Point& b) { return a.frame < b.frame; });
}

Automation::Point Automation::pointFrom(const std::string& text, const std::string& where,
                                        int parameter, double sampleRate) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) {
        throw UserError(where + ": \"" + text +
                        "\" is not a point; give T:V, the time in seconds and a value from 0 to 1");
    }
    const std::string time = text.substr(0, colon);
    const auto seconds = parseNumber(time);
    if (!seconds || *seconds < 0.0 || *seconds > kLatestTime) {
        throw UserError(where + ": \"" + time + "\" is not a time; give seconds, 0 or more");
    }
    return {std::llround(*seconds * sampleRate), parameter,
            normalisedValue(text.substr(colon + 1), where)};
}

void Automation::apply(EffectInstance& effect, std::int64_t frame) {
    for (; next_ < points_.size() && points_[next_].frame <= frame; ++next_) {
        effect.setParameter(points_[next_].parameter, points_[next_].value);
    }
}

std::int64_t Automation::framesUntilNext(std::int64_t frame, std::int64_t limit) const {
    return next_ == points_.size() ? limit : std::min(limit, points_[next_].frame - frame);
}

std::int64_t Automation::lastFrame() const {
    return points_.empty() ? 0 : points_.back().frame;
}

} // namespace tvhost
