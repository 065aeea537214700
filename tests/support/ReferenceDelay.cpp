#include "tests/support/ReferenceDelay.h"

#include "tests/support/Bits.h"
#include "tests/support/FactoryTable.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// What the machine's truncating conversion gives, also where the language defines nothing.
template <typename Integer, typename Real>
Integer truncated(Real value) {
    const Real low = static_cast<Real>(std::numeric_limits<Integer>::min());
    if (value >= low && value < -low) {
        return static_cast<Integer>(value);
    }
    return std::numeric_limits<Integer>::min();
}

std::vector<double> makeSineTable() {
    const double radiansPerDegree = doubleOf(std::uint64_t{0x3F91DF46A2525FF7});
    std::vector<double> table;
    float angle = 0.0f;
    for (std::int64_t i = 0; i < ReferenceDelay::kSineEntries; ++i) {
        table.push_back(std::sin(static_cast<double>(angle) * radiansPerDegree));
        const double next = static_cast<double>(angle) + 0.001;
        angle = static_cast<float>(next);
    }
    return table;
}

void filter(ReferenceFilter& stage, float& tap) {
    tap = static_cast<float>(stage.tick(static_cast<double>(tap)));
}

} // namespace

const std::vector<double>& ReferenceDelay::sineTable() {
    static const std::vector<double> table = makeSineTable();
    return table;
}

ReferenceDelay::ReferenceDelay() : delayBufferLeft(kCapacity), delayBufferRight(kCapacity) {
    for (const FactoryRow& row : kFactoryTable) {
        programs.push_back({row.delayTime, row.feedBack, row.lowPass, row.highPass,
                            row.highPassType, row.lowPassType, row.leftRight, row.panDepth, row.mix,
                            row.name});
    }
    makeFilters();
    setProgram(0);
}

void ReferenceDelay::makeFilters() {
    const auto rate = truncated<std::int32_t>(sampleRate);
    for (ReferenceFilter* stage : {&lowPassLeft, &lowPassRight}) {
        stage->init(600, 1800, rate);
        stage->lowGain = 1.0;
        stage->midGain = 0.0;
        stage->highGain = 0.0;
    }
    for (ReferenceFilter* stage : {&highPassLeft, &highPassRight}) {
        stage->init(6000, 18500, rate);
        stage->lowGain = 0.0;
        stage->midGain = 1.0;
        stage->highGain = 1.0;
    }
}

void ReferenceDelay::takeLength() {
    delayPosition = 0;
    const float longest = sampleRate + (-1.0f);
    const float length = longest * delayTime;
    delayLength = truncated<std::int64_t>(length);
}

void ReferenceDelay::clearLines() {
    std::fill(delayBufferLeft.begin(), delayBufferLeft.end(), 0.0f);
    std::fill(delayBufferRight.begin(), delayBufferRight.end(), 0.0f);
}

void ReferenceDelay::resume() {
    clearLines();
}

void ReferenceDelay::setParameter(std::int32_t index, float value) {
    Program& record = programs[static_cast<std::size_t>(curProgram)];
    const double wide = static_cast<double>(value);
    const bool on = !std::isnan(value) && value != 0.0f;
    if (index == 0) {
        delayTime = value;
        record.delayTime = value;
        takeLength();
        clearLines();
    } else if (index == 1) {
        record.feedBack = feedBack = value;
    } else if (index == 2) {
        record.lowPass = lowPass = wide;
        lowPassLeft.midGain = lowPassLeft.highGain = 1.0 - wide;
        lowPassRight.midGain = lowPassRight.highGain = 1.0 - wide;
    } else if (index == 3) {
        record.highPass = highPass = wide;
        highPassLeft.lowGain = highPassRight.lowGain = 1.0 - wide;
        record.lowPassType = lowPassType = on;
    } else if (index == 4) {
        record.lowPassType = lowPassType = on;
    } else if (index == 5) {
        record.highPassType = highPassType = on;
    } else if (index == 6) {
        record.leftRight = leftRight = wide;
    } else if (index == 7) {
        record.panDepth = panDepth = wide;
    } else if (index == 8) {
        record.mix = mix = wide;
    }
}

float ReferenceDelay::getParameter(std::int32_t index) const {
    switch (index) {
    case 0:
        return delayTime;
    case 1:
        return feedBack;
    case 2:
        return static_cast<float>(lowPass);
    case 3:
        return static_cast<float>(highPass);
    case 4:
        return lowPassType ? 1.0f : 0.0f;
    case 5:
        return highPassType ? 1.0f : 0.0f;
    case 6:
        return static_cast<float>(leftRight);
    case 7:
        return static_cast<float>(panDepth);
    case 8:
        return static_cast<float>(mix);
    default:
        return 0.0f;
    }
}

void ReferenceDelay::setProgram(std::int32_t program) {
    if (program < 0 || program >= kPrograms) {
        return;
    }
    curProgram = program;
    const auto record = [&]() -> Program& { return programs[static_cast<std::size_t>(program)]; };
    setParameter(0, record().delayTime);
    setParameter(1, record().feedBack);
    setParameter(2, static_cast<float>(record().lowPass));
    setParameter(3, static_cast<float>(record().highPass));
    setParameter(4, record().lowPassType ? 1.0f : 0.0f);
    setParameter(5, record().highPassType ? 1.0f : 0.0f);
    setParameter(6, static_cast<float>(record().leftRight));
    setParameter(7, static_cast<float>(record().panDepth));
    setParameter(8, static_cast<float>(record().mix));
}

void ReferenceDelay::followSampleRate() {
    ++rateChanges;
    makeFilters();
    setParameter(2, static_cast<float>(lowPass));
    setParameter(3, static_cast<float>(highPass));
    programs[static_cast<std::size_t>(curProgram)].delayTime = delayTime;
    takeLength();
    clearLines();
}

void ReferenceDelay::updateSweep() {
    sweepPhase = 0.0;
    if (delayLength > 0) {
        sweepPhase = static_cast<double>(delayPosition) / static_cast<double>(delayLength);
    }
    sineIndex = truncated<std::int64_t>(sweepPhase * 179692.0);
    if (sineIndex >= kSineEntries) {
        sineIndex = kSineEntries - 1;
    }
    if (sineIndex < 0) {
        sineIndex = 0;
    }
}

void ReferenceDelay::process(float** inputs, float** outputs, std::int32_t frames) {
    if (static_cast<float>(lastSampleRate) != sampleRate) {
        followSampleRate();
    }
    updateSweep();
    const std::vector<double>& sine = sineTable();

    for (std::int32_t i = 0; i < frames; ++i) {
        const float inLeft = inputs[0][i];
        const float inRight = inputs[1][i];
        const auto slot = static_cast<std::size_t>(delayPosition);
        float tapLeft = delayBufferLeft[slot];
        float tapRight = delayBufferRight[slot];

        float gainToLeft = 1.0f;
        float gainToRight = 1.0f;
        if (leftRight < 0.5) {
            gainToRight = static_cast<float>(leftRight + leftRight);
        } else if (leftRight > 0.5) {
            gainToLeft = static_cast<float>(2.0 - (leftRight + leftRight));
        }

        if (lowPass > 0.0 && lowPassType) {
            filter(lowPassLeft, tapLeft);
            filter(lowPassRight, tapRight);
        }
        if (highPass > 0.0 && highPassType) {
            filter(highPassLeft, tapLeft);
            filter(highPassRight, tapRight);
        }

        updateSweep();

        const float fedLeft = feedBack * tapLeft;
        delayBufferLeft[slot] = fedLeft + inLeft;
        const float fedRight = feedBack * tapRight;
        delayBufferRight[slot] = fedRight + inRight;

        ++delayPosition;
        if (delayPosition >= delayLength) {
            delayPosition = 0;
            panSide = !panSide;
        }

        if (lowPass > 0.0 && !lowPassType) {
            filter(lowPassLeft, tapLeft);
            filter(lowPassRight, tapRight);
        }
        if (highPass > 0.0 && !highPassType) {
            filter(highPassLeft, tapLeft);
            filter(highPassRight, tapRight);
        }

        const float wetLeft = tapRight * gainToLeft;
        const float wetRight = tapLeft * gainToRight;
        const double sweep = 1.0 - panDepth * sine[static_cast<std::size_t>(sineIndex)];
        double outLeft = static_cast<double>(wetLeft) * mix;
        double outRight = static_cast<double>(wetRight) * mix;
        if (panSide) {
            outLeft = outLeft * sweep;
        } else {
            outRight = outRight * sweep;
        }
        outputs[0][i] = static_cast<float>(outLeft + static_cast<double>(inLeft));
        outputs[1][i] = static_cast<float>(static_cast<double>(inRight) + outRight);
    }

    lastSampleRate = truncated<std::int64_t>(sampleRate);
}
