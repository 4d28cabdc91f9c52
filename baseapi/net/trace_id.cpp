#include "baseapi/net/trace_id.h"

#include <random>
#include <string_view>

namespace baseapi::inline v1 {
namespace {

/// The ids are no secret, they only have to differ: so the system is asked once for each thread.
std::mt19937_64 seededEngine() {
    std::random_device system;
    std::seed_seq seed{system(), system(), system(), system()};
    return std::mt19937_64(seed);
}

}  // namespace

std::string makeTraceId() {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    thread_local auto engine = seededEngine();
    std::string id = "000000000000DSDK----------------000000";
    auto random = engine();
    for (auto place = id.begin() + 16; place != id.begin() + 32; ++place, random >>= 4)
        *place = kDigits[random & 15];
    // A random UUID has its version in the thirteenth digit.
    id[28] = '4';
    return id;
}

}  // namespace baseapi::inline v1
