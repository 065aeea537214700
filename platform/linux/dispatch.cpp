#include <dispatch/dispatch.h>

#include <Block.h>
#include <pthread.h>
#include <signal.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

struct dispatch_queue_s {
    std::deque<dispatch_block_t> waiting;
};

namespace {

class WorkerPool {
public:
    dispatch_queue_t queue(intptr_t identifier) {
        const auto found = std::find(kPriorities.begin(), kPriorities.end(), identifier);
        return found == kPriorities.end()
                   ? nullptr
                   : &queues_[static_cast<std::size_t>(found - kPriorities.begin())];
    }

    void add(dispatch_queue_t queue, dispatch_block_t block) {
        const std::lock_guard<std::mutex> lock(mutex_);
        queue->waiting.push_back(block);
        ++waiting_;
        if (waiting_ > idle_ && workers_ < limit_) {
            startWorker();
        }
        added_.notify_one();
    }

private:
    static constexpr std::array<intptr_t, 4> kPriorities = {
        DISPATCH_QUEUE_PRIORITY_HIGH, DISPATCH_QUEUE_PRIORITY_DEFAULT, DISPATCH_QUEUE_PRIORITY_LOW,
        DISPATCH_QUEUE_PRIORITY_BACKGROUND};

    void startWorker() {
        // Signals are the program's own: its threads take them, not a worker.
        sigset_t every;
        sigset_t before;
        sigfillset(&every);
        pthread_sigmask(SIG_SETMASK, &every, &before);
        pthread_t thread;
        if (pthread_create(&thread, nullptr, &WorkerPool::work, this) == 0) {
            pthread_detach(thread);
            ++workers_;
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    static void* work(void* pool) {
        for (;;) {
            const dispatch_block_t block = static_cast<WorkerPool*>(pool)->take();
            block();
            Block_release(block);
        }
    }

    dispatch_block_t take() {
        std::unique_lock<std::mutex> lock(mutex_);
        ++idle_;
        added_.wait(lock, [this] { return waiting_ > 0; });
        --idle_;
        --waiting_;
        const auto first =
            std::find_if(queues_.begin(), queues_.end(),
                         [](const dispatch_queue_s& queue) { return !queue.waiting.empty(); });
        const dispatch_block_t block = first->waiting.front();
        first->waiting.pop_front();
        return block;
    }

    std::mutex mutex_;
    std::condition_variable added_;
    std::array<dispatch_queue_s, kPriorities.size()> queues_; // highest priority first
    unsigned waiting_ = 0;
    unsigned idle_ = 0;
    unsigned workers_ = 0;
    const unsigned limit_ = std::max(2u, std::thread::hardware_concurrency());
};

// Never destroyed: workers still wait on it when the program ends.
WorkerPool& workerPool() {
    static auto& pool = *new WorkerPool;
    return pool;
}

} // namespace

dispatch_queue_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags) {
    return workerPool().queue(identifier);
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    workerPool().add(queue, Block_copy(block));
}
