// What the user got wrong, in one line.
#pragma once

#include <stdexcept>

class UserError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
