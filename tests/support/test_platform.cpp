#include "tests/support/test_platform.h"

#include <memory>

#include "baseapi/platform/platform.h"
#include "tests/support/temporary_folder.h"

namespace test_support {
namespace {

struct TestPlatform {
    TestPlatform() {
        std::filesystem::create_directory(temporary);
        baseapi::Platform parts;
        parts.log = log;
        parts.photoLibrary = photoLibrary;
        parts.waitClock = waitClock;
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

const std::filesystem::path& temporaryFolder() {
    return testPlatform.temporary;
}

}  // namespace test_support
