#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

#include "quillboxd/http/message.h"
#include "quillboxd/json.h"

namespace quillboxd {

/// Remembers the latest requests in the order in which they came; the session's token is masked.
class Journal {
  public:
    static constexpr std::size_t capacity = 100'000;

    /// A request has come; until it is answered its status is 0.
    std::int64_t arrived(const Request& request);
    void answered(std::int64_t seq, int status, std::int64_t bodyLength, std::string bodySha256,
                  double millis);
    void clear();
    json::array entries() const;
    /// At most `count`, the newest first, from the one before the number `before`.
    json::array latest(std::int64_t before, std::size_t count) const;

    /// The request's target with the token, as the request's own header tells it, made unreadable.
    static std::string maskedTarget(const Request& request);

  private:
    struct Entry {
        std::int64_t seq = 0;
        std::string verb;
        std::string target;
        Headers headers;
        std::int64_t bodyLength = 0;
        std::string bodySha256;
        int status = 0;
        double millis = 0;
    };

    static json::object toJson(const Entry& entry);

    mutable std::mutex mutex_;
    std::deque<Entry> entries_;
    std::int64_t lastSeq_ = 0;
};

}  // namespace quillboxd
