#include "baseapi/platform/worker_pool.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/thread.h"

namespace baseapi::inline v1 {

/// What the threads share; the last of them to leave ends it.
class WorkerPool::State : public std::enable_shared_from_this<State> {
  public:
    State(std::string name, Limits limits) : name_(std::move(name)), limits_(limits) {}

    void post(std::function<void()> job);
    void close();
    std::size_t threads() const;
    /// The pool of the calling thread, unless that is at long work.
    static thread_local State* ofThisThread;
    void beginLongWork();
    void endLongWork();

  private:
    /// A thread without work.
    struct Idle {
        std::condition_variable wake;
        bool woken = false;
    };
    using Lock = std::unique_lock<std::mutex>;

    std::size_t busy() const { return threads_ - idle_.size() - atLongWork_; }
    void start(void (State::*body)());
    std::shared_ptr<Idle> addWorker();
    void startWorker();
    void work();
    void run(Lock& lock, std::function<void()> job);
    bool waitForJob(Lock& lock, const std::shared_ptr<Idle>& idle);
    bool startWatching();
    void watch();

    const std::string name_;
    const Limits limits_;
    mutable std::mutex mutex_;
    std::deque<std::function<void()>> queue_;
    /// The thread that was at work last is woken first: the others can leave.
    std::vector<std::shared_ptr<Idle>> idle_;
    std::size_t threads_ = 0;
    std::size_t atLongWork_ = 0;
    std::size_t taken_ = 0;
    bool closing_ = false;

    std::condition_variable overload_;
    bool watcherThere_ = false;
    bool watching_ = false;
};

thread_local WorkerPool::State* WorkerPool::State::ofThisThread = nullptr;

void WorkerPool::State::post(std::function<void()> job) {
    std::shared_ptr<Idle> woken;
    {
        const Lock lock(mutex_);
        queue_.push_back(std::move(job));
        if (busy() < limits_.kept) {
            woken = addWorker();
        } else if (busy() < limits_.most) {
            startWatching();
        }
    }
    // Outside the lock, which the woken thread takes first of all.
    if (woken) woken->wake.notify_one();
}

void WorkerPool::State::close() {
    const Lock lock(mutex_);
    closing_ = true;
    for (const auto& idle : idle_) idle->wake.notify_one();
    overload_.notify_one();
}

std::size_t WorkerPool::State::threads() const {
    const Lock lock(mutex_);
    return threads_;
}

void WorkerPool::State::beginLongWork() {
    std::shared_ptr<Idle> woken;
    {
        const Lock lock(mutex_);
        ++atLongWork_;
        // What is queued already waits a moment: reading a small file is over before another thread is awake.
        if (!queue_.empty() && !startWatching() && !idle_.empty()) woken = addWorker();
    }
    if (woken) woken->wake.notify_one();
}

void WorkerPool::State::endLongWork() {
    const Lock lock(mutex_);
    --atLongWork_;
}

void WorkerPool::State::start(void (State::*body)()) {
    startThread(name_, [self = shared_from_this(), body] { ((*self).*body)(); }).detach();
}

/// The idle thread to notify, or nothing where a new one was started.
std::shared_ptr<WorkerPool::State::Idle> WorkerPool::State::addWorker() {
    if (idle_.empty()) {
        startWorker();
        return nullptr;
    }
    auto idle = std::move(idle_.back());
    idle_.pop_back();
    idle->woken = true;
    return idle;
}

void WorkerPool::State::startWorker() {
    try {
        start(&State::work);
        ++threads_;
    } catch (const std::system_error& error) {
        // Without any thread nothing would ever run; with one, the jobs only wait longer.
        if (threads_ == 0) fatalStop(std::string("cannot start a thread: ") + error.what());
    }
}

void WorkerPool::State::work() {
    ofThisThread = this;
    const auto idle = std::make_shared<Idle>();
    Lock lock(mutex_);
    do {
        while (!queue_.empty()) {
            auto job = std::move(queue_.front());
            queue_.pop_front();
            run(lock, std::move(job));
        }
    } while (waitForJob(lock, idle));
    --threads_;
}

void WorkerPool::State::run(Lock& lock, std::function<void()> job) {
    ++taken_;
    lock.unlock();
    runJob(job);
    job = nullptr;
    lock.lock();
}

bool WorkerPool::State::waitForJob(Lock& lock, const std::shared_ptr<Idle>& idle) {
    if (closing_) return false;
    idle->woken = false;
    idle_.push_back(idle);
    const auto woken = [&] { return idle->woken || closing_; };
    if (threads_ <= limits_.kept) {
        idle->wake.wait(lock, woken);
    } else if (!idle->wake.wait_for(lock, limits_.idleFor, woken)) {
        std::erase(idle_, idle);
        return threads_ <= limits_.kept;
    }
    if (!idle->woken) std::erase(idle_, idle);
    return idle->woken || !queue_.empty();
}

/// False where no thread can be had for it; the next post tries again.
bool WorkerPool::State::startWatching() {
    if (watching_) return true;
    try {
        if (!watcherThere_) start(&State::watch);
        watcherThere_ = watching_ = true;
        overload_.notify_one();
    } catch (const std::exception&) {
    }
    return watching_;
}

/// One thread that looks every now and then, as long as there are jobs, whether they get on. Waking a worker
/// for every job, or this thread for every rush of jobs, would cost short jobs more than it brings: they end
/// before it is awake.
void WorkerPool::State::watch() {
    Lock lock(mutex_);
    while (overload_.wait_for(lock, limits_.idleFor, [&] { return watching_ || closing_; }) && watching_) {
        const auto takenBefore = taken_;
        const auto takenInTime = taken_ + queue_.size();
        lock.unlock();
        std::this_thread::sleep_for(limits_.patience);
        lock.lock();
        watching_ = (!queue_.empty() || taken_ > takenBefore) && busy() < limits_.most;
        if (!watching_ || taken_ >= takenInTime) continue;
        if (const auto woken = addWorker()) woken->wake.notify_one();
    }
    watcherThere_ = false;
}

WorkerPool::WorkerPool(std::string name) : WorkerPool(std::move(name), Limits{}) {}

WorkerPool::WorkerPool(std::string name, Limits limits)
    : state_(std::make_shared<State>(std::move(name), limits)) {}

WorkerPool::~WorkerPool() {
    state_->close();
}

void WorkerPool::post(std::function<void()> job) {
    state_->post(std::move(job));
}

std::size_t WorkerPool::threads() const {
    return state_->threads();
}

LongWork::LongWork() : pool_(std::exchange(WorkerPool::State::ofThisThread, nullptr)) {
    if (pool_) pool_->beginLongWork();
}

LongWork::~LongWork() {
    if (!pool_) return;
    pool_->endLongWork();
    WorkerPool::State::ofThisThread = pool_;
}

std::shared_ptr<Executor> sharedPool() {
    // Never destroyed: transfers may be under way while the process ends.
    static const auto& pool = *new std::shared_ptr<Executor>(std::make_shared<WorkerPool>("baseapi-pool"));
    return pool;
}

}  // namespace baseapi::inline v1
