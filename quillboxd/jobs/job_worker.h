#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>

#include "quillboxd/error.h"
#include "quillboxd/jobs/work.h"

namespace quillboxd {

/// Works through the jobs of all accounts on a thread of its own, the oldest first. What a job has done is in
/// the database after each step, so a job that was cut by the end of the process goes on with the next.
class JobWorker {
  public:
    /// Begins with the first wake().
    explicit JobWorker(Service& service);

    /// There may be a job.
    void wake();

    /// Lets the jobs make so many more steps and then wait; nothing lets them go on for good. A step under
    /// way is none of them.
    void allow(std::optional<std::int64_t> steps);

  private:
    enum class Turn { idle, planned, stepped };

    void run(const std::stop_token& stop);
    Turn tryTurn(const std::stop_token& stop);
    Turn turn(const std::stop_token& stop);
    void begin(const Job& job);
    void step(const Job& job, const JobItem& item, const std::stop_token& stop);
    void commit(JobItem item, const std::function<void(JobItem&)>& change);
    static void fail(JobItem& item, const ApiError& error);
    Work& workFor(const Job& job, const JobItem& item);

    Service& service_;
    OpenJobs jobs_;
    std::unique_ptr<Work> work_;
    std::pair<std::int64_t, std::int64_t> workItem_;  ///< job and item of `work_`

    std::mutex mutex_;
    std::condition_variable_any changed_;
    bool wanted_ = false;
    std::optional<std::int64_t> allowed_;
    std::int64_t allowance_ = 0;  ///< how often `allowed_` was set
    std::jthread thread_;
};

}  // namespace quillboxd
