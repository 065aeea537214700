// What a running check tells the process that started it.
#pragma once

#include <string>

namespace tvhost {

// Lines of JSON on a pipe. Each call writes at once, so that what was found survives a crash. Any
// thread.
class CheckReport {
public:
    // `descriptor` stays the caller's.
    explicit CheckReport(int descriptor) : descriptor_(descriptor) {}

    // `topic` is a short fixed word, `text` one line for people.
    void finding(const std::string& topic, const std::string& text);
    // The check says nothing about this plug-in, for the reason given.
    void skipped(const std::string& reason);
    // The plug-in can't be run at all.
    void refused(const std::string& reason);
    void answer(const std::string& json);
    void done();

private:
    void write(const std::string& line);

    int descriptor_;
};

} // namespace tvhost
