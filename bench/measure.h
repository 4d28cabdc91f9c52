#pragma once

#include <functional>

namespace bench {

/// Wall-clock seconds that `work` takes.
double secondsOf(const std::function<void()>& work);

/// Prints, as one JSON object, the wall-clock seconds of `work`, the seconds that all threads of this process
/// spent on a processor meanwhile, and the most memory that the process has held before and in all, in MiB.
void printMeasured(const std::function<void()>& work);

}  // namespace bench
