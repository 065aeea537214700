#include "mac-check/EffectRun.h"

#include "mac-check/Reference.h"
#include "plugin/vst2/EffectOpcodes.h"

#include <cinttypes>

namespace {

constexpr int kLongestText = 256;

void ask(AEffect* effect, VstInt32 opcode, VstInt32 index, char (&text)[kLongestText]) {
    text[0] = 0;
    effect->dispatcher(effect, opcode, index, 0, text, 0.0f);
}

void reportParameters(AEffect* effect, Report& report) {
    for (VstInt32 i = 0; i < effect->numParams; ++i) {
        char name[kLongestText];
        char label[kLongestText];
        char display[kLongestText];
        ask(effect, effGetParamName, i, name);
        ask(effect, effGetParamLabel, i, label);
        ask(effect, effGetParamDisplay, i, display);
        report.line("Parameter %d: %s, %.9g, shown as \"%s\" %s", static_cast<int>(i), name,
                    static_cast<double>(effect->getParameter(effect, i)), display, label);
    }
}

// How far the spots are apart, at most.
std::uint32_t farthest(const ProgramResult& one, const ProgramResult& other) {
    std::uint32_t most = 0;
    for (int i = 0; i < kSpots; ++i) {
        const std::uint32_t distance = distanceInLastBits(one.spots[i], other.spots[i]);
        most = distance > most ? distance : most;
    }
    return most;
}

} // namespace

void reportRecord(AEffect* effect, Report& report) {
    report.heading("Record");
    const VstInt32 id = effect->uniqueID;
    report.line("Identifier: %c%c%c%c", static_cast<int>(id >> 24 & 0xff),
                static_cast<int>(id >> 16 & 0xff), static_cast<int>(id >> 8 & 0xff),
                static_cast<int>(id & 0xff));
    report.line("Programs %d, parameters %d, inputs %d, outputs %d, flags 0x%x, version %d",
                static_cast<int>(effect->numPrograms), static_cast<int>(effect->numParams),
                static_cast<int>(effect->numInputs), static_cast<int>(effect->numOutputs),
                static_cast<unsigned>(effect->flags), static_cast<int>(effect->version));
    char text[kLongestText];
    ask(effect, effGetEffectName, 0, text);
    report.line("Effect: %s", text);
    ask(effect, effGetVendorString, 0, text);
    report.line("Vendor: %s", text);
    ask(effect, effGetProductString, 0, text);
    report.line("Product: %s", text);
    reportParameters(effect, report);
}

void reportSound(EffectEntry entry, Report& report) {
    report.heading("Sound and texts, beside Linux");
    int same = 0;
    for (int program = 0; program < kPrograms; ++program) {
        const ProgramResult result = runProgram(entry, program);
        const ProgramResult& linux = kReferencePrograms[program];
        if (result.hash == linux.hash) {
            report.line("Program %2d: %016" PRIx64 ", the same", program, result.hash);
            ++same;
        } else {
            report.line("Program %2d: %016" PRIx64 ", on Linux %016" PRIx64
                        ", samples differ by up to %" PRIu32 " last bits",
                        program, result.hash, linux.hash, farthest(result, linux));
        }
    }
    report.line("Programs that sound the same: %d of %d", same, kPrograms);
    AEffect* const effect = entry(checkingHost);
    for (int parameter = 0; parameter < kParameters; ++parameter) {
        const std::uint64_t hash = hashOfTexts(effect, parameter);
        report.line("Texts of parameter %d: %016" PRIx64 ", on Linux %016" PRIx64 "%s", parameter,
                    hash, kReferenceTexts[parameter],
                    hash == kReferenceTexts[parameter] ? ", the same" : ", DIFFERENT");
    }
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}
