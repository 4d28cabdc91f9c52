#pragma once

#include <mutex>
#include <string>

#include "cli/job_progress.h"
#include "cli/output.h"

namespace quillbox {

/// Shows how far a job has come. Callable from any thread.
class JobDisplay {
  public:
    JobDisplay(Output& output, std::int64_t total, JobProgress::Unit unit = JobProgress::Unit::bytes)
        : output_(output), job_(total, unit) {}

    ~JobDisplay() { close(); }
    JobDisplay(const JobDisplay&) = delete;
    JobDisplay& operator=(const JobDisplay&) = delete;

    void begin(const std::string& label, std::int64_t size) {
        show([&] { job_.begin(label, size); });
    }
    /// The job as a whole, where its files are not told apart.
    void update(const std::string& label, std::int64_t done, std::int64_t total) {
        show([&] {
            job_.begin(label, total);
            job_.sent(done);
        });
    }
    void hashed(std::int64_t bytes) {
        show([&] { job_.hashed(bytes); });
    }
    void sent(std::int64_t bytes) {
        show([&] { job_.sent(bytes); });
    }
    void partFailed(std::int64_t size) {
        show([&] { job_.partFailed(size); });
    }
    void end(bool success) {
        show([&] { job_.end(success); });
    }
    /// Nothing more is shown.
    void close() { output_.endProgress(); }

  private:
    template <class Change>
    void show(Change&& change) {
        std::lock_guard lock(mutex_);
        change();
        output_.progress(job_);
    }

    Output& output_;
    std::mutex mutex_;
    JobProgress job_;
};

}  // namespace quillbox
