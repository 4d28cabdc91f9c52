#pragma once

#include <curl/curl.h>
#include <sys/epoll.h>

#include <array>
#include <chrono>
#include <span>
#include <unordered_set>

namespace baseapi::inline v1 {

/// Waits for the sockets of a multi handle, and for whoever wakes it. All but `wait` and `wake` belongs to
/// the thread that uses the handle.
class SocketPoll {
  public:
    /// A socket, and what libcurl may do with it.
    struct Ready {
        curl_socket_t socket = CURL_SOCKET_BAD;
        int actions = 0;
    };

    SocketPoll();
    SocketPoll(const SocketPoll&) = delete;
    SocketPoll& operator=(const SocketPoll&) = delete;

    /// From now on the multi handle, which this object must outlive, says here which sockets it waits for.
    void serve(CURLM* multi);

    /// Ends the wait that is under way, or else the next one. Callable from any thread.
    void wake() const;

    /// The sockets that are ready, until the next wait; none where it was woken or the time is over.
    std::span<const Ready> wait(std::chrono::milliseconds longest);

    /// Whether libcurl still waits for a socket that is ready.
    bool isWaitedFor(curl_socket_t socket) const { return waitedFor_.contains(socket); }
    /// Reports the socket no more, until libcurl waits for it again.
    void forget(curl_socket_t socket);

  private:
    /// Closed with its owner.
    class Descriptor {
      public:
        /// Takes what a system call gave, and throws its error.
        explicit Descriptor(int descriptor);
        ~Descriptor();
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;
        operator int() const { return descriptor_; }  // NOLINT(google-explicit-constructor)

      private:
        const int descriptor_;
    };

    static int onSocket(CURL* easy, curl_socket_t socket, int what, void* poll, void*);

    std::unordered_set<curl_socket_t> waitedFor_;
    const Descriptor epoll_;
    const Descriptor wakeUp_;
    std::array<epoll_event, 64> events_{};
    std::array<Ready, 64> ready_{};
};

}  // namespace baseapi::inline v1
