#include "bench/RatioReporter.h"

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv, 9);
}
