#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "baseapi/platform/executor.h"

namespace baseapi::inline v1 {

/// Threads that take jobs in the order in which they were posted. One thread does the work as long as jobs
/// end soon; where a job has to wait, others join, and they leave again when there is nothing to do. A job
/// that throws harms neither the thread nor the process. Every job that was posted runs, also after the
/// pool's destruction; no thread is waited for at the end of the process.
class WorkerPool final : public Executor {
  public:
    struct Limits {
        /// So many threads are woken or started as soon as there is work for them, and stay.
        std::size_t kept = 1;
        std::size_t most = 64;
        /// How long a job waits before a thread beyond `kept` joins.
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

}  // namespace baseapi::inline v1
