#pragma once

#include <functional>

namespace bench {

/// Wall-clock seconds that `work` takes.
double secondsOf(const std::function<void()>& work);

/// The most memory that this process has held, in MiB.
double peakMemory();

}  // namespace bench
