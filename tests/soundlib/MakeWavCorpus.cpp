// Writes the files that the fuzzer starts from into a folder, in place of what it held.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sndfile.hh>

#include "tests/soundlib/WavBytes.h"

namespace {

// Files as libsndfile writes them, with text chunks before and behind the samples.
void writeWithLibsndfile(const std::string& folder) {
    const std::vector<short> samples(64, 0x1234);
    int number = 0;
    for (const int container : {SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_RF64}) {
        for (const int encoding : {SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}) {
            for (const int channels : {1, 2}) {
                SndfileHandle file(folder + "/libsndfile" + std::to_string(++number), SFM_WRITE,
                                   container | encoding, channels, 44100);
                if (number % 2 == 0) {
                    file.setString(SF_STR_TITLE, "title");
                }
                file.write(samples.data(), 64);
                file.setString(SF_STR_ARTIST, "artist");
            }
        }
    }
}

void writeByHand(const std::string& folder) {
    const std::string format = chunk("fmt ", FormatBytes().bytes());
    const std::string data = chunk("data", "eightbyt");
    const std::string files[] = {wavOf(data + format),
                                 wavOf(chunk("odd ", "abc") + format + data),
                                 wavOf(format + chunkClaiming("data", 0xffffffffu, "abcd")),
                                 wavClaiming(0, format + chunkClaiming("data", 0, "abcd")),
                                 wavOf(chunk("fmt ", FormatBytes().extensible(1)) + data),
                                 wavOf(chunkClaiming("junk", 0x7ffffff0u, "") + format + data)};
    int number = 0;
    for (const std::string& bytes : files) {
        std::ofstream(folder + "/chunks" + std::to_string(++number), std::ios::binary) << bytes;
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "MakeWavCorpus: one argument is needed, the folder to write\n");
        return 2;
    }
    std::filesystem::remove_all(argv[1]);
    std::filesystem::create_directories(argv[1]);
    writeWithLibsndfile(argv[1]);
    writeByHand(argv[1]);
}
