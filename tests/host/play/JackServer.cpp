#include "tests/host/play/JackServer.h"

#include <jack/jack.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

// One test process at a time has servers, to its end: starting ones look after those of others in
// the system's memory, and may take them for dead.
void waitForTurn() {
    static const int lock = [] {
        const auto path = std::filesystem::temp_directory_path() /
                          ("tvdelay-tests-jack-" + std::to_string(getuid()) + ".lock");
        const int file = open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
        if (file < 0 || flock(file, LOCK_EX) != 0) {
            throw std::runtime_error("no lock for JACK servers: " + path.string());
        }
        return file;
    }();
    static_cast<void>(lock);
}

void quiet(const char*) {}

Process::Options logged(const std::string& path) {
    Process::Options options;
    options.log = path;
    return options;
}

std::vector<std::string> arguments(const std::string& name, int sampleRate,
                                   JackServer::Patience patience) {
    std::vector<std::string> words = {"--no-realtime"};
    if (patience == JackServer::Patience::kLong) {
        words.insert(words.end(), {"--sync", "--timeout", "10000"});
    }
    words.insert(words.end(),
                 {"--name", name, "-d", "dummy", "-r", std::to_string(sampleRate), "-p", "1024"});
    return words;
}

} // namespace

JackServer::JackServer(int sampleRate, Patience patience) {
    waitForTurn();
    jack_set_error_function(quiet);
    jack_set_info_function(quiet);
    // A killed server keeps its place among the system's eight until another of its name starts, so
    // there are only two names. None starts as long as the system still lists the killed process.
    for (int attempt = 0; attempt < 100; ++attempt) {
        name_ = "tvhost-test-" + std::to_string(attempt % 2 + 1);
        process_ = std::make_unique<Process>("jackd", arguments(name_, sampleRate, patience),
                                             logged(folder_.file("log")));
        if (answers()) {
            return;
        }
        if (!process_->exitStatus()) {
            break; // it hangs
        }
        usleep(100000);
    }
    throw std::runtime_error("jackd does not start: " + readFile(folder_.file("log")));
}

JackServer::~JackServer() {
    // Killed, it would keep one of the system's few places for servers.
    process_->askToEnd();
    // What a client that outlived it holds on to stays in memory otherwise.
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/shm", error)) {
        if (entry.path().filename().string().find("_" + name_ + "_") != std::string::npos) {
            std::filesystem::remove(entry.path(), error);
        }
    }
}

bool JackServer::answers() {
    for (int i = 0; i < 500 && !process_->exitStatus(); ++i) {
        if (jack_client_t* const client = openClient("probe")) {
            jack_client_close(client);
            return true;
        }
        usleep(20000);
    }
    return false;
}

_jack_client* JackServer::openClient(const char* name) const {
    // They are bits. NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange)
    const auto options = static_cast<jack_options_t>(JackNoStartServer | JackServerName);
    return jack_client_open(name, options, nullptr, name_.c_str());
}
