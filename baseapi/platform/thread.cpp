#include "baseapi/platform/thread.h"

#include <pthread.h>
#include <signal.h>

#include <cstdio>
#include <exception>

namespace baseapi::inline v1 {
namespace {

/// Blocks this thread's signals while it is there: a thread that is started now inherits that.
class SignalsBlocked {
  public:
    SignalsBlocked() {
        sigset_t signals;
        sigfillset(&signals);
        // These tell of a fault of the thread itself; blocked, they would end the process without a word.
        for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, SIGABRT}) {
            sigdelset(&signals, fault);
        }
        pthread_sigmask(SIG_BLOCK, &signals, &before_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

  private:
    sigset_t before_;
};

thread_local bool ofTheLibrary = false;

}  // namespace

std::thread startThread(const std::string& name, std::function<void()> body) {
    const SignalsBlocked blocked;
    std::thread thread([body = std::move(body)] {
        ofTheLibrary = true;
        body();
    });
    pthread_setname_np(thread.native_handle(), name.substr(0, 15).c_str());
    return thread;
}

bool onLibraryThread() {
    return ofTheLibrary;
}

void runJob(const std::function<void()>& job) noexcept {
    try {
        job();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "baseapi: a job threw: %s\n", error.what());
    } catch (...) {
        std::fputs("baseapi: a job threw\n", stderr);
    }
}

}  // namespace baseapi::inline v1
