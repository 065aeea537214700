// Tells how the bundle fares on this Mac, for those who made it on another system: loads it, plays
// through it, opens its editor, and leaves a folder to send back.
//
//   mac-check [BUNDLE [FOLDER]]
//
// BUNDLE is TvDelay.vst beside the program unless it is given, and FOLDER mac-check-report beside
// it.
#include "mac-check/EditorRun.h"
#include "mac-check/EffectRun.h"
#include "mac-check/LoadedBundle.h"
#include "mac-check/Report.h"
#include "mac-check/SystemFacts.h"

#include "plugin/vst2/EffectOpcodes.h"

#import <Foundation/Foundation.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

#include <mach-o/dyld.h>

namespace {

constexpr int kLongestPath = 1024;

// A path beside the program.
void beside(const char* name, char (&path)[kLongestPath]) {
    char own[kLongestPath] = "mac-check";
    std::uint32_t size = sizeof(own);
    _NSGetExecutablePath(own, &size);
    char* const end = std::strrchr(own, '/');
    if (end != nullptr) {
        *end = 0;
    }
    std::snprintf(path, sizeof(path), "%s/%s", end != nullptr ? own : ".", name);
}

int check(const char* bundle, Report& report) {
    reportSystem(report);
    LoadedBundle loaded(bundle, report);
    if (loaded.entry() == nullptr) {
        return 1;
    }
    AEffect* const effect = loaded.entry()(checkingHost);
    if (effect == nullptr) {
        report.line("NO INSTANCE");
        return 1;
    }
    reportRecord(effect, report);
    reportSound(loaded.entry(), report);
    reportEditor(effect, report);
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    report.heading("End");
    loaded.unload();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        char bundle[kLongestPath];
        char folder[kLongestPath];
        beside("TvDelay.vst", bundle);
        beside("mac-check-report", folder);
        if (argc > 3) {
            std::fputs("mac-check: name the bundle and the folder for the report, or neither\n",
                       stderr);
            return 2;
        }
        Report report(argc > 2 ? argv[2] : folder);
        if (!report.isOpen()) {
            std::fprintf(stderr,
                         "mac-check: nothing can be written into %s; name another folder behind "
                         "the bundle\n",
                         report.folder());
            return 2;
        }
        const int status = check(argc > 1 ? argv[1] : bundle, report);
        report.line("Please send this folder: %s", report.folder());
        return status;
    }
}
