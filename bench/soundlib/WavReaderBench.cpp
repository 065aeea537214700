// What a sample costs on its way from a file in the page cache, beside plain reads of the same
// size.
#include "soundlib/LiveField.h"
#include "soundlib/WavPlayer.h"
#include "soundlib/WavStreamReaderMaker.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::int32_t kFills = 64;
constexpr std::int32_t kHeader = 44;
constexpr std::int16_t kMark = 0x5555; // no sample of the file

// A file of 64 fills of silence that goes away with the program.
class SampleFile {
public:
    SampleFile() {
        const int file = mkstemp(info.path.data());
        const std::uint32_t size = kFills * wavReadLength * 2;
        const std::uint32_t header[11] = {0x46464952, size + 36,  0x45564157, 0x20746d66,
                                          16,         0x20001,    44100,      176400,
                                          0x100004,   0x61746164, size};
        const std::vector<char> samples(size);
        if (write(file, header, sizeof(header)) != sizeof(header) ||
            write(file, samples.data(), size) != static_cast<ssize_t>(size)) {
            throw std::runtime_error("no room for the file to read");
        }
        close(file);
    }
    ~SampleFile() { unlink(info.path.c_str()); }
    SampleFile(const SampleFile&) = delete;
    SampleFile& operator=(const SampleFile&) = delete;

    WavFileInfo info{std::filesystem::temp_directory_path() / "tvdelay-bench-XXXXXX", kHeader};
};

SampleFile& sampleFile() {
    static SampleFile file;
    return file;
}

using ReaderPointer = std::unique_ptr<WavStreamReader, decltype(&destroyWavStreamReader)>;

void countSamples(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * kFills * wavReadLength);
}

void plainReads(benchmark::State& state) {
    std::vector<char> buffer(std::size_t{wavReadLength} * 2);
    for (auto _ : state) {
        const int file = open(sampleFile().info.path.c_str(), O_RDONLY);
        if (file < 0) {
            state.SkipWithError("the sample file can't be opened");
            break;
        }
        lseek(file, kHeader, SEEK_SET);
        for (int fill = 0; fill < kFills; ++fill) {
            benchmark::DoNotOptimize(read(file, buffer.data(), buffer.size()));
        }
        close(file);
    }
    countSamples(state);
}

void foregroundFills(benchmark::State& state) {
    const ReaderPointer reader(makeWavStreamReader(), destroyWavStreamReader);
    for (auto _ : state) {
        reader->start(&sampleFile().info, false);
        for (int fill = 2; fill <= kFills; fill += 2) {
            reader->fillSecondBuffer(false);
            if (fill < kFills) {
                reader->fillFirstBuffer(false);
            }
        }
    }
    countSamples(state);
}

// The last sample of a fill and the flag together tell that it is done.
void awaitFill(const WavStreamReader& reader, const std::int16_t* buffer) {
    while (readLive(buffer[wavReadLength - 1]) == kMark || acquire(reader.filling)) {
        std::this_thread::yield();
    }
}

void backgroundFills(benchmark::State& state) {
    const ReaderPointer reader(makeWavStreamReader(), destroyWavStreamReader);
    for (auto _ : state) {
        for (int fill = 0; fill < kFills; ++fill) {
            std::int16_t* buffer = fill % 2 == 0 ? reader->firstBuffer : reader->secondBuffer;
            buffer[wavReadLength - 1] = kMark;
            if (fill == 0) {
                reader->start(&sampleFile().info, true);
            } else if (fill % 2 == 0) {
                reader->fillFirstBuffer(true);
            } else {
                reader->fillSecondBuffer(true);
            }
            awaitFill(*reader, buffer);
        }
    }
    countSamples(state);
}

void player(benchmark::State& state) {
    constexpr std::int32_t kBlock = 256;
    std::vector<float> left(kBlock);
    std::vector<float> right(kBlock);
    float* outputs[] = {left.data(), right.data()};
    WavPlayer player;
    for (auto _ : state) {
        player.open(sampleFile().info.path, WavPlayer::Loading::kInRender);
        while (player.isPlaying()) {
            player.render(outputs, kBlock);
        }
    }
    countSamples(state);
}

} // namespace

BENCHMARK(foregroundFills)->Name("wav_sample/foreground");
BENCHMARK(backgroundFills)->Name("wav_sample/background")->UseRealTime();
BENCHMARK(player)->Name("wav_sample/player");
BENCHMARK(plainReads)->Name("wav_sample/reference");
