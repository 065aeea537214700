// Passes its inputs on, has a bank of programs, and keeps 16 MB of each instance for ever.
#include "tests/host/plugins/TestEffect.h"

#include <algorithm>
#include <cstdlib>

namespace {

class Hoarding : public TestEffect {
public:
    explicit Hoarding(audioMasterCallback master) : TestEffect(master, 1, 1, 0, 24) {
        constexpr std::size_t kHoard = std::size_t{1} << 24;
        auto* const hoard = static_cast<char*>(std::malloc(kHoard));
        if (hoard == nullptr) {
            std::abort();
        }
        std::fill_n(hoard, kHoard, '\1');
        hoard_ = hoard;
    }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effGetProgram:
            return program_;
        case effSetProgram:
            program_ = value;
            return 0;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }

private:
    const char* volatile hoard_;
    VstIntPtr program_ = 0;
};

} // namespace

EXPORT_EFFECT(Hoarding)
