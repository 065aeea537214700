#include "host/base/ForkedWork.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

using namespace tvhost;
using End = ForkedAnswer::End;

namespace {

std::map<std::size_t, ForkedAnswer> answersOf(std::size_t count, const ForkedTerms& terms,
                                              const std::function<std::string(std::size_t)>& work) {
    std::map<std::size_t, ForkedAnswer> answers;
    runForked(count, terms, work, [&](std::size_t i, const ForkedAnswer& answer) {
        EXPECT_TRUE(answers.emplace(i, answer).second) << "answered twice: " << i;
    });
    return answers;
}

ForkedAnswer answerOf(const ForkedTerms& terms, const std::function<std::string()>& work) {
    return answersOf(1, terms, [&](std::size_t) { return work(); }).at(0);
}

[[noreturn]] void waitForEver() {
    for (;;) {
        pause();
    }
}

ForkedTerms limited() {
    ForkedTerms terms;
    terms.timeLimit = std::chrono::milliseconds(200);
    return terms;
}

} // namespace

TEST(ForkedWork, LetsGoOfWhatIsKeptOnceTheAnswerIsOut) {
    const auto endingBy = [](void (*deed)()) {
        ForkedAnswer answer;
        runForked(
            1, limited(),
            [&](std::size_t) {
                return ForkedResult("said", std::shared_ptr<void>(nullptr, [=](void*) { deed(); }));
            },
            [&](std::size_t, const ForkedAnswer& given) { answer = given; });
        return answer;
    };
    for (void (*const deed)() :
         {+[] { std::abort(); }, +[] { _exit(7); }, +[] { waitForEver(); }}) {
        const ForkedAnswer answer = endingBy(deed);
        EXPECT_EQ(answer.end, End::kAnswered);
        EXPECT_EQ(answer.text, "said");
    }
}

TEST(ForkedWork, BringsBackEveryAnswerWhole) {
    ForkedTerms terms;
    terms.jobs = 3;
    // Longer than a pipe holds.
    const auto text = [](std::size_t i) {
        return std::string(100000 * i, static_cast<char>('a' + i));
    };
    const auto answers = answersOf(7, terms, text);
    ASSERT_EQ(answers.size(), 7u);
    for (const auto& [index, answer] : answers) {
        EXPECT_EQ(answer.end, End::kAnswered);
        EXPECT_EQ(answer.text, text(index));
    }
}

TEST(ForkedWork, RunsNoMoreAtATimeThanJobs) {
    ForkedTerms terms;
    terms.jobs = 2;
    TemporaryFolder folder;
    const auto answers = answersOf(6, terms, [&](std::size_t i) {
        writeFile(folder.file(std::to_string(i)), "");
        const std::size_t running = folder.entries().size();
        usleep(20000);
        unlink(folder.file(std::to_string(i)).c_str());
        return std::to_string(running);
    });
    bool together = false;
    for (const auto& [index, answer] : answers) {
        EXPECT_LE(std::stoi(answer.text), 2);
        together = together || answer.text == "2";
    }
    EXPECT_TRUE(together);
}

TEST(ForkedWork, TellsHowWorkEndsThatDoesNotAnswer) {
    const ForkedAnswer refused =
        answerOf({}, []() -> std::string { throw std::runtime_error("not today"); });
    EXPECT_EQ(refused.end, End::kRefused);
    EXPECT_EQ(refused.fault(), "not today");

    const ForkedAnswer crashed = answerOf({}, []() -> std::string {
        std::signal(SIGFPE, SIG_DFL);
        raise(SIGFPE);
        return "";
    });
    EXPECT_EQ(crashed.end, End::kCrashed);
    EXPECT_EQ(crashed.signal, SIGFPE);
    EXPECT_EQ(crashed.fault(), "crashed (Floating point exception)");

    const ForkedAnswer quit = answerOf({}, []() -> std::string { _exit(5); });
    EXPECT_EQ(quit.end, End::kQuit);
    EXPECT_EQ(quit.fault(), "ended the program that asked it, with status 5");

    const ForkedAnswer late = answerOf(limited(), []() -> std::string { waitForEver(); });
    EXPECT_EQ(late.end, End::kTimedOut);
    EXPECT_EQ(late.fault(), "gave no answer in time");
}

TEST(ForkedWork, StopsOnlyWhatIsLate) {
    ForkedTerms terms = limited();
    terms.jobs = 4;
    const auto answers = answersOf(4, terms, [](std::size_t i) -> std::string {
        if (i == 1) {
            waitForEver();
        }
        return "quick";
    });
    for (const auto& [index, answer] : answers) {
        EXPECT_EQ(answer.end, index == 1 ? End::kTimedOut : End::kAnswered);
    }
}

TEST(ForkedWork, TakesAlongWhatTheWorkLeavesRunning) {
    const ForkedAnswer answer = answerOf({}, [] {
        const pid_t child = fork();
        if (child == 0) {
            waitForEver();
        }
        return std::to_string(child);
    });
    ASSERT_EQ(answer.end, End::kAnswered);
    const pid_t left = std::stoi(answer.text);
    bool gone = false;
    for (int i = 0; i < 200 && !gone; ++i) {
        // One that has ended but that nobody collects counts as gone.
        std::FILE* const state = std::fopen(("/proc/" + answer.text + "/stat").c_str(), "r");
        char letter = 'Z';
        if (state) {
            std::fscanf(state, "%*d %*s %c", &letter);
            std::fclose(state);
        }
        gone = letter == 'Z';
        usleep(10000);
    }
    EXPECT_TRUE(gone) << left;
}

TEST(ForkedWork, PrintsNothingWhenSilent) {
    ForkedTerms terms;
    terms.silent = true;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const ForkedAnswer answer = answerOf(terms, [] {
        std::puts("out");
        std::fputs("err", stderr);
        return std::string("said");
    });
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(answer.text, "said");
}
