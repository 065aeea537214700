// Parameter changes on the output's time line.
#pragma once

#include "host/plugin/EffectInstance.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tvhost {

// Parameter changes on the output's time line. Values step: each is set before its frame is
// processed and holds until the next. Changes at one frame come in the order given.
class Automation {
public:
    // Each text is NAME=T:V,T:V,... with T in seconds from 0 up and V normalised. Throws UserError
    // for anything else.
    Automation(const EffectInstance& effect, const std::vector<std::string>& texts,
               double sampleRate);

    // Sets what is due at `frame` or before. Frames must not go backwards.
    void apply(EffectInstance& effect, std::int64_t frame);

    // How many frames from `frame` on may be processed before apply() is due again, at most
    // `limit`.
    std::int64_t framesUntilNext(std::int64_t frame, std::int64_t limit) const;

    // The frame of the last change; 0 when there is none.
    std::int64_t lastFrame() const;

    // Changes that apply() has not reached.
    std::size_t pending() const { return points_.size() - next_; }

private:
    struct Point {
        std::int64_t frame;
        int parameter;
        float value;
    };

    // `text` is T:V, `where` names it in messages.
    static Point pointFrom(const std::string& text, const std::string& where, int parameter,
                           double sampleRate);

    std::vector<Point> points_;
    std::size_t next_ = 0;
};

} // namespace tvhost
