#pragma once

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "baseapi/platform/curl/easy_handle.h"
#include "baseapi/platform/curl/open_sockets.h"
#include "baseapi/platform/curl/socket_poll.h"
#include "baseapi/platform/curl/transfer.h"
#include "baseapi/platform/executor.h"

namespace baseapi::inline v1 {

/// All transfers of one transport, moved by libcurl's multi interface. libcurl is used by one thread at a
/// time, whose turn it is: the network thread where sockets are ready or time is over, and the library's
/// thread that begins a transfer, which thus brings its request on the way itself.
class TransferLoop {
  public:
    TransferLoop(std::shared_ptr<Executor> delegateQueue, std::filesystem::path caBundle,
                 std::size_t transfersPerOrigin);

    /// The network thread's whole life, until `stop`.
    void run();
    /// Ends all transfers as cancelled, also those that begin later.
    void stop();

    void begin(std::shared_ptr<Transfer> transfer);
    void cancel(std::shared_ptr<Transfer> transfer);

    Executor& delegateQueue() { return *delegateQueue_; }
    std::int64_t newIdentifier() { return ++identifiers_; }
    void countBegun() { ++running_; }
    void countEnded() { --running_; }
    std::size_t running() const { return running_; }

  private:
    using Clock = std::chrono::steady_clock;

    struct Command {
        std::shared_ptr<Transfer> transfer;
        bool cancel;
    };
    /// The transfers to one scheme, host and port.
    struct Origin {
        std::size_t active = 0;
        std::deque<std::shared_ptr<Transfer>> waiting;
    };
    /// A transfer that libcurl is at work on, and when something was last seen to move.
    struct Active {
        std::shared_ptr<Transfer> transfer;
        std::unique_ptr<EasyHandle> easy;
        Origin* origin;
        Movement movement;
        Clock::time_point movedAt;
        Clock::time_point nextLook;
    };
    struct MultiDeleter {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };
    struct ShareDeleter {
        void operator()(CURLSH* share) const { curl_share_cleanup(share); }
    };

    static int onTimer(CURLM* multi, long milliseconds, void* loop);

    void submit(Command command);
    bool awaitTurn();
    std::chrono::milliseconds sleepAfterTurn();
    void takeTurn(std::unique_lock<std::mutex>& lock);
    void obeyCommands(std::unique_lock<std::mutex>& lock);
    void move(std::span<const SocketPoll::Ready> sockets);
    Clock::time_point nextMoment() const { return std::min(timer_, nextLook_); }

    void obey(Command command);
    void start(std::shared_ptr<Transfer> transfer);
    void startWaiting(Origin& origin);
    bool activate(const std::shared_ptr<Transfer>& transfer, Origin& origin);
    void abandon(const std::shared_ptr<Transfer>& transfer);
    void abandonAll();
    void takeResults();
    Active remove(Transfer& transfer);
    void release(Active active);
    void lookForStalled(Clock::time_point now);
    std::unique_ptr<EasyHandle> takeHandle(const Transfer& transfer);
    std::unique_ptr<EasyHandle> newHandle(const Transfer& transfer);

    const std::shared_ptr<Executor> delegateQueue_;
    const std::filesystem::path caBundle_;
    const std::size_t transfersPerOrigin_;
    std::atomic<std::int64_t> identifiers_{0};
    std::atomic<std::size_t> running_{0};

    std::mutex mutex_;
    std::condition_variable turnIsFree_;
    std::vector<Command> commands_;
    bool turnIsTaken_ = false;
    bool networkWaits_ = false;
    bool stopping_ = false;
    /// Until when the network thread sleeps; long ago while it does not.
    Clock::time_point sleepsUntil_ = Clock::time_point::min();

    SocketPoll poll_;

    // Of the thread whose turn it is. The memory is used again for the next commands.
    std::vector<Command> taken_;
    // Handles end before what they share and what they are in.
    OpenSockets sockets_;
    std::unique_ptr<CURLSH, ShareDeleter> share_;
    std::unique_ptr<CURLM, MultiDeleter> multi_;
    std::vector<Active> active_;
    std::unordered_map<std::string, Origin> origins_;
    std::array<std::vector<std::unique_ptr<EasyHandle>>, 3> spareHandles_;
    /// When libcurl wants to go on without a socket.
    Clock::time_point timer_ = Clock::time_point::max();
    Clock::time_point nextLook_ = Clock::time_point::max();
};

}  // namespace baseapi::inline v1
