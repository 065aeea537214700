// Opens the Linux bundle's editor and writes what the screen shows of it: linux_face PLUGIN FILE.
// In a process of its own, for the classes have the names of the macOS bundle's.
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("linux_face: name the plug-in and the file to write\n", stderr);
        return 2;
    }
    sharedXServer();
    const LoadedPlugin plugin(argv[1]);
    HostedEditor editor(plugin.entry()(plainHost));
    if (!editor.shows(kSlapBack)) {
        std::fputs("linux_face: the editor doesn't show the first program\n", stderr);
        return 1;
    }
    const ScreenPart face = editor.settledScreen();
    FILE* const file = std::fopen(argv[2], "wb");
    if (file == nullptr) {
        std::perror("linux_face");
        return 1;
    }
    const std::size_t written =
        std::fwrite(face.pixels.data(), sizeof(Pixel), face.pixels.size(), file);
    return std::fclose(file) == 0 && written == face.pixels.size() ? 0 : 1;
}
