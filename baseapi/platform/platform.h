#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/platform/address_book.h"
#include "baseapi/platform/executor.h"
#include "baseapi/platform/export.h"
#include "baseapi/platform/http_transport.h"
#include "baseapi/platform/key_value_store.h"
#include "baseapi/platform/log_sink.h"
#include "baseapi/platform/photo_library.h"
#include "baseapi/platform/wait_clock.h"

namespace baseapi::inline v1 {

/// What a system lends the library. A host puts its own parts in place with `usePlatform` before its first
/// call; what it leaves empty gets the default of any Linux machine. The parts are kept until the process
/// ends, and are in use until then, also while `main` returns.
struct Platform {
    /// What the library's callbacks run on and its requests are sent from. Default: a small pool of threads
    /// that grows while jobs block.
    std::shared_ptr<Executor> delegateQueue;
    /// Default: HTTP on libcurl, its callbacks on the delegate queue.
    std::shared_ptr<HttpTransport> http;
    /// Default: an SQLite file in `stateFolder`.
    std::shared_ptr<KeyValueStore> store;
    /// Default: standard output.
    std::shared_ptr<LogSink> log;
    /// The serial queue that upload events, the ends of downloads and of written vCards are reported on.
    /// Default: threads of the library's own, one at a time.
    std::shared_ptr<Executor> mainQueue;
    /// Default: none; its permission is not granted.
    std::shared_ptr<PhotoLibrary> photoLibrary;
    /// What the waits with a limit go by. Default: the system's steady clock.
    std::shared_ptr<WaitClock> waitClock;
    /// Default: none; its permission is not granted.
    std::shared_ptr<AddressBook> addressBook;

    /// Where the default store keeps its file; made where it does not exist. Default: "baseapi" in the user's
    /// XDG state folder.
    std::filesystem::path stateFolder;
    /// Default: `TMPDIR`, otherwise /tmp.
    std::filesystem::path temporaryFolder;
    /// A bundle of certificates to trust in place of the system's. Default: empty, the system's.
    std::filesystem::path caBundle;
    /// The name of the application; without one `Preferences.clear()` does nothing.
    std::optional<std::string> applicationIdentifier;
};

/// Puts the host's parts in place. Call it before the first use of anything else of the library; a later call
/// is a programming error and ends the process.
BASEAPI_API void usePlatform(Platform parts);

/// The parts in use, every one of them present. The first call settles them for the life of the process.
BASEAPI_API const Platform& platform();

}  // namespace baseapi::inline v1
