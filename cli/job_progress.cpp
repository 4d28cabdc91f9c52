#include "cli/job_progress.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillbox {
namespace {

constexpr auto rateWindow = std::chrono::seconds(5);
constexpr auto leastSpan = std::chrono::milliseconds(300);

}  // namespace

void JobProgress::begin(std::string label, std::int64_t size) {
    label_ = std::move(label);
    size_ = size;
    hashed_ = sent_ = failed_ = 0;
}

void JobProgress::end(bool success) {
    if (success) doneBefore_ += size_;
    size_ = hashed_ = sent_ = failed_ = 0;
}

std::string JobProgress::labelNow() const {
    if (hashed_ == 0 || hashed_ >= size_) return label_;
    return label_ + " (hashing, " + std::to_string(100 * hashed_ / size_) + " %)";
}

std::int64_t JobProgress::doneNow() const {
    const auto ofThisFile = std::clamp<std::int64_t>(sent_ - failed_, 0, size_);
    return std::min(doneBefore_ + ofThisFile, total_);
}

std::optional<double> JobProgress::rate(Clock::time_point now) {
    samples_.push_back({now, shown_});
    // One sample older than the window stays, so that the window is covered whole.
    while (samples_.size() > 2 && now - samples_[1].time >= rateWindow) samples_.pop_front();
    const auto span = now - samples_.front().time;
    if (span < leastSpan) return std::nullopt;
    return static_cast<double>(shown_ - samples_.front().done) / std::chrono::duration<double>(span).count();
}

JobProgress::View JobProgress::view(Clock::time_point now) {
    shown_ = std::max(shown_, doneNow());
    View view{labelNow(), shown_, total_, unit_, rate(now), std::nullopt};
    constexpr double tooLongToTell = 100 * 3600;
    if (view.rate && *view.rate > 0) {
        const double seconds = static_cast<double>(total_ - shown_) / *view.rate;
        if (seconds < tooLongToTell) view.left = std::chrono::seconds(std::llround(seconds));
    }
    return view;
}

}  // namespace quillbox
