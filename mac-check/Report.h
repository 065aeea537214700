// What the check finds out: a text file, line by line, and the same lines on the screen.
#pragma once

#include <cstdio>

// One thread. A line that can't be written is lost, and nothing else.
class Report {
public:
    // Makes the folder and the file in it. isOpen tells whether that went well.
    explicit Report(const char* folder);
    ~Report();
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    bool isOpen() const { return file_ != nullptr; }
    const char* folder() const { return folder_; }
    // The path of a file in the folder, good until the next call.
    const char* path(const char* name);

    void heading(const char* text);
    void line(const char* format, ...) __attribute__((format(printf, 2, 3)));

private:
    static constexpr int kLongestPath = 1024;

    char folder_[kLongestPath];
    char path_[kLongestPath];
    FILE* file_;
};
