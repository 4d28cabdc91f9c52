#include "baseapi/platform/curl/transfer_loop.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "baseapi/platform/openssl_setup.h"
#include "baseapi/platform/thread.h"

namespace baseapi::inline v1 {
namespace {

/// Idle connections that are kept; libcurl's own rule would keep four times the running transfers, which is
/// none between two calls.
constexpr long kKeptConnections = 128;

/// A stalled transfer is noticed this part of its time-out too late at most.
constexpr int kLooksPerTimeout = 20;

constexpr std::chrono::milliseconds kLongestSleep{60'000};

/// So many handles are made for calls before one is told another address.
constexpr std::size_t kHandlesForCalls = 4;

TransportError cancelledError() {
    return {TransportError::Kind::cancelled, "Cancelled"};
}

void setUpLibcurl() {
    setUpOpenSsl();
    [[maybe_unused]] static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
}

CURLM* newMulti() {
    setUpLibcurl();
    CURLM* multi = curl_multi_init();
    if (!multi) throw std::bad_alloc();
    curl_multi_setopt(multi, CURLMOPT_MAXCONNECTS, kKeptConnections);
    return multi;
}

CURLSH* newShare() {
    setUpLibcurl();
    CURLSH* share = curl_share_init();
    if (!share) throw std::bad_alloc();
    curl_share_setopt(share, CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
    return share;
}

}  // namespace

TransferLoop::TransferLoop(std::shared_ptr<Executor> delegateQueue, std::filesystem::path caBundle,
                           std::size_t transfersPerOrigin)
    : delegateQueue_(std::move(delegateQueue)),
      caBundle_(std::move(caBundle)),
      transfersPerOrigin_(transfersPerOrigin),
      share_(newShare()),
      multi_(newMulti()) {
    poll_.serve(multi_.get());
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, &TransferLoop::onTimer);
    curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
}

int TransferLoop::onTimer(CURLM*, long milliseconds, void* loop) {
    static_cast<TransferLoop*>(loop)->timer_ =
        milliseconds < 0 ? Clock::time_point::max() : Clock::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

void TransferLoop::run() {
    std::span<const SocketPoll::Ready> ready;
    while (awaitTurn()) {
        move(ready);
        ready = poll_.wait(sleepAfterTurn());
    }
    abandonAll();
}

void TransferLoop::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    poll_.wake();
}

/// False where the loop is to stop; the turn is then the last one.
bool TransferLoop::awaitTurn() {
    std::unique_lock lock(mutex_);
    sleepsUntil_ = Clock::time_point::min();
    networkWaits_ = true;
    turnIsFree_.wait(lock, [this] { return !turnIsTaken_; });
    networkWaits_ = false;
    turnIsTaken_ = true;
    return !stopping_;
}

/// Ends the network thread's turn. It does not sleep where there are commands again: but it looks at the
/// sockets before it obeys them.
std::chrono::milliseconds TransferLoop::sleepAfterTurn() {
    std::unique_lock lock(mutex_);
    if (!stopping_) obeyCommands(lock);
    turnIsTaken_ = false;
    const auto now = Clock::now();
    sleepsUntil_ = commands_.empty() ? std::clamp(nextMoment(), now, now + kLongestSleep) : now;
    return std::chrono::ceil<std::chrono::milliseconds>(sleepsUntil_ - now);
}

void TransferLoop::begin(std::shared_ptr<Transfer> transfer) {
    submit({std::move(transfer), false});
}

void TransferLoop::cancel(std::shared_ptr<Transfer> transfer) {
    submit({std::move(transfer), true});
}

void TransferLoop::submit(Command command) {
    std::unique_lock lock(mutex_);
    if (stopping_) {
        lock.unlock();
        if (!command.cancel) command.transfer->fail(cancelledError());
        return;
    }
    commands_.push_back(std::move(command));
    // Whoever has the turn obeys this command too. A thread of the host's takes none: on it the signal of a
    // broken connection would end the process.
    if (turnIsTaken_) return;
    if (onLibraryThread()) takeTurn(lock);
    const bool wakes = (commands_.empty() ? nextMoment() : Clock::time_point::min()) < sleepsUntil_;
    lock.unlock();
    if (wakes) poll_.wake();
}

/// A turn of another than the network thread, which comes first where it waits for one.
void TransferLoop::takeTurn(std::unique_lock<std::mutex>& lock) {
    turnIsTaken_ = true;
    while (!commands_.empty() && !networkWaits_ && !stopping_) obeyCommands(lock);
    turnIsTaken_ = false;
    if (networkWaits_) turnIsFree_.notify_one();
}

void TransferLoop::obeyCommands(std::unique_lock<std::mutex>& lock) {
    if (commands_.empty()) return;
    std::swap(taken_, commands_);
    lock.unlock();
    for (auto& command : taken_) obey(std::move(command));
    taken_.clear();
    move({});
    lock.lock();
}

/// Lets libcurl go on with these sockets, and with what its time has come for.
void TransferLoop::move(std::span<const SocketPoll::Ready> sockets) {
    int running = 0;
    for (const auto& [socket, actions] : sockets) {
        if (poll_.isWaitedFor(socket)) {
            curl_multi_socket_action(multi_.get(), socket, actions, &running);
        } else {
            poll_.forget(socket);
        }
    }
    const auto now = Clock::now();
    if (timer_ <= now) {
        timer_ = Clock::time_point::max();
        curl_multi_socket_action(multi_.get(), CURL_SOCKET_TIMEOUT, 0, &running);
    }
    takeResults();
    if (nextLook_ <= now) lookForStalled(now);
}

void TransferLoop::obey(Command command) {
    if (command.cancel) {
        abandon(command.transfer);
    } else {
        start(std::move(command.transfer));
    }
}

void TransferLoop::start(std::shared_ptr<Transfer> transfer) {
    auto& origin = origins_[std::string(transfer->origin())];
    origin.waiting.push_back(std::move(transfer));
    startWaiting(origin);
}

void TransferLoop::startWaiting(Origin& origin) {
    while (origin.active < transfersPerOrigin_ && !origin.waiting.empty()) {
        const auto next = std::move(origin.waiting.front());
        origin.waiting.pop_front();
        if (next->cancelled()) {
            next->fail(cancelledError());
        } else if (activate(next, origin)) {
            ++origin.active;
        }
    }
}

/// Hands the transfer to libcurl; false where it has failed already.
bool TransferLoop::activate(const std::shared_ptr<Transfer>& transfer, Origin& origin) {
    std::unique_ptr<EasyHandle> easy;
    try {
        easy = takeHandle(*transfer);
        transfer->begin(*easy);
        active_.reserve(active_.size() + 1);
        if (curl_multi_add_handle(multi_.get(), easy->get()) != CURLM_OK) throw std::bad_alloc();
        const auto now = Clock::now();
        const auto nextLook = now + transfer->idleTimeout() / kLooksPerTimeout;
        transfer->slot = active_.size();
        active_.push_back({transfer, std::move(easy), &origin, {}, now, nextLook});
        nextLook_ = std::min(nextLook_, nextLook);
        return true;
    } catch (const std::exception& error) {
        transfer->fail({TransportError::Kind::failed, error.what()});
        return false;
    }
}

void TransferLoop::abandon(const std::shared_ptr<Transfer>& transfer) {
    if (transfer->slot < active_.size() && active_[transfer->slot].transfer == transfer) {
        auto active = remove(*transfer);
        transfer->fail(cancelledError());
        return release(std::move(active));
    }
    auto& waiting = origins_[std::string(transfer->origin())].waiting;
    const auto at = std::find(waiting.begin(), waiting.end(), transfer);
    if (at == waiting.end()) return;
    waiting.erase(at);
    transfer->fail(cancelledError());
}

void TransferLoop::abandonAll() {
    for (auto& [name, origin] : origins_) {
        for (const auto& transfer : std::exchange(origin.waiting, {})) transfer->fail(cancelledError());
    }
    while (!active_.empty()) {
        const auto transfer = active_.back().transfer;
        abandon(transfer);
    }
    {
        const std::lock_guard lock(mutex_);
        std::swap(taken_, commands_);
    }
    for (const auto& command : taken_) {
        if (!command.cancel) command.transfer->fail(cancelledError());
    }
    // A transfer holds its loop.
    taken_.clear();
}

void TransferLoop::takeResults() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const auto code = message->data.result;
        Transfer* transfer = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        auto active = remove(*transfer);
        transfer->end(code);
        release(std::move(active));
    }
}

/// Takes the transfer out of libcurl's hands; the connection of an unfinished one is closed.
TransferLoop::Active TransferLoop::remove(Transfer& transfer) {
    const auto slot = transfer.slot;
    curl_multi_remove_handle(multi_.get(), active_[slot].easy->get());
    std::swap(active_[slot], active_.back());
    active_[slot].transfer->slot = slot;
    auto removed = std::move(active_.back());
    active_.pop_back();
    return removed;
}

/// Puts the handle by for the next transfer of its kind, and lets the next one of its origin begin.
void TransferLoop::release(Active active) {
    spareHandles_[static_cast<std::size_t>(active.transfer->kind())].push_back(std::move(active.easy));
    --active.origin->active;
    startWaiting(*active.origin);
}

void TransferLoop::lookForStalled(Clock::time_point now) {
    nextLook_ = Clock::time_point::max();
    std::vector<std::shared_ptr<Transfer>> stalled;
    for (auto& active : active_) {
        if (now >= active.nextLook) {
            auto movement = active.transfer->movement();
            movement.unsent = sockets_.unsentBytes(active.transfer->localPort());
            if (movement != std::exchange(active.movement, movement)) active.movedAt = now;
            active.nextLook = now + active.transfer->idleTimeout() / kLooksPerTimeout;
            if (now - active.movedAt >= active.transfer->idleTimeout()) stalled.push_back(active.transfer);
        }
        nextLook_ = std::min(nextLook_, active.nextLook);
    }
    for (const auto& transfer : stalled) {
        auto active = remove(*transfer);
        transfer->end(CURLE_OPERATION_TIMEDOUT);
        release(std::move(active));
    }
}

/// A spare handle that knows the URL, if there is one: taking a URL apart costs as much as all else that a
/// handle is told. Calls have few addresses, so some of their handles are kept for that; every part and every
/// download has its own.
std::unique_ptr<EasyHandle> TransferLoop::takeHandle(const Transfer& transfer) {
    auto& spare = spareHandles_[static_cast<std::size_t>(transfer.kind())];
    const auto enough = transfer.kind() == Transfer::Kind::data ? kHandlesForCalls : 1;
    auto found = std::ranges::find(spare, transfer.url(), &EasyHandle::url);
    if (found == spare.end() && spare.size() < enough) return newHandle(transfer);
    if (found == spare.end()) found = spare.begin();
    auto handle = std::move(*found);
    spare.erase(found);
    return handle;
}

std::unique_ptr<EasyHandle> TransferLoop::newHandle(const Transfer& transfer) {
    auto handle = std::make_unique<EasyHandle>();
    transfer.setUpHandle(*handle);
    sockets_.watch(*handle);
    handle->set(CURLOPT_SHARE, share_.get());
    if (!caBundle_.empty()) handle->set(CURLOPT_CAINFO, caBundle_.c_str());
    return handle;
}

}  // namespace baseapi::inline v1
