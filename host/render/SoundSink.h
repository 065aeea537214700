// Where libsndfile's bytes go, with a memory for what went wrong.
#pragma once

#include <sndfile.h>

#include <string>

namespace tvhost {

// Some encoders of the library drop the errors of their writes, and of their last ones at closing;
// this remembers the first. It must stay where it is while the library uses it.
class SoundSink {
public:
    // `descriptor` stays its owner's. It must be open for reading, writing and seeking.
    explicit SoundSink(int descriptor) : descriptor_(descriptor) {}
    SoundSink(const SoundSink&) = delete;
    SoundSink& operator=(const SoundSink&) = delete;

    // Null when the library refuses the format, or failed() has happened already.
    SNDFILE* open(SF_INFO& info);

    // Whether a byte was lost so far; once true it stays so.
    bool failed() const { return fault_ != 0; }
    // What the system said, such as "No space left on device".
    std::string reason() const;

private:
    static SF_VIRTUAL_IO callbacks();

    sf_count_t write(const void* data, sf_count_t count);
    sf_count_t seek(sf_count_t offset, int whence);
    sf_count_t length();

    int descriptor_;
    int fault_ = 0; // errno of the first failure
};

} // namespace tvhost
