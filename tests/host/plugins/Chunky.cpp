// Keeps its state in chunks: each program is its number and one value. Declines presets of version
// 99. Its sound is its input times the value.
#include "plugin/vst2/Records.h"
#include "tests/host/plugins/TestEffect.h"

namespace {

constexpr int kPrograms = 3;

class Chunky : public TestEffect {
public:
    explicit Chunky(audioMasterCallback master) : TestEffect(master, 2, 2, 1, kPrograms) {
        record.uniqueID = packFourCharacters('C', 'h', 'n', 'k');
        record.flags |= effFlagsProgramChunks;
    }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Chunky");
        case effGetParamName:
            return give(ptr, "Value");
        case effGetProgram:
            return program_;
        case effSetProgram:
            program_ = static_cast<int>(value);
            return 0;
        case effGetProgramName:
            return give(ptr, "Number " + std::to_string(program_));
        case effGetProgramNameIndexed:
            return give(ptr, "Number " + std::to_string(index));
        case effGetChunk:
            return give(index != 0, static_cast<void**>(ptr));
        case effSetChunk:
            return take(index != 0, static_cast<const float*>(ptr), value);
        case effBeginLoadBank:
        case effBeginLoadProgram:
            return static_cast<const VstPatchChunkInfo*>(ptr)->pluginVersion == 99 ? -1 : 1;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    using TestEffect::give;
    VstIntPtr give(bool one, void** bytes) {
        *bytes = one ? &values_[program_] : values_;
        return static_cast<VstIntPtr>(one ? sizeof(float) : sizeof values_);
    }
    VstIntPtr take(bool one, const float* bytes, VstIntPtr size) {
        const int count = one ? 1 : kPrograms;
        if (size != static_cast<VstIntPtr>(sizeof(float)) * count) {
            return 0;
        }
        std::memcpy(one ? &values_[program_] : values_, bytes, static_cast<std::size_t>(size));
        return 1;
    }
    void setParameter(int, float value) override { values_[program_] = value; }
    float getParameter(int) override { return values_[program_]; }
    void process(float** in, float** out, int frames) override {
        for (int c = 0; c < 2; ++c) {
            for (int i = 0; i < frames; ++i) {
                out[c][i] = in[c][i] * values_[program_];
            }
        }
    }

private:
    int program_ = 0;
    float values_[kPrograms] = {0.25f, 0.5f, 0.75f};
};

} // namespace

EXPORT_EFFECT(Chunky)
