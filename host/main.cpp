#include "host/base/ProcessSignals.h"
#include "host/base/StandardOutput.h"
#include "host/base/StartFolder.h"
#include "host/commands/CommandLine.h"

int main(int argc, char** argv) {
    tvhost::keepStandardOutput();
    tvhost::rememberStartFolder();
    tvhost::guardProcessSignals();
    tvhost::guardProcessExit();
    const int status = tvhost::runCommandLine(argc, argv);
    tvhost::endProcessGuard();
    return status;
}
