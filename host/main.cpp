#include "host/CommandLine.h"
#include "host/SignalGuard.h"

int main(int argc, char** argv) {
    tvhost::guardAgainstSignals();
    return tvhost::runCommandLine(argc, argv);
}
