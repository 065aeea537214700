#include "bench/others/BareDelay.h"
#include "bench/others/Contender.h"
#include "bench/others/Lv2Contender.h"
#include "bench/others/Vst2Contender.h"

#include <map>

namespace {

enum Parameter { kDelay, kFeedBack, kLowPass, kHighPass, kLowPassType, kHighPassType };

constexpr int kPrograms = 26;

ContenderKind lv2(const std::string& name, const std::string& work, const std::string& uri,
                  const std::map<std::string, float>& controls) {
    return {name, work, [=] { return std::make_unique<Lv2Contender>(uri, controls); }};
}

ContenderKind tvDelay(const std::string& name, const std::string& work, int program) {
    return {name, work, [=] {
                auto made = std::make_unique<Vst2Contender>();
                made->setProgram(program);
                return made;
            }};
}

// Feedback and nothing else.
std::unique_ptr<Contender> plainTvDelay() {
    auto made = std::make_unique<Vst2Contender>();
    made->setParameter(kDelay, 0.25f);
    made->setParameter(kFeedBack, 0.5f);
    made->setParameter(kHighPass, 0.0f);
    made->setParameter(kLowPass, 0.0f);
    return made;
}

} // namespace

const std::vector<ContenderKind>& contenders() {
    static const auto* const kinds = new std::vector<ContenderKind>{
        {"Bare delay", "feedback, mix", [] { return std::make_unique<BareDelay>(); }},
        {"TvDelay, no filter", "feedback, crossed outputs, balance, mix", plainTvDelay},
        tvDelay("TvDelay, CloudFishing", "the same, and a four-pole low-pass behind the loop", 7),
        tvDelay("TvDelay, Thick2", "the same, and four-pole low-pass and high-pass in the loop",
                17),
        tvDelay("TvDelay, Walking Shadow", "the same, and a sweep", 14),
        lv2("Calf Vintage Delay", "feedback, tape filter in the loop, mix",
            "http://calf.sourceforge.net/plugins/VintageDelay",
            {{"timing", 1.0f}, {"ms", 250.0f}, {"feedback", 0.5f}, {"medium", 1.0f}}),
        lv2("Calf Vintage Delay, plain", "feedback, mix",
            "http://calf.sourceforge.net/plugins/VintageDelay",
            {{"timing", 1.0f}, {"ms", 250.0f}, {"feedback", 0.5f}, {"medium", 0.0f}}),
        lv2("Calf Reverse Delay", "feedback, window, mix",
            "http://calf.sourceforge.net/plugins/ReverseDelay", {{"feedback", 0.5f}}),
        lv2("LSP Slapback Delay", "one of its taps, low-cut and high-cut; it has no feedback",
            "http://lsp-plug.in/plugins/lv2/slap_delay_stereo",
            {{"dm0", 1.0f}, {"dt0", 250.0f}, {"eq0", 1.0f}, {"lfc0", 1.0f}, {"hfc0", 1.0f}}),
        lv2("LSP Artistic Delay", "one of its delays, feedback, low-cut and high-cut",
            "http://lsp-plug.in/plugins/lv2/art_delay_stereo",
            {{"on0", 1.0f},
             {"trefm0", 0.0f},
             {"dadd0", 0.25f},
             {"fbe0", 1.0f},
             {"fbg0", 0.5f},
             {"eq0", 1.0f},
             {"lc0", 1.0f},
             {"hc0", 1.0f}}),
    };
    return *kinds;
}

std::vector<ContenderKind> tvDelayPrograms() {
    std::vector<ContenderKind> programs;
    programs.reserve(kPrograms);
    for (int program = 0; program < kPrograms; ++program) {
        programs.push_back(tvDelay("TvDelay, program " + std::to_string(program), "", program));
    }
    return programs;
}
