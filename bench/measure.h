#pragma once

#include <functional>

namespace bench {

/// Wall-clock seconds that `work` takes.
double secondsOf(const std::function<void()>& work);

/// Seconds that all threads of this process have spent on a processor so far.
double processorSeconds();

/// The most memory that this process has held, in MiB.
double peakMemory();

}  // namespace bench
