#include "host/base/SignalGuard.h"
#include "host/commands/CommandLine.h"

int main(int argc, char** argv) {
    tvhost::guardAgainstSignals();
    return tvhost::runCommandLine(argc, argv);
}
