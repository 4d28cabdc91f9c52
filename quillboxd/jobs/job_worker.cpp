#include "quillboxd/jobs/job_worker.h"

#include <chrono>

#include "quillboxd/error.h"
#include "quillboxd/service.h"
#include "quillboxd/unicode.h"

namespace quillboxd {
namespace {

using namespace std::chrono_literals;

/// Between two turns others get at the database.
constexpr auto pauseAfterTurn = 100us;

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

void JobWorker::interrupt() {
    const std::lock_guard lock(mutex_);
    interruption_.request_stop();
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
        if (turn != Turn::idle) changed_.wait_for(lock, stop, pauseAfterTurn, [] { return false; });
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
    std::stop_source interruption;
    bool isPlanned = false;
    {
        Transaction transaction(service_.database);
        job = jobs_.next();
        if (!job) {
            work_.reset();
            return Turn::idle;
        }
        if (job->status == JobStatus::waiting) jobs_.begin(job->id);
        item = jobs_.unplannedItem(job->id);
        isPlanned = !item;
        if (isPlanned) item = jobs_.nextItem(job->id);
        transaction.commit();
        const std::lock_guard lock(mutex_);
        interruption_ = interruption;
    }
    const std::stop_callback atEnd(stop, [&interruption] { interruption.request_stop(); });
    if (isPlanned) {
        step(*job, item.value(), interruption.get_token());
        return Turn::stepped;
    }
    plan(*job, item.value());
    return Turn::planned;
}

void JobWorker::plan(const Job& job, const JobItem& item) {
    orFail(item, [&] {
        commit(item, [&](JobItem& changed) {
            makeWork(service_, job)->plan(changed);
            if (changed.total == 0) changed.status = JobStatus::done;
        });
    });
}

void JobWorker::step(const Job& job, const JobItem& item, const std::stop_token& stop) {
    orFail(item, [&] {
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
    });
}

void JobWorker::orFail(const JobItem& item, const std::function<void()>& act) {
    try {
        act();
    } catch (const ApiError& error) {
        fail(item, error.code(), error.what());
    } catch (const std::exception& error) {
        fail(item, Code::internal, error.what());
    }
}

void JobWorker::fail(const JobItem& item, Code code, const std::string& reason) {
    commit(item, [&](JobItem& changed) {
        changed.status = JobStatus::failed;
        changed.code = static_cast<int>(code);
        changed.reason = readable(reason);
    });
}

void JobWorker::commit(JobItem item, const std::function<void(JobItem&)>& change) {
    Transaction transaction(service_.database);
    if (!jobs_.isOpen(item.job)) return;  // cancelled meanwhile
    change(item);
    jobs_.save(item);
    jobs_.finishIfDone(item.job);
    transaction.commit();
}

Work& JobWorker::workFor(const Job& job, const JobItem& item) {
    const std::pair wanted(item.job, item.number);
    if (!work_ || workItem_ != wanted) work_ = makeWork(service_, job);
    workItem_ = wanted;
    return *work_;
}

}  // namespace quillboxd
