// What every CoreFoundation object of this supply is: a count of owners.
#pragma once

#include <mutex>

class CFObject {
public:
    CFObject() = default;
    virtual ~CFObject() = default;
    CFObject(const CFObject&) = delete;
    CFObject& operator=(const CFObject&) = delete;

    // Any thread. The last release deletes the object, under the lock.
    void retain();
    void release();

    // Guards all counts, and what finds objects again that may be about to go.
    static std::recursive_mutex& lock();

private:
    int owners_ = 1;
};
