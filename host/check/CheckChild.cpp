#include "host/check/CheckChild.h"

#include "host/base/ProcessSignals.h"
#include "host/base/UserError.h"
#include "host/check/CheckTable.h"
#include "host/check/CheckedEffect.h"

#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tvhost {

namespace {

void tellPlugin(CheckRun& run, CheckReport& report) {
    CheckedEffect effect(run);
    std::string name = effect.text(effGetEffectName);
    if (name.empty()) {
        name = effect.text(effGetProductString);
    }
    if (name.empty()) {
        name = run.module()->file().stem().string();
    }
    report.answer(nlohmann::json{{"name", name},
                                 {"uniqueId", effect.record().uniqueID},
                                 {"hasEditor", effect.has(effFlagsHasEditor)}}
                      .dump());
}

} // namespace

void runCheckChild(const std::filesystem::path& plugin, const std::string& checkName,
                   std::uint64_t seed) noexcept {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    constexpr rlimit kNoCore{0, 0};
    setrlimit(RLIMIT_CORE, &kNoCore);
    fcntl(kCheckReportDescriptor, F_SETFD, FD_CLOEXEC);
    void* const place = mmap(nullptr, sizeof(LastCall), PROT_READ | PROT_WRITE, MAP_SHARED,
                             kCheckMemoryDescriptor, 0);
    if (place == MAP_FAILED) {
        std::fprintf(stderr, "tvhost: this option is for tvhost's own use\n");
        _exit(2);
    }
    close(kCheckMemoryDescriptor);
    CheckReport report(kCheckReportDescriptor);
    const Check* const check = checkName.empty() ? nullptr : findCheck(checkName);
    CheckRun run(plugin, checkName, seed, report, *static_cast<LastCall*>(place));
    try {
        if (check) {
            check->run(run);
        } else {
            tellPlugin(run, report);
        }
    } catch (const CheckSkipped& reason) {
        report.skipped(reason.what());
    } catch (const UserError& error) {
        report.refused(error.what());
    }
    report.done();
    std::fflush(nullptr);
    if (check && check->endsInOrder) {
        endProcessGuard();
        std::exit(0);
    }
    // Other checks aren't about what a plug-in does when its process ends.
    _exit(0);
}

} // namespace tvhost
