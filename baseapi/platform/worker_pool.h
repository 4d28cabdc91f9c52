#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "baseapi/platform/executor.h"

namespace baseapi {

/// Threads that run jobs in the order in which they were posted. Few threads do the work as long as jobs end
/// soon; where jobs block and the queue stands still, it grows, and the threads leave again when there is
/// nothing to do. A job that throws harms neither the thread nor the process. Every job that was posted runs,
/// also after the pool's destruction; no thread is waited for at the end of the process.
class WorkerPool final : public Executor {
  public:
    struct Limits {
        /// So many threads are started as soon as there is work for them, and stay.
        std::size_t kept = 4;
        std::size_t most = 64;
        /// How long the queue stands still before a thread beyond `kept` is started.
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
    class State;
    std::shared_ptr<State> state_;
};

/// One thread that runs jobs one after the other.
std::shared_ptr<Executor> makeSerialQueue(std::string name);

}  // namespace baseapi
