#include "host/render/SampleRateConverter.h"

#include "host/base/UserError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using namespace tvhost;

namespace {

constexpr double kTone = 1000.0;

// Two channels: a tone, and its negative at half level.
class Tone : public FrameSource {
public:
    Tone(int sampleRate, int frames) : rate_(sampleRate), length_(frames) {}

    int channels() const override { return 2; }
    int sampleRate() const override { return rate_; }
    std::int64_t expectedFrames() const override { return length_; }
    int read(float* interleaved, int frames) override {
        const int count = std::min(frames, length_ - position_);
        for (int i = 0; i < count; ++i, ++position_) {
            const double phase = 2.0 * M_PI * kTone * position_ / rate_;
            interleaved[2 * i] = static_cast<float>(0.5 * std::sin(phase));
            interleaved[2 * i + 1] = -0.5f * interleaved[2 * i];
        }
        return count;
    }

private:
    int rate_;
    int length_;
    int position_ = 0;
};

std::vector<float> readAll(FrameSource& source, int atATime) {
    std::vector<float> all;
    std::vector<float> some(static_cast<std::size_t>(atATime * source.channels()));
    for (;;) {
        const int count = source.read(some.data(), atATime);
        all.insert(all.end(), some.begin(), some.begin() + count * source.channels());
        if (count < atATime) {
            return all;
        }
    }
}

} // namespace

TEST(SampleRateConverter, KeepsPitchLevelChannelsAndLength) {
    const int rates[][2] = {{44100, 48000}, {48000, 44100}, {44100, 96000}, {96000, 22050}};
    for (const auto& [from, to] : rates) {
        SampleRateConverter converter(std::make_unique<Tone>(from, from), to, "tone");
        EXPECT_EQ(converter.sampleRate(), to);
        EXPECT_EQ(converter.channels(), 2);
        EXPECT_EQ(converter.expectedFrames(), to);
        const std::vector<float> out = readAll(converter, 1000);
        const auto frames = static_cast<int>(out.size() / 2);
        EXPECT_NEAR(frames, to, 2) << from << " to " << to;
        // The middle, away from where the tone is cut.
        for (int i = to / 4; i < to * 3 / 4; ++i) {
            const double expected = 0.5 * std::sin(2.0 * M_PI * kTone * i / to);
            const std::size_t at = static_cast<std::size_t>(2 * i);
            ASSERT_NEAR(out[at], expected, 1e-4) << from << " to " << to << " at " << i;
            ASSERT_NEAR(out[at + 1], -0.5 * expected, 1e-4);
        }
    }
}

TEST(SampleRateConverter, GivesTheSameHoweverItIsRead) {
    SampleRateConverter reference(std::make_unique<Tone>(44100, 30000), 48000, "tone");
    const std::vector<float> expected = readAll(reference, 100000);
    for (const int atATime : {1, 7, 64, 4096, 8192}) {
        SampleRateConverter converter(std::make_unique<Tone>(44100, 30000), 48000, "tone");
        const std::vector<float> out = readAll(converter, atATime);
        ASSERT_EQ(out.size(), expected.size());
        EXPECT_EQ(std::memcmp(out.data(), expected.data(), out.size() * sizeof(float)), 0)
            << atATime;
    }
}

TEST(SampleRateConverter, TakesTheShortestStream) {
    SampleRateConverter converter(std::make_unique<Tone>(44100, 1), 88200, "tone");
    EXPECT_NEAR(static_cast<double>(readAll(converter, 16).size()) / 2, 2.0, 1.0);
}

TEST(SampleRateConverter, RefusesRatiosTheLibraryCannotDo) {
    EXPECT_THROW(SampleRateConverter(std::make_unique<Tone>(100, 10), 192000, "tone"), UserError);
}
