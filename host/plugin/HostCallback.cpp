#include "host/plugin/HostCallback.h"

#include "plugin/vst2/EffectOpcodes.h"
#include "plugin/vst2/HostOpcodes.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace tvhost {

namespace {

constexpr VstIntPtr kInterfaceVersion = 2400;
constexpr const char* kVendor = "Tarnvale Music";
constexpr const char* kProduct = "tvhost";
constexpr VstIntPtr kVendorVersion = TVHOST_VERSION_NUMBER;

constexpr double kBeatsPerBar = 4.0;

constexpr VstIntPtr kProcessLevelUser = 1;
constexpr VstIntPtr kProcessLevelRealTime = 2;
constexpr VstIntPtr kProcessLevelOffline = 4;
constexpr VstIntPtr kLanguageEnglish = 1;
constexpr VstIntPtr kReplacing = 1;

enum TimeInfoFlags : VstInt32 {
    kTransportPlaying = 1 << 1,
    kNanosecondsValid = 1 << 8,
    kBeatPositionValid = 1 << 9,
    kTempoValid = 1 << 10,
    kBarStartValid = 1 << 11,
    kTimeSignatureValid = 1 << 13,
};

thread_local HostCallback* underConstruction = nullptr;

VstIntPtr giveText(void* ptr, const char* text, std::size_t limit) {
    if (!ptr) {
        return 0;
    }
    const std::size_t length = std::min(std::strlen(text), limit);
    std::memcpy(ptr, text, length);
    static_cast<char*>(ptr)[length] = 0;
    return 1;
}

VstIntPtr canDo(const void* ptr) {
    if (!ptr) {
        return 0;
    }
    const std::string_view ability = static_cast<const char*>(ptr);
    return ability == "sendVstTimeInfo" || ability == "acceptIOChanges" ||
                   ability == "startStopProcess" || ability == "sizeWindow"
               ? 1
               : 0;
}

} // namespace

HostCallback::HostCallback(std::string pluginFolder) : folder_(std::move(pluginFolder)) {
    underConstruction = this;
}

HostCallback::~HostCallback() {
    if (underConstruction == this) {
        underConstruction = nullptr;
    }
}

void HostCallback::bind(AEffect& effect) {
    effect.user = this;
    underConstruction = nullptr;
}

VstIntPtr HostCallback::entry(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt) {
    switch (opcode) {
    case audioMasterVersion:
        return kInterfaceVersion;
    case audioMasterGetVendorString:
        return giveText(ptr, kVendor, kVstMaxVendorStrLen);
    case audioMasterGetProductString:
        return giveText(ptr, kProduct, kVstMaxProductStrLen);
    case audioMasterGetVendorVersion:
        return kVendorVersion;
    case audioMasterCanDo:
        return canDo(ptr);
    case audioMasterGetLanguage:
        return kLanguageEnglish;
    case audioMasterWillReplaceOrAccumulate:
        return kReplacing;
    default:
        break;
    }
    HostCallback* host =
        effect && effect->user ? static_cast<HostCallback*>(effect->user) : underConstruction;
    return host ? host->answer(effect, opcode, index, value) : 0;
}

VstIntPtr HostCallback::answer(const AEffect* effect, VstInt32 opcode, VstInt32 index,
                               VstIntPtr value) {
    switch (opcode) {
    case audioMasterPinConnected: {
        // 0 is the interface's word for connected.
        const VstInt32 pins = !effect ? 0 : value == 0 ? effect->numInputs : effect->numOutputs;
        return index >= 0 && index < pins ? 0 : 1;
    }
    case audioMasterGetTime:
        return timeInfo();
    case audioMasterTempoAt:
        return static_cast<VstIntPtr>(beatsPerMinute_ * 10000.0);
    case audioMasterGetNumAutomatableParameters:
        return effect ? effect->numParams : 0;
    case audioMasterGetParameterQuantization:
        return 1;
    case audioMasterGetSampleRate:
        return static_cast<VstIntPtr>(sampleRate_);
    case audioMasterGetBlockSize:
        return blockSize_;
    case audioMasterGetCurrentProcessLevel:
        if (processing_ != std::this_thread::get_id()) {
            return kProcessLevelUser;
        }
        return realTime_ ? kProcessLevelRealTime : kProcessLevelOffline;
    case audioMasterGetDirectory:
        return reinterpret_cast<VstIntPtr>(folder_.c_str());
    case audioMasterSizeWindow:
        return sizeRequest_ && sizeRequest_(index, static_cast<int>(value)) ? 1 : 0;
    case audioMasterIOChanged:
        ioChanged_ = true;
        return 1;
    case audioMasterUpdateDisplay:
    case audioMasterBeginEdit:
    case audioMasterEndEdit:
        return 1;
    default:
        return 0;
    }
}

VstIntPtr HostCallback::timeInfo() const {
    // The interface lets it go with the next call; each thread has its own.
    static thread_local VstTimeInfo time;
    const std::int64_t position = position_;
    const double seconds = static_cast<double>(position) / sampleRate_;
    const double beats = seconds * beatsPerMinute_ / 60.0;
    time = {};
    time.samplePos = static_cast<double>(position);
    time.sampleRate = sampleRate_;
    time.nanoSeconds = seconds * 1e9;
    time.ppqPos = beats;
    time.tempo = beatsPerMinute_;
    time.barStartPos =
        static_cast<double>(static_cast<std::int64_t>(beats / kBeatsPerBar)) * kBeatsPerBar;
    time.timeSigNumerator = static_cast<VstInt32>(kBeatsPerBar);
    time.timeSigDenominator = 4;
    time.flags = (playing_ ? kTransportPlaying : 0) | kNanosecondsValid | kBeatPositionValid |
                 kTempoValid | kBarStartValid | kTimeSignatureValid;
    return reinterpret_cast<VstIntPtr>(&time);
}

} // namespace tvhost
