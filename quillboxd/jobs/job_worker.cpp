#include "quillboxd/jobs/job_worker.h"

#include <chrono>

#include "quillboxd/error.h"
#include "quillboxd/service.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

using namespace std::chrono_literals;

/// Between two steps others get at the database.
constexpr auto pauseAfterStep = 100us;

/// Before the next attempt where the database itself has failed.
constexpr auto pauseAfterFailure = 1s;

}  // namespace

JobWorker::JobWorker(Service& service)
    : service_(service),
      jobs_(service.database),
      thread_([this](const std::stop_token& stop) { run(stop); }) {}

void JobWorker::wake() {
    const std::lock_guard lock(mutex_);
    wanted_ = true;
    changed_.notify_all();
}

void JobWorker::allow(std::optional<std::int64_t> steps) {
    const std::lock_guard lock(mutex_);
    allowed_ = steps;
    ++allowance_;
    wanted_ = true;
    changed_.notify_all();
}

void JobWorker::run(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    const auto mayGoOn = [this] { return wanted_ && allowed_ != 0; };
    while (!stop.stop_requested() && changed_.wait(lock, stop, mayGoOn)) {
        wanted_ = false;
        const auto allowance = allowance_;
        lock.unlock();
        const auto turn = tryTurn(stop);
        lock.lock();
        if (turn != Turn::idle) wanted_ = true;
        if (turn == Turn::stepped && allowance == allowance_ && allowed_ > 0) --*allowed_;
        if (turn == Turn::stepped) changed_.wait_for(lock, stop, pauseAfterStep, [] { return false; });
    }
}

JobWorker::Turn JobWorker::tryTurn(const std::stop_token& stop) {
    try {
        return turn(stop);
    } catch (const std::exception&) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, stop, pauseAfterFailure, [] { return false; });
        return Turn::planned;
    }
}

JobWorker::Turn JobWorker::turn(const std::stop_token& stop) {
    std::optional<Job> job;
    std::optional<JobItem> item;
    {
        Transaction transaction(service_.database);
        job = jobs_.next();
        if (!job) {
            work_.reset();
            return Turn::idle;
        }
        if (job->status == JobStatus::waiting) {
            begin(*job);
            transaction.commit();
            return Turn::planned;
        }
        item = jobs_.nextItem(job->id);
    }
    step(*job, item.value(), stop);
    return Turn::stepped;
}

void JobWorker::begin(const Job& job) {
    jobs_.begin(job.id);
    for (auto& item : Jobs(service_.database, job.account).items(job.id)) {
        try {
            makeWork(service_, job)->plan(item);
            if (item.total == 0) item.status = JobStatus::done;
        } catch (const ApiError& error) {
            fail(item, error);
        }
        jobs_.save(item);
    }
    jobs_.finishIfDone(job.id);
}

void JobWorker::step(const Job& job, const JobItem& item, const std::stop_token& stop) {
    try {
        auto& work = workFor(job, item);
        work.prepare(item, stop);
        if (stop.stop_requested()) return;
        commit(item, [&work](JobItem& changed) {
            work.perform(changed);
            const bool atEnd = ++changed.done == changed.total;
            changed.status = !atEnd              ? JobStatus::running
                             : changed.code == 0 ? JobStatus::done
                                                 : JobStatus::failed;
        });
    } catch (const ApiError& error) {
        commit(item, [&error](JobItem& changed) { fail(changed, error); });
    } catch (const std::exception& error) {
        const ApiError told(500, Code::internal, readable(error.what()));
        commit(item, [&told](JobItem& changed) { fail(changed, told); });
    }
}

void JobWorker::commit(JobItem item, const std::function<void(JobItem&)>& change) {
    Transaction transaction(service_.database);
    if (!jobs_.isOpen(item.job)) return;  // cancelled meanwhile
    change(item);
    jobs_.save(item);
    jobs_.finishIfDone(item.job);
    transaction.commit();
}

void JobWorker::fail(JobItem& item, const ApiError& error) {
    item.status = JobStatus::failed;
    item.code = static_cast<int>(error.code());
    item.reason = error.what();
}

Work& JobWorker::workFor(const Job& job, const JobItem& item) {
    const std::pair wanted(item.job, item.number);
    if (!work_ || workItem_ != wanted) work_ = makeWork(service_, job);
    workItem_ = wanted;
    return *work_;
}

}  // namespace quillboxd
