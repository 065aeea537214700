// Silence on standard error while a library works that talks there.
#pragma once

namespace tvhost {

// What anybody in this process writes to standard error goes nowhere while it lives. One at a time.
class QuietErrors {
public:
    QuietErrors();
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    int kept_;
};

} // namespace tvhost
