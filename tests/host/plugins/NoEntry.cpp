// A shared object that is no plug-in.
extern "C" __attribute__((visibility("default"))) int answer() {
    return 42;
}
