#pragma once

#include <cstdint>
#include <memory>
#include <stop_token>

#include "quillboxd/store/jobs.h"

namespace quillboxd {

class Service;

/// How one item of a job is done, step by step. Each step is one transaction, so that a job that was cut goes
/// on behind the last step that was committed. What a step throws ends the item.
class Work {
  public:
    virtual ~Work() = default;

    /// Counts the steps, before the first; in a transaction.
    virtual void plan(JobItem& item) = 0;

    /// What of the item's next step needs no database, and may last. It may end early where `stop` is asked.
    virtual void prepare(const JobItem& item, const std::stop_token& stop);

    /// Does the item's next step, in a transaction.
    virtual void perform(JobItem& item) = 0;
};

std::unique_ptr<Work> makeWork(Service& service, const Job& job);

// What makeWork chooses from.
std::unique_ptr<Work> makeCopying(Service& service, const Job& job);
std::unique_ptr<Work> makeMoving(Service& service, const Job& job);
std::unique_ptr<Work> makeRemoving(Service& service, const Job& job);
std::unique_ptr<Work> makeUnpacking(Service& service, const Job& job);

}  // namespace quillboxd
