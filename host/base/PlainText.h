// Texts of plug-ins and users, made fit for one line.
#pragma once

#include <string>
#include <string_view>

namespace tvhost {

// `text` as valid UTF-8 on one line: bytes that are no UTF-8 become U+FFFD, control characters
// become blanks, blanks at both ends go.
std::string plainText(std::string_view text);

// Whether both texts are equal when ASCII letters count without case.
bool equalWithoutCase(std::string_view a, std::string_view b);

// How many columns `text` (valid UTF-8) takes on a terminal when every character takes one.
std::size_t columnsOf(std::string_view text);

} // namespace tvhost
