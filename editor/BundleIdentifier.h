// The identifier in the bundle's Info.plist.
#pragma once

inline constexpr char kBundleIdentifier[] = "com.tarnvalemusic.TvDelay";
