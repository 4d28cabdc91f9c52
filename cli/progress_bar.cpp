#include "cli/progress_bar.h"

#include <algorithm>
#include <utility>

#include "cli/quantity.h"
#include "cli/text.h"

namespace quillbox {
namespace {

constexpr auto interval = std::chrono::milliseconds(100);
constexpr std::size_t fullBar = 24;
constexpr std::size_t shortestLabel = 8;

double fraction(const JobProgress::View& view) {
    return view.total > 0 ? static_cast<double>(view.done) / static_cast<double>(view.total) : 0.0;
}

std::string figures(const JobProgress::View& view) {
    auto text = std::to_string(static_cast<int>(fraction(view) * 100)) + " %";
    if (view.unit == JobProgress::Unit::bytes) {
        text += "  " + byteText(static_cast<double>(view.done)) + " of " +
                byteText(static_cast<double>(view.total));
        if (view.rate) text += "  " + byteText(*view.rate) + "/s";
    }
    if (view.left) text += "  " + timeText(*view.left) + " left";
    return text;
}

}  // namespace

// Eighths of a column, so that slow work is seen to move.
std::string bar(double part, std::size_t width) {
    constexpr const char* eighths[] = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
    const auto filled = static_cast<std::size_t>(part * static_cast<double>(8 * width));
    std::string text;
    for (std::size_t column = 0; column < filled / 8; ++column) text += "█";
    text += eighths[filled % 8];
    const auto used = filled / 8 + (filled % 8 != 0 ? 1 : 0);
    for (auto column = used; column < width; ++column) text += "░";
    return text;
}

std::string barText(const JobProgress::View& view, std::size_t width) {
    const auto numbers = figures(view);
    auto label = harmless(view.label);
    const auto room = width > columns(numbers) + 2 ? width - columns(numbers) - 2 : 0;
    if (room < shortestLabel) return shortened(numbers, width);
    const auto barWidth = std::min(fullBar, room > 2 * shortestLabel ? room - shortestLabel - 2 : 0);
    if (barWidth == 0) return shortened(label, room) + "  " + numbers;
    return shortened(label, room - barWidth - 2) + "  " + bar(fraction(view), barWidth) + "  " + numbers;
}

std::optional<std::string> ProgressBar::draw(JobProgress& job, std::size_t width) {
    const auto now = JobProgress::Clock::now();
    if (last_ && now - *last_ < interval) return std::nullopt;
    last_ = now;
    drawn_ = true;
    // A character in the last column would make some terminals begin a new line.
    return barText(job.view(now), width > 0 ? width - 1 : 0);
}

bool ProgressBar::forget() {
    last_.reset();
    return std::exchange(drawn_, false);
}

}  // namespace quillbox
