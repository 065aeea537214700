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
        const auto path = std::filesystem::temp_directory_path() / "tvdelay-tests-jack.lock";
        const int file = open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0666);
        if (file < 0 || flock(file, LOCK_EX) != 0) {
            throw std::runtime_error("no lock for JACK servers: " + path.string());
        }
        return file;
    }();
    static_cast<void>(lock);
}

std::string nameInTurn() {
    waitForTurn();
    static int number = 0;
    return "tvhost-test-" + std::to_string(getpid()) + "-" + std::to_string(++number);
}

void quiet(const char*) {}

Process::Options logged() {
    Process::Options options;
    options.log = "/dev/null";
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

JackServer::JackServer(int sampleRate, Patience patience)
    : name_(nameInTurn()), process_("jackd", arguments(name_, sampleRate, patience), logged()) {
    jack_set_error_function(quiet);
    jack_set_info_function(quiet);
    for (int i = 0; i < 500; ++i) {
        if (jack_client_t* const client = openClient("probe")) {
            jack_client_close(client);
            return;
        }
        usleep(20000);
    }
    throw std::runtime_error("jackd does not start");
}

JackServer::~JackServer() {
    // Killed, it would keep one of the system's few places for servers.
    process_.askToEnd();
    // What a client that outlived it holds on to stays in memory otherwise.
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/shm", error)) {
        if (entry.path().filename().string().find("_" + name_ + "_") != std::string::npos) {
            std::filesystem::remove(entry.path(), error);
        }
    }
}

_jack_client* JackServer::openClient(const char* name) const {
    return jack_client_open(name, static_cast<jack_options_t>(JackNoStartServer | JackServerName),
                            nullptr, name_.c_str());
}
