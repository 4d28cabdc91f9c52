#include "bench/measure.h"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>

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

double processorSeconds(const rusage& usage) {
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double peakMemory(const rusage& usage) {
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

}  // namespace

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void printMeasured(const std::function<void()>& work) {
    const auto before = usageOfProcess();
    const auto elapsed = secondsOf(work);
    const auto after = usageOfProcess();
    std::printf("{\"seconds\":%.6f,\"processorSeconds\":%.6f,\"firstMiB\":%.1f,\"peakMiB\":%.1f}\n", elapsed,
                processorSeconds(after) - processorSeconds(before), peakMemory(before), peakMemory(after));
}

}  // namespace bench
