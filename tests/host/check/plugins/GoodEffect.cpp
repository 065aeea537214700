#include "tests/host/check/plugins/GoodEffect.h"

#include <X11/Xlib.h>

#include <algorithm>

namespace {

constexpr float kDefaults[] = {0.8f, 0.5f, 0.5f, 0.5f};
constexpr const char* kNames[] = {"Gain", "One", "Two", "Three"};
constexpr const char* kProgramNames[] = {"Plain", "Other", "Third"};
constexpr VstInt32 kBankMark = packFourCharacters('G', 'B', 'n', 'k');
constexpr VstInt32 kProgramMark = packFourCharacters('G', 'P', 'r', 'g');

template <typename Value>
void put(std::vector<char>& bytes, Value value) {
    const auto* const at = reinterpret_cast<const char*>(&value);
    bytes.insert(bytes.end(), at, at + sizeof value);
}

template <typename Value>
Value take(const char*& at) {
    Value value;
    std::memcpy(&value, at, sizeof value);
    at += sizeof value;
    return value;
}

} // namespace

GoodEffect::GoodEffect(audioMasterCallback master)
    : TestEffect(master, 2, 2, kParameters, kPrograms) {
    record.flags |= effFlagsHasEditor | effFlagsProgramChunks;
    record.uniqueID = packFourCharacters('G', 'o', 'o', 'd');
    for (auto& program : values_) {
        std::copy(std::begin(kDefaults), std::end(kDefaults), program.begin());
    }
}

GoodEffect::~GoodEffect() {
    GoodEffect::closeEditor();
}

VstIntPtr GoodEffect::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt) {
    const bool isParameter = index >= 0 && index < kParameters;
    switch (opcode) {
    case effGetEffectName:
    case effGetProductString:
        return give(ptr, "Good");
    case effGetVendorString:
        return give(ptr, "Tests");
    case effGetParamName:
        return isParameter ? give(ptr, kNames[index]) : 0;
    case effGetParamLabel:
        return isParameter ? give(ptr, "units") : 0;
    case effGetParamDisplay:
        return isParameter ? give(ptr, std::to_string(parameterValue(index)).substr(0, 8)) : 0;
    case effCanBeAutomated:
        return isParameter ? 1 : 0;
    case effSetProgram:
        if (value >= 0 && value < kPrograms) {
            program_ = static_cast<int>(value);
        }
        return 0;
    case effGetProgram:
        return program_;
    case effGetProgramName:
        return give(ptr, kProgramNames[program_]);
    case effGetProgramNameIndexed:
        return index >= 0 && index < kPrograms ? give(ptr, kProgramNames[index]) : 0;
    case effMainsChanged:
        on_ = value != 0;
        return 0;
    case effGetTailSize:
        return 1;
    case effGetChunk:
        given_ = chunk(index == 0);
        *static_cast<void**>(ptr) = given_.data();
        return static_cast<VstIntPtr>(given_.size());
    case effSetChunk:
        return takeChunk(index == 0, static_cast<const char*>(ptr), static_cast<std::size_t>(value))
                   ? 1
                   : 0;
    case effEditGetRect:
        *static_cast<ERect**>(ptr) = &rectangle;
        return 1;
    case effEditOpen:
        openEditor(reinterpret_cast<unsigned long>(ptr));
        return 1;
    case effEditIdle:
        idleEditor();
        return 0;
    case effEditClose:
        closeEditor();
        return 0;
    default:
        return TestEffect::dispatch(opcode, index, value, ptr, opt);
    }
}

std::atomic<float>& GoodEffect::parameterValue(int index) {
    return values_[static_cast<std::size_t>(program_)][static_cast<std::size_t>(index)];
}

void GoodEffect::setParameter(int index, float value) {
    if (index >= 0 && index < kParameters) {
        parameterValue(index) = value;
    }
}

float GoodEffect::getParameter(int index) {
    return index >= 0 && index < kParameters ? parameterValue(index).load() : 0.0f;
}

void GoodEffect::process(float** in, float** out, int frames) {
    const float level = gain();
    for (int c = 0; c < 2; ++c) {
        for (int i = 0; i < frames; ++i) {
            out[c][i] = in[c][i] * level;
        }
    }
}

std::vector<char> GoodEffect::chunk(bool bank) {
    std::vector<char> bytes;
    put(bytes, bank ? kBankMark : kProgramMark);
    put(bytes, program_);
    for (int program = 0; program < kPrograms; ++program) {
        for (const std::atomic<float>& value : values_[static_cast<std::size_t>(program)]) {
            if (bank || program == program_) {
                put(bytes, value.load());
            }
        }
    }
    return bytes;
}

bool GoodEffect::takeChunk(bool bank, const char* data, std::size_t size) {
    const std::size_t values = bank ? kPrograms * kParameters : kParameters;
    if (size != 2 * sizeof(VstInt32) + values * sizeof(float) ||
        take<VstInt32>(data) != (bank ? kBankMark : kProgramMark)) {
        return false;
    }
    const auto chosen = take<VstInt32>(data);
    if (chosen < 0 || chosen >= kPrograms) {
        return false;
    }
    program_ = bank ? chosen : program_;
    for (int program = 0; program < kPrograms; ++program) {
        for (std::atomic<float>& value : values_[static_cast<std::size_t>(program)]) {
            if (bank || program == program_) {
                value = take<float>(data);
            }
        }
    }
    return true;
}

void GoodEffect::openEditor(unsigned long parent) {
    closeEditor();
    parent_ = parent;
    display_ = XOpenDisplay(nullptr);
    if (!display_) {
        return;
    }
    child_ = XCreateSimpleWindow(display_, parent, 0, 0, 120, 80, 0, 0, 0x336699);
    XMapWindow(display_, child_);
    XSync(display_, False);
}

void GoodEffect::closeEditor() {
    if (!display_) {
        return;
    }
    if (destroysWindow) {
        XDestroyWindow(display_, child_);
        XSync(display_, False);
        XCloseDisplay(display_);
    }
    display_ = nullptr;
    child_ = 0;
}
