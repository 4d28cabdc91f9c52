#include "tests/support/test_platform.h"

#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

#include "baseapi/platform/platform.h"
#include "baseapi/platform/serial_queue.h"
#include "baseapi/platform/thread.h"
#include "baseapi/platform/worker_pool.h"
#include "tests/support/event.h"
#include "tests/support/temporary_folder.h"

namespace test_support {
namespace {

thread_local bool inJobOfMainQueue = false;

/// A queue whose jobs can tell that they are its own.
class NotedQueue : public baseapi::Executor {
  public:
    void post(std::function<void()> job) override {
        inner_->post([job = std::move(job)] {
            inJobOfMainQueue = true;
            baseapi::runJob(job);
            inJobOfMainQueue = false;
        });
    }

  private:
    const std::shared_ptr<baseapi::Executor> inner_ = baseapi::makeSerialQueue(baseapi::sharedPool());
};

struct TestPlatform {
    TestPlatform() {
        std::filesystem::create_directory(temporary);
        baseapi::Platform parts;
        parts.log = log;
        parts.photoLibrary = photoLibrary;
        parts.waitClock = waitClock;
        parts.mainQueue = std::make_shared<NotedQueue>();
        parts.addressBook = addressBook;
        parts.stateFolder = folder / "state";
        parts.temporaryFolder = temporary;
        parts.applicationIdentifier = "org.example.baseapi-tests";
        baseapi::usePlatform(std::move(parts));
    }

    TemporaryFolder folder;
    std::filesystem::path temporary = folder / "temporary";
    std::shared_ptr<RecordingLog> log = std::make_shared<RecordingLog>();
    std::shared_ptr<PhotoLibraryDouble> photoLibrary = std::make_shared<PhotoLibraryDouble>();
    std::shared_ptr<TestWaitClock> waitClock = std::make_shared<TestWaitClock>();
    std::shared_ptr<AddressBookDouble> addressBook = std::make_shared<AddressBookDouble>();
};

const TestPlatform testPlatform;

}  // namespace

bool isOnMainQueue() {
    return inJobOfMainQueue;
}

RecordingLog& recordingLog() {
    return *testPlatform.log;
}

PhotoLibraryDouble& photoLibrary() {
    return *testPlatform.photoLibrary;
}

TestWaitClock& testWaitClock() {
    return *testPlatform.waitClock;
}

AddressBookDouble& addressBook() {
    return *testPlatform.addressBook;
}

bool transfersEnd() {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (baseapi::platform().http->running() > 0) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::yield();
    }
    return true;
}

const std::filesystem::path& temporaryFolder() {
    return testPlatform.temporary;
}

}  // namespace test_support
