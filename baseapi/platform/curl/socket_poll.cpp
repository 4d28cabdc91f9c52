#include "baseapi/platform/curl/socket_poll.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace baseapi::inline v1 {
namespace {

constexpr std::uint32_t kFailed = EPOLLERR | EPOLLHUP;

/// What a system call gave.
int orThrow(int result) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), "cannot wait for sockets");
    return result;
}

/// A failed socket is ready for everything: libcurl meets the error where it goes on.
int actionsOf(std::uint32_t events) {
    int actions = 0;
    if ((events & (EPOLLIN | kFailed)) != 0) actions |= CURL_CSELECT_IN;
    if ((events & (EPOLLOUT | kFailed)) != 0) actions |= CURL_CSELECT_OUT;
    return actions;
}

std::uint32_t eventsOf(int what) {
    std::uint32_t events = 0;
    if ((what & CURL_POLL_IN) != 0) events |= EPOLLIN;
    if ((what & CURL_POLL_OUT) != 0) events |= EPOLLOUT;
    return events;
}

}  // namespace

SocketPoll::Descriptor::Descriptor(int descriptor) : descriptor_(orThrow(descriptor)) {}

SocketPoll::Descriptor::~Descriptor() {
    ::close(descriptor_);
}

SocketPoll::SocketPoll()
    : epoll_(::epoll_create1(EPOLL_CLOEXEC)), wakeUp_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    // Edge-triggered, so that nobody has to read what was written.
    epoll_event event{.events = EPOLLIN | EPOLLET, .data = {.fd = wakeUp_}};
    orThrow(::epoll_ctl(epoll_, EPOLL_CTL_ADD, wakeUp_, &event));
}

void SocketPoll::serve(CURLM* multi) {
    curl_multi_setopt(multi, CURLMOPT_SOCKETFUNCTION, &SocketPoll::onSocket);
    curl_multi_setopt(multi, CURLMOPT_SOCKETDATA, this);
}

void SocketPoll::wake() const {
    const std::uint64_t once = 1;
    [[maybe_unused]] const auto written = ::write(wakeUp_, &once, sizeof once);
}

std::span<const SocketPoll::Ready> SocketPoll::wait(std::chrono::milliseconds longest) {
    const int count = ::epoll_wait(epoll_, events_.data(), static_cast<int>(events_.size()),
                                   static_cast<int>(longest.count()));
    std::size_t ready = 0;
    for (int at = 0; at < count; ++at) {
        const auto& event = events_[static_cast<std::size_t>(at)];
        if (event.data.fd != wakeUp_) ready_[ready++] = {event.data.fd, actionsOf(event.events)};
    }
    return std::span(ready_).first(ready);
}

void SocketPoll::forget(curl_socket_t socket) {
    ::epoll_ctl(epoll_, EPOLL_CTL_DEL, socket, nullptr);
}

/// libcurl says that it waits no more also of a socket that it has closed, when the number may be that of
/// somebody else's file: so it is forgotten when it turns out to be ready, not before. What cannot be
/// watched does not move, and ends by its time-out.
int SocketPoll::onSocket(CURL*, curl_socket_t socket, int what, void* poll, void*) {
    auto& self = *static_cast<SocketPoll*>(poll);
    if (what == CURL_POLL_REMOVE) {
        self.waitedFor_.erase(socket);
        return 0;
    }
    self.waitedFor_.insert(socket);
    epoll_event event{.events = eventsOf(what), .data = {.fd = socket}};
    if (::epoll_ctl(self.epoll_, EPOLL_CTL_MOD, socket, &event) != 0)
        ::epoll_ctl(self.epoll_, EPOLL_CTL_ADD, socket, &event);
    return 0;
}

}  // namespace baseapi::inline v1
