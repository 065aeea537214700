#pragma once

// The identifier in the bundle's Info.plist.
inline constexpr char kBundleIdentifier[] = "com.tarnvalemusic.TvDelay";
