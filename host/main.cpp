#include "host/base/ProcessSignals.h"
#include "host/commands/CommandLine.h"

int main(int argc, char** argv) {
    tvhost::guardProcessSignals();
    return tvhost::runCommandLine(argc, argv);
}
