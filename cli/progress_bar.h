#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "cli/job_progress.h"

namespace quillbox {

/// A bar of so many columns, filled up to this part of 1.
std::string bar(double part, std::size_t width);

/// One line that shows how far a job has come, no wider than `width` columns.
std::string barText(const JobProgress::View& view, std::size_t width);

/// Draws the line when it is time to.
class ProgressBar {
  public:
    /// The line, or nothing where the last one is too fresh.
    std::optional<std::string> draw(JobProgress& job, std::size_t width);
    /// The line has to go; false where there is none.
    bool forget();

  private:
    bool drawn_ = false;
    std::optional<JobProgress::Clock::time_point> last_;
};

}  // namespace quillbox
