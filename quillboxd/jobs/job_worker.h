#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
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

    /// Ends the step under way early, as if it had not begun; for a job that is no longer wanted, in the
    /// transaction that ends it.
    void interrupt();

  private:
    enum class Turn { idle, planned, stepped };

    void run(const std::stop_token& stop);
    Turn tryTurn(const std::stop_token& stop);
    Turn turn(const std::stop_token& stop);
    void plan(const Job& job, const JobItem& item);
    void step(const Job& job, const JobItem& item, const std::stop_token& stop);
    /// Does what is to be done with the item, which fails with what that throws.
    void orFail(const JobItem& item, const std::function<void()>& act);
    void fail(const JobItem& item, Code code, const std::string& reason);
    void commit(JobItem item, const std::function<void(JobItem&)>& change);
    Work& workFor(const Job& job, const JobItem& item);

    Service& service_;
    OpenJobs jobs_;
    std::unique_ptr<Work> work_;
    std::pair<std::int64_t, std::int64_t> workItem_;  ///< job and item of `work_`

    std::mutex mutex_;
    std::condition_variable_any changed_;
    bool wanted_ = false;
    std::optional<std::int64_t> allowed_;
    std::int64_t allowance_ = 0;     ///< how often `allowed_` was set
    std::stop_source interruption_;  ///< of the step under way
    std::jthread thread_;
};

}  // namespace quillboxd
