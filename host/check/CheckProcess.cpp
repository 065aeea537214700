#include "host/check/CheckProcess.h"

#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/check/CheckChild.h"
#include "host/check/LastCall.h"
#include "host/check/watch/WatchState.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvhost {

namespace {

constexpr std::size_t kMostText = 1u << 20; // of what a plug-in prints, the rest is dropped
constexpr std::size_t kMostFindings = 1000;

// Away from the numbers that the new process is to find its own under.
constexpr int kLeastDescriptor = 16;

int movedUp(int descriptor) {
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, kLeastDescriptor);
    ::close(descriptor);
    return moved;
}

struct Pipe {
    int ends[2] = {-1, -1};
};

Pipe openPipe() {
    Pipe pipe;
    if (::pipe2(pipe.ends, O_CLOEXEC) != 0) {
        throw UserError(std::string("there is no pipe for a check: ") + std::strerror(errno) +
                        "; allow more open files");
    }
    fcntl(pipe.ends[0], F_SETFL, O_NONBLOCK);
    pipe.ends[1] = movedUp(pipe.ends[1]);
    return pipe;
}

std::vector<std::string> environmentFor(const CheckProcess::Order& order) {
    std::vector<std::string> result;
    for (char** entry = environ; *entry; ++entry) {
        if (std::strncmp(*entry, "LD_PRELOAD=", 11) != 0) {
            result.emplace_back(*entry);
        }
    }
    if (!order.preload.empty()) {
        result.push_back("LD_PRELOAD=" + order.preload.string());
        if (order.guardsMemory) {
            result.push_back(std::string(kGuardMemoryVariable) + "=1");
        }
    }
    return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

// What was said last, which is what an assertion or the memory's own tests say.
std::string lastLine(const std::string& text) {
    std::string last;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string line = plainText(text.substr(at, end - at));
        // Our own word about a crash says nothing new here.
        if (!line.empty() && line.rfind("tvhost: crashed", 0) != 0) {
            last = line;
        }
        at = end + 1;
    }
    return last;
}

} // namespace

CheckProcess::CheckProcess(const Order& order, std::chrono::seconds limit) : limit_(limit) {
    const int memory = movedUp(memfd_create("tvhost-check", MFD_CLOEXEC));
    if (memory < 0 || ftruncate(memory, sizeof(LastCall)) != 0) {
        throw UserError("there is no shared memory for a check; free some");
    }
    void* const place =
        mmap(nullptr, sizeof(LastCall), PROT_READ | PROT_WRITE, MAP_SHARED, memory, 0);
    if (place == MAP_FAILED) {
        throw UserError("there is no shared memory for a check; free some");
    }
    lastCall_ = new (place) LastCall;

    const Pipe report = openPipe();
    const Pipe out = openPipe();
    const Pipe err = openPipe();
    report_ = report.ends[0];
    out_ = out.ends[0];
    err_ = err.ends[0];

    std::vector<std::string> arguments{"tvhost",          "check",  order.plugin.string(),
                                       kCheckChildOption, "--seed", std::to_string(order.seed)};
    if (!order.check.empty()) {
        arguments.insert(arguments.end(), {"--only", order.check});
    }
    std::vector<std::string> environment = environmentFor(order);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.ends[1], STDERR_FILENO);
    posix_spawn_file_actions_adddup2(&actions, report.ends[1], kCheckReportDescriptor);
    posix_spawn_file_actions_adddup2(&actions, memory, kCheckMemoryDescriptor);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const int error = posix_spawn(&process_, "/proc/self/exe", &actions, &attributes,
                                  pointersTo(arguments).data(), pointersTo(environment).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    for (const int descriptor : {memory, report.ends[1], out.ends[1], err.ends[1]}) {
        ::close(descriptor);
    }
    if (error != 0) {
        process_ = -1;
        throw UserError(std::string("no process can be started for a check: ") +
                        std::strerror(error) + "; allow more");
    }
}

CheckProcess::~CheckProcess() {
    if (process_ > 0) {
        kill(-process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    for (const int descriptor : {report_, out_, err_}) {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }
    munmap(lastCall_, sizeof(LastCall));
}

std::vector<int> CheckProcess::descriptors() const {
    std::vector<int> result;
    for (const int descriptor : {report_, out_, err_}) {
        if (descriptor >= 0) {
            result.push_back(descriptor);
        }
    }
    return result;
}

void CheckProcess::read(int& descriptor, std::string& text) {
    char buffer[4096];
    while (descriptor >= 0) {
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return;
        }
        if (count == 0) {
            ::close(descriptor);
            descriptor = -1;
            return;
        }
        text.append(buffer, std::min(static_cast<std::size_t>(count),
                                     kMostText - std::min(text.size(), kMostText)));
    }
}

bool CheckProcess::advance() {
    read(report_, reportText_);
    read(out_, outText_);
    read(err_, errText_);
    for (std::size_t end; (end = reportText_.find('\n')) != std::string::npos;) {
        take(reportText_.substr(0, end));
        reportText_.erase(0, end + 1);
    }
    outcome_.seconds = std::chrono::duration<double>(Clock::now() - begin_).count();
    int status = 0;
    const pid_t ended = waitpid(process_, &status, WNOHANG);
    if (ended == process_) {
        kill(-process_, SIGKILL); // what it has left behind
        process_ = -1;
        // What it wrote last may have come since.
        read(report_, reportText_);
        read(err_, errText_);
        for (std::size_t end; (end = reportText_.find('\n')) != std::string::npos;) {
            take(reportText_.substr(0, end));
            reportText_.erase(0, end + 1);
        }
        judge(status);
        return false;
    }
    if (outcome_.seconds >= static_cast<double>(limit_.count())) {
        kill(-process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = -1;
        judgeHang();
        return false;
    }
    return true;
}

void CheckProcess::take(const std::string& line) {
    const nlohmann::json message = nlohmann::json::parse(line, nullptr, false);
    if (!message.is_object()) {
        return;
    }
    if (message.contains("finding") && outcome_.findings.size() < kMostFindings) {
        outcome_.findings.push_back({message.value("finding", ""), message.value("text", "")});
    }
    if (message.contains("skipped")) {
        outcome_.skipped = message.value("skipped", "");
    }
    if (message.contains("refused")) {
        outcome_.refused = message.value("refused", "");
    }
    if (message.contains("answer")) {
        outcome_.answer = message["answer"];
    }
    done_ = done_ || message.contains("done");
}

void CheckProcess::judge(int status) {
    if (WIFSIGNALED(status)) {
        const std::string line = lastLine(errText_);
        const char* const name = sigabbrev_np(WTERMSIG(status));
        outcome_.findings.push_back(
            {"crash", std::string("ended by SIG") + (name ? name : "?") + " " +
                          (done_ ? "when the process ended" : lastCall_->text()) +
                          (line.empty() ? "" : "; it said: " + line)});
    } else if (!done_ && outcome_.refused.empty()) {
        outcome_.findings.push_back({"exit", "ended the whole process with status " +
                                                 std::to_string(WEXITSTATUS(status)) + " " +
                                                 lastCall_->text()});
    }
}

void CheckProcess::judgeHang() {
    outcome_.findings.push_back(
        {"hang", "was not ready after " + std::to_string(limit_.count()) + " s, " +
                     (done_ ? "when the process ended" : lastCall_->text())});
}

} // namespace tvhost
