#include "host/check/CheckReport.h"

#include "host/base/PlainText.h"

#include <nlohmann/json.hpp>

#include <cerrno>

#include <unistd.h>

namespace tvhost {

using Json = nlohmann::ordered_json;

void CheckReport::finding(const std::string& topic, const std::string& text) {
    write(Json{{"finding", topic}, {"text", plainText(text)}}.dump());
}

void CheckReport::skipped(const std::string& reason) {
    write(Json{{"skipped", plainText(reason)}}.dump());
}

void CheckReport::refused(const std::string& reason) {
    write(Json{{"refused", plainText(reason)}}.dump());
}

void CheckReport::answer(const std::string& json) {
    write(Json{{"answer", Json::parse(json)}}.dump());
}

void CheckReport::done() {
    write(Json{{"done", true}}.dump());
}

void CheckReport::write(const std::string& line) {
    const std::string whole = line + "\n";
    std::size_t written = 0;
    while (written < whole.size()) {
        const ssize_t count = ::write(descriptor_, whole.data() + written, whole.size() - written);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return; // nobody listens any more
        }
        written += static_cast<std::size_t>(count);
    }
}

} // namespace tvhost
