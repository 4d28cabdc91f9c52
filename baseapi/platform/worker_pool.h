#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "baseapi/platform/executor.h"

namespace baseapi::inline v1 {

/// Threads that take jobs in the order in which they were posted. One thread does the work as long as jobs
/// end soon; where a job has to wait or says that it takes long (`LongWork`), others join, and they leave
/// again when there is nothing to do. A job that throws harms neither the thread nor the process. Every job
/// that was posted runs, also after the pool's destruction; no thread is waited for at the end of the
/// process.
class WorkerPool final : public Executor {
  public:
    struct Limits {
        /// So many threads are woken or started as soon as there is work for them, and stay.
        std::size_t kept = 1;
        /// Those at long work are not counted.
        std::size_t most = 64;
        /// How long a job waits, once or twice, before a thread beyond `kept` joins, or one for a thread that
        /// has begun long work.
        std::chrono::milliseconds patience{2};
        /// How long a thread beyond `kept` stays without work.
        std::chrono::milliseconds idleFor{5'000};
    };

    explicit WorkerPool(std::string name);
    WorkerPool(std::string name, Limits limits);
    ~WorkerPool() override;
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    void post(std::function<void()> job) override;

    /// The number of threads at this moment.
    std::size_t threads() const;

  private:
    friend class LongWork;
    class State;
    std::shared_ptr<State> state_;
};

/// Work that may keep a processor or a disk busy for longer than a hand-over to another thread takes. While
/// this object lives, the pool of the calling thread lets others do what is posted, and after a moment what
/// was queued before. On a thread of no pool it does nothing.
class LongWork {
  public:
    LongWork();
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

  private:
    WorkerPool::State* const pool_;
};

/// The pool that answers, uploads and the main queue share, unless a host brings its own. A step of one that
/// hands over to another thus often stays on its thread.
std::shared_ptr<Executor> sharedPool();

}  // namespace baseapi::inline v1
