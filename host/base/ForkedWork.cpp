#include "host/base/ForkedWork.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvhost {

namespace {

using Clock = std::chrono::steady_clock;

// What the first byte of an answer says.
constexpr char kAnsweredMark = '+';
constexpr char kRefusedMark = '-';

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

void sendAll(int descriptor, const std::string& text) {
    std::size_t sent = 0;
    while (sent < text.size()) {
        const ssize_t count = write(descriptor, text.data() + sent, text.size() - sent);
        if (count < 0 && errno != EINTR) {
            return;
        }
        sent += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
}

// One forked process, from its start until it has been collected.
class Worker {
public:
    Worker(std::size_t index, bool silent, const std::function<ForkedResult(std::size_t)>& work)
        : index_(index) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) {
            fail("no pipe");
        }
        // Or both processes would print what is still held back.
        std::fflush(nullptr);
        const pid_t parent = getpid();
        process_ = fork();
        if (process_ < 0) {
            close(ends[0]);
            close(ends[1]);
            fail("no process");
        }
        if (process_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGTERM);
            if (getppid() != parent) {
                _exit(1);
            }
            setpgid(0, 0);
            answer(ends[1], silent, index, work);
        }
        setpgid(process_, process_);
        close(ends[1]);
        reader_ = ends[0];
        // The C library's own header forgets C linkage in some versions.
        ended_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
    }

    std::size_t index() const { return index_; }
    Clock::time_point begin() const { return begin_; }
    void addTo(std::vector<pollfd>& watched) const {
        watched.push_back({reader_, POLLIN, 0});
        watched.push_back({ended_, POLLIN, 0});
    }

    // Takes in what has come.
    void read() {
        char buffer[16384];
        pollfd pending{reader_, POLLIN, 0};
        while (reader_ >= 0) {
            const int ready = poll(&pending, 1, 0);
            const ssize_t count = ready > 0 ? ::read(reader_, buffer, sizeof buffer) : ready;
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (ready == 0) {
                return;
            }
            if (count <= 0) {
                close(reader_);
                reader_ = -1;
                complete_ = true;
            } else {
                received_.append(buffer, static_cast<std::size_t>(count));
            }
        }
    }

    // The answer once the process has ended; `stop` ends it.
    std::optional<ForkedAnswer> collect(bool stop) {
        if (stop) {
            kill(-process_, SIGKILL);
        }
        int status = 0;
        if (waitpid(process_, &status, stop ? 0 : WNOHANG) != process_) {
            return std::nullopt;
        }
        read();
        // Whatever it started itself.
        kill(-process_, SIGKILL);
        if (reader_ >= 0) {
            close(reader_);
        }
        close(ended_);
        return answerFrom(status, stop);
    }

private:
    [[noreturn]] static void answer(int writer, bool silent, std::size_t index,
                                    const std::function<ForkedResult(std::size_t)>& work) {
        if (silent) {
            const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
            if (nowhere >= 0) {
                dup2(nowhere, STDOUT_FILENO);
                dup2(nowhere, STDERR_FILENO);
            }
        }
        std::string text;
        std::shared_ptr<void> kept;
        try {
            ForkedResult result = work(index);
            text = kAnsweredMark + result.text;
            kept = std::move(result.kept);
        } catch (const std::exception& error) {
            text = kRefusedMark + std::string(error.what());
        }
        std::fflush(nullptr);
        sendAll(writer, text);
        close(writer);
        kept.reset();
        _exit(0);
    }

    ForkedAnswer answerFrom(int status, bool stopped) const {
        ForkedAnswer answer;
        if (!received_.empty() && (complete_ || !stopped)) {
            answer.end = received_[0] == kAnsweredMark ? ForkedAnswer::End::kAnswered
                                                       : ForkedAnswer::End::kRefused;
            answer.text = received_.substr(1);
        } else if (stopped) {
            answer.end = ForkedAnswer::End::kTimedOut;
        } else if (WIFSIGNALED(status)) {
            answer.end = ForkedAnswer::End::kCrashed;
            answer.signal = WTERMSIG(status);
        } else {
            answer.status = WEXITSTATUS(status);
        }
        return answer;
    }

    std::size_t index_;
    Clock::time_point begin_ = Clock::now();
    pid_t process_ = -1;
    int reader_ = -1;
    int ended_ = -1;
    std::string received_;
    bool complete_ = false;
};

// How long nothing need be done unless something comes, in milliseconds; -1 is for ever.
int patience(const std::vector<Worker>& workers, const ForkedTerms& terms) {
    if (!terms.timeLimit) {
        return -1;
    }
    Clock::time_point first = Clock::time_point::max();
    for (const Worker& worker : workers) {
        first = std::min(first, worker.begin() + *terms.timeLimit);
    }
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(first - Clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(rest.count(), 0, 60000));
}

} // namespace

std::string ForkedAnswer::fault() const {
    switch (end) {
    case End::kRefused:
        return text;
    case End::kCrashed:
        return std::string("crashed (") + strsignal(signal) + ")";
    case End::kTimedOut:
        return "gave no answer in time";
    case End::kQuit:
        return "ended the program that asked it, with status " + std::to_string(status);
    case End::kAnswered:
        break;
    }
    return {};
}

void runForked(std::size_t count, const ForkedTerms& terms,
               const std::function<ForkedResult(std::size_t)>& work,
               const std::function<void(std::size_t, const ForkedAnswer&)>& done) {
    std::vector<Worker> workers;
    std::size_t next = 0;
    while (next < count || !workers.empty()) {
        while (next < count && workers.size() < std::max<std::size_t>(terms.jobs, 1)) {
            workers.emplace_back(next, terms.silent, work);
            ++next;
        }
        std::vector<pollfd> watched;
        for (const Worker& worker : workers) {
            worker.addTo(watched);
        }
        poll(watched.data(), watched.size(), patience(workers, terms));
        for (std::size_t i = 0; i < workers.size();) {
            Worker& worker = workers[i];
            worker.read();
            const bool late = terms.timeLimit && Clock::now() - worker.begin() >= *terms.timeLimit;
            std::optional<ForkedAnswer> answer = worker.collect(false);
            if (!answer && late) {
                answer = worker.collect(true);
            }
            if (!answer) {
                ++i;
                continue;
            }
            const std::size_t index = worker.index();
            workers.erase(workers.begin() + static_cast<std::ptrdiff_t>(i));
            done(index, *answer);
        }
    }
}

std::size_t usualJobs() {
    return std::max(1u, std::thread::hardware_concurrency());
}

} // namespace tvhost
