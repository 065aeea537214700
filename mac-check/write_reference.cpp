// Writes Reference.cpp, from the Linux bundle: write_reference PLUGIN.
#include "mac-check/Reference.h"
#include "plugin/vst2/EffectOpcodes.h"

#include <cinttypes>
#include <cstdio>

#include <dlfcn.h>

namespace {

void writeProgram(const ProgramResult& result) {
    std::printf("    {0x%016" PRIx64 ",\n     {", result.hash);
    for (int i = 0; i < kSpots; ++i) {
        const char* const before = i == 0 ? "" : i % 8 == 0 ? ",\n      " : ", ";
        std::printf("%s0x%08" PRIx32, before, result.spots[i]);
    }
    std::printf("}},\n");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("write_reference: name the Linux plug-in\n", stderr);
        return 2;
    }
    void* const plugin = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        std::fprintf(stderr, "write_reference: %s\n", dlerror());
        return 1;
    }
    const auto entry = reinterpret_cast<EffectEntry>(dlsym(plugin, "VSTPluginMain"));
    std::printf("// Written by write_reference.\n#include \"mac-check/Reference.h\"\n\n"
                "// clang-format off\n\nconst ProgramResult kReferencePrograms[kPrograms] = {\n");
    for (int program = 0; program < kPrograms; ++program) {
        writeProgram(runProgram(entry, program));
    }
    std::printf("};\n\nconst std::uint64_t kReferenceTexts[kParameters] = {\n");
    AEffect* const effect = entry(checkingHost);
    for (int parameter = 0; parameter < kParameters; ++parameter) {
        std::printf("    0x%016" PRIx64 ",\n", hashOfTexts(effect, parameter));
    }
    std::printf("};\n");
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    return 0;
}
