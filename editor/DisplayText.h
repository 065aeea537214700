// The texts that the editor's displays print.
#pragma once

#include <cstdint>
#include <string>

std::string percentText(std::int32_t percent);
std::string numberText(std::int32_t number);

// Counts of 2^31 and more print as negative numbers.
std::string loadingText(std::uint32_t currentSamples, std::uint32_t totalSamples);
