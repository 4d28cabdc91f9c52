#include "quillboxd/jobs/work.h"

#include <stdexcept>

namespace quillboxd {

void Work::prepare(const JobItem&, const std::stop_token&) {}

std::unique_ptr<Work> makeWork(Service& service, const Job& job) {
    switch (job.kind) {
        case JobKind::copy:
            return makeCopying(service, job);
        case JobKind::move:
            return makeMoving(service, job);
        case JobKind::remove:
            return makeRemoving(service, job);
        case JobKind::unpack:
            return makeUnpacking(service, job);
    }
    throw std::logic_error("a job of no kind");
}

}  // namespace quillboxd
