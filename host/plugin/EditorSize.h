// The size of an editor.
#pragma once

namespace tvhost {

// Of an editor, in pixels.
struct EditorSize {
    static constexpr int kLargest = 32767; // of X11's windows

    int width = 0;
    int height = 0;

    bool isUsable() const {
        return width > 0 && height > 0 && width <= kLargest && height <= kLargest;
    }
    bool operator==(const EditorSize& other) const {
        return width == other.width && height == other.height;
    }
    bool operator!=(const EditorSize& other) const { return !(*this == other); }
};

} // namespace tvhost
