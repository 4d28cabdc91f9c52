#include "baseapi/platform/standard_output_log.h"

#include <poll.h>
#include <signal.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace baseapi::inline v1 {
namespace {

/// Keeps a write to a closed pipe from raising SIGPIPE in the thread, whoever it belongs to.
class NoPipeSignal {
  public:
    NoPipeSignal() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
    }
    ~NoPipeSignal() {
        if (broken && !wasPending_) {
            const timespec now{};
            while (sigtimedwait(&pipe_, nullptr, &now) < 0 && errno == EINTR) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    NoPipeSignal(const NoPipeSignal&) = delete;
    NoPipeSignal& operator=(const NoPipeSignal&) = delete;

    bool broken = false;

  private:
    sigset_t pipe_;
    sigset_t before_;
    bool wasPending_ = false;
};

/// A descriptor that a host made non-blocking is waited for.
bool canRetry(int descriptor) {
    if (errno == EINTR) return true;
    if (errno != EAGAIN) return false;
    pollfd writable{descriptor, POLLOUT, 0};
    return ::poll(&writable, 1, -1) >= 0 || errno == EINTR;
}

bool writeAll(int descriptor, std::span<iovec> parts) {
    while (!parts.empty()) {
        const auto written = ::writev(descriptor, parts.data(), static_cast<int>(parts.size()));
        if (written < 0) {
            if (canRetry(descriptor)) continue;
            return false;
        }
        auto left = static_cast<std::size_t>(written);
        while (!parts.empty() && left >= parts.front().iov_len) {
            left -= parts.front().iov_len;
            parts = parts.subspan(1);
        }
        if (parts.empty()) break;
        parts.front().iov_base = static_cast<char*>(parts.front().iov_base) + left;
        parts.front().iov_len -= left;
    }
    return true;
}

}  // namespace

StandardOutputLog::StandardOutputLog() : StandardOutputLog(STDOUT_FILENO) {}

StandardOutputLog::StandardOutputLog(int descriptor) : descriptor_(descriptor) {}

void StandardOutputLog::line(std::span<const std::string_view> pieces) noexcept {
    static char lineEnd[] = "\n";
    std::array<iovec, 64> parts;
    const std::lock_guard lock(mutex_);
    NoPipeSignal pipe;
    for (;;) {
        const auto count = std::min(pieces.size(), parts.size() - 1);
        for (std::size_t i = 0; i < count; ++i) {
            parts[i] = {const_cast<char*>(pieces[i].data()), pieces[i].size()};
        }
        pieces = pieces.subspan(count);
        const bool last = pieces.empty();
        if (last) parts[count] = {lineEnd, 1};
        if (!writeAll(descriptor_, std::span(parts).first(count + (last ? 1 : 0)))) {
            pipe.broken = errno == EPIPE;
            return;
        }
        if (last) return;
    }
}

}  // namespace baseapi::inline v1
