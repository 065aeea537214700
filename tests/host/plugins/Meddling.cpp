// Does one thing that is its host's alone, which MEDDLE names: prints, changes the folder, ends the
// program, or crashes as it is closed.
#include "tests/host/plugins/TestEffect.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

namespace {

class Meddling : public TestEffect {
public:
    explicit Meddling(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effOpen:
            if (wants("print")) {
                std::puts("loaded, enjoy");
                std::fflush(stdout);
            }
            if (wants("folder") && chdir("/") != 0) {
                std::abort();
            }
            return 0;
        case effMainsChanged:
            if (value != 0 && wants("exit")) {
                std::exit(0);
            }
            return 0;
        case effClose:
            if (wants("crash")) {
                std::abort();
            }
            return 0;
        case effGetEffectName:
            return give(ptr, "Meddling");
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }

private:
    static bool wants(const char* deed) {
        const char* const wish = std::getenv("MEDDLE");
        return wish && std::string(wish) == deed;
    }
};

} // namespace

EXPORT_EFFECT(Meddling)
