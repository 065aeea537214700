// What every CoreFoundation object of this supply is: a count of owners.
#pragma once

class CFObject {
public:
    CFObject() = default;
    virtual ~CFObject() = default;
    CFObject(const CFObject&) = delete;
    CFObject& operator=(const CFObject&) = delete;

    void retain() { ++owners; }
    // Deletes the object with its last owner.
    void release() {
        if (--owners == 0) {
            delete this;
        }
    }

private:
    int owners = 1;
};
