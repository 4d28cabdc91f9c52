#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillboxd/json.h"

namespace quillboxd {

enum class FaultKind { status, reset, stall, trickle, truncate, garbage, html, empty, expire };

/// A planned misbehaviour of the service.
struct Fault {
    std::int64_t id = 0;
    FaultKind kind = FaultKind::status;
    std::string verb;  ///< empty: any
    std::string path;  ///< may end in "*"
    std::int64_t after = 0;
    std::int64_t times = 1;
    std::int64_t status = 0;
    std::string body;
    double seconds = 0;
    double bytesPerSecond = 0;
    std::int64_t bytes = 0;
    json::object asPlanned;
    std::int64_t seen = 0;
    std::int64_t hits = 0;
};

/// The plans, in the order in which they were made.
class Faults {
  public:
    /// Takes a plan of the control endpoint in; throws ApiError for one that cannot be. Returns its id.
    std::int64_t plan(std::string_view body);
    void clear();
    json::array list() const;

    /// The first plan that hits this request; each plan that fits counts it.
    std::optional<Fault> take(std::string_view verb, std::string_view path);

    /// Waits so long, but no longer than until the plans are cleared.
    void wait(std::chrono::duration<double> duration);

  private:
    mutable std::mutex mutex_;
    std::condition_variable cleared_;
    std::int64_t clearings_ = 0;
    std::vector<Fault> plans_;
    std::int64_t lastId_ = 0;
    std::atomic<bool> any_ = false;
};

}  // namespace quillboxd
