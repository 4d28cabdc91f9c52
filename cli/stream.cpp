#include "cli/stream.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace quillbox {
namespace {

bool isDumb() {
    const char* term = std::getenv("TERM");
    return term == nullptr || std::string_view(term) == "dumb" || *term == '\0';
}

bool wantsNoColour() {
    const char* value = std::getenv("NO_COLOR");
    return value != nullptr && *value != '\0';
}

}  // namespace

void waitForRoom(int descriptor) {
    pollfd entry{descriptor, POLLOUT, 0};
    ::poll(&entry, 1, -1);
}

Stream::Stream(int descriptor)
    : descriptor_(descriptor),
      terminal_(::isatty(descriptor) == 1 && !isDumb()),
      colours_(terminal_ && !wantsNoColour()) {}

void Stream::write(std::string_view text) {
    while (!text.empty() && error_ == 0) {
        const auto count = ::write(descriptor_, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno == EAGAIN)
            waitForRoom(descriptor_);
        else if (errno != EINTR)
            error_ = errno;
    }
}

std::size_t Stream::width() const {
    winsize size{};
    constexpr std::size_t usual = 80;
    if (::ioctl(descriptor_, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return usual;
    return size.ws_col;
}

bool Stream::unread() const {
    return error_ == EPIPE;
}

std::string Stream::error() const {
    const int number = error_;
    return number == 0 || number == EPIPE ? std::string() : std::generic_category().message(number);
}

}  // namespace quillbox
