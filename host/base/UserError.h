// The one exception for what a user can put right.
#pragma once

#include <stdexcept>
#include <string>

namespace tvhost {

// Something given cannot be used. The text is one line that says what is wrong and what would be
// right; it goes to standard error and the program ends with status 2.
class UserError : public std::runtime_error {
public:
    explicit UserError(const std::string& text) : std::runtime_error(text) {}
};

} // namespace tvhost
