// Where libsndfile's bytes go, with a memory for what went wrong.
#pragma once

#include <sndfile.h>

#include <string>

namespace tvhost {

// Some encoders of the library drop the errors of their writes, and of their last ones at closing;
// this remembers the first. It must stay where it is while the library uses it.
class SoundSink {
public:
    enum class Kind {
        kFile,  // open for reading, writing and seeking
        kStream // only written, from its beginning to its end
    };

    // `descriptor` stays its owner's.
    SoundSink(int descriptor, Kind kind) : descriptor_(descriptor), kind_(kind) {}
    SoundSink(const SoundSink&) = delete;
    SoundSink& operator=(const SoundSink&) = delete;

    // Null when the library refuses the format, or failed() has happened already.
    SNDFILE* open(SF_INFO& info);

    // Before open(): what is no sound of the library's, such as a header. Answers how many bytes
    // were taken; fewer than `count` once failed().
    sf_count_t write(const void* data, sf_count_t count);

    // Bytes written so far.
    sf_count_t bytesWritten() const { return written_; }

    // Whether a byte was lost so far; once true it stays so.
    bool failed() const { return fault_ != 0; }
    // What the system said, such as "No space left on device".
    std::string reason() const;
    // Whether that was because nobody reads any more.
    bool readerHasGone() const;

private:
    static SF_VIRTUAL_IO callbacks();

    sf_count_t seek(sf_count_t offset, int whence);
    sf_count_t length();

    int descriptor_;
    Kind kind_;
    sf_count_t written_ = 0;
    int fault_ = 0; // errno of the first failure
};

} // namespace tvhost
