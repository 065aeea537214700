#include "mac-check/Report.h"

#include <cstdarg>
#include <initializer_list>

#include <sys/stat.h>

Report::Report(const char* folder) {
    std::snprintf(folder_, sizeof(folder_), "%s", folder);
    mkdir(folder_, 0755);
    file_ = std::fopen(path("report.txt"), "w");
}

Report::~Report() {
    if (file_ != nullptr) {
        std::fclose(file_);
    }
}

const char* Report::path(const char* name) {
    std::snprintf(path_, sizeof(path_), "%s/%s", folder_, name);
    return path_;
}

void Report::heading(const char* text) {
    line("%s", "");
    line("== %s", text);
}

// At once into the file: whatever comes next may end the program.
void Report::line(const char* format, ...) {
    char text[2048];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    for (FILE* const to : {stdout, file_}) {
        if (to != nullptr) {
            std::fprintf(to, "%s\n", text);
            std::fflush(to);
        }
    }
}
