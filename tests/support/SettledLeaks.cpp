// What an instance, and the Objective-C runtime under its editor, are known to leave allocated, so
// that the leak detector reports only what it should not. Linked into every test program that makes
// instances.

extern "C" const char* __lsan_default_suppressions() {
    return "leak:VstXSynth::VstXSynth\n"
           "leak:VstXSynth::followSampleRate\n"
           "leak:libobjc.so\n";
}
