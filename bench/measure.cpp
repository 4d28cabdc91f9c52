#include "bench/measure.h"

#include <sys/resource.h>

#include <chrono>

namespace bench {

namespace {

rusage usageOfProcess() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double processorSeconds() {
    const auto usage = usageOfProcess();
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double peakMemory() {
    return static_cast<double>(usageOfProcess().ru_maxrss) / 1024;
}

}  // namespace bench
