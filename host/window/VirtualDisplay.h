// An X server in memory, for editors where there is no screen.
#pragma once

#include <sys/types.h>

namespace tvhost {

// An X server in memory, of this process alone, which DISPLAY names as long as it lives. It ends
// with the object, and also with the process, however that ends. One at a time.
class VirtualDisplay {
public:
    static constexpr int kWidth = 4096; // pixels
    static constexpr int kHeight = 4096;

    // Returns when the server listens. Throws UserError when Xvfb is missing or doesn't start.
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

private:
    pid_t server_ = -1;
};

} // namespace tvhost
