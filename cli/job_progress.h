#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace quillbox {

/// How far a job of several files has come, by their sizes. What it shows never falls back and never passes
/// the whole, and a part or a file that failed does not count as done.
class JobProgress {
  public:
    using Clock = std::chrono::steady_clock;

    /// Where the size in bytes is not known, the job is counted in shares.
    enum class Unit { bytes, shares };
    /// The whole of a job that is counted in shares.
    static constexpr std::int64_t allShares = 1'000'000;

    struct View {
        std::string label;
        std::int64_t done = 0;
        std::int64_t total = 0;
        Unit unit = Unit::bytes;
        /// Bytes or shares a second of late; absent before there is something to tell.
        std::optional<double> rate;
        std::optional<std::chrono::seconds> left;
    };

    explicit JobProgress(std::int64_t total, Unit unit = Unit::bytes) : total_(total), unit_(unit) {}

    /// The next file, or the same one once more.
    void begin(std::string label, std::int64_t size);
    /// So many bytes of the file have been read before anything is sent; they only stand beside the label.
    void hashed(std::int64_t bytes) { hashed_ = bytes; }
    /// So many bytes of the file have gone, those of failed parts included.
    void sent(std::int64_t bytes) { sent_ = bytes; }
    /// A part of so many bytes has failed; it counts in full among the bytes that have gone.
    void partFailed(std::int64_t size) { failed_ += size; }
    /// The file has come to its end.
    void end(bool success);

    View view(Clock::time_point now);

  private:
    struct Sample {
        Clock::time_point time;
        std::int64_t done;
    };

    std::string labelNow() const;
    std::int64_t doneNow() const;
    std::optional<double> rate(Clock::time_point now);

    const std::int64_t total_;
    const Unit unit_;
    std::int64_t doneBefore_ = 0;
    std::string label_;
    std::int64_t size_ = 0;
    std::int64_t hashed_ = 0;
    std::int64_t sent_ = 0;
    std::int64_t failed_ = 0;
    std::int64_t shown_ = 0;
    std::deque<Sample> samples_;
};

}  // namespace quillbox
