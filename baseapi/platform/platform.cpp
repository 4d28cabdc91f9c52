#include "baseapi/platform/platform.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <mutex>
#include <utility>

#include "baseapi/platform/curl_transport.h"
#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/no_address_book.h"
#include "baseapi/platform/no_photo_library.h"
#include "baseapi/platform/serial_queue.h"
#include "baseapi/platform/sqlite_store.h"
#include "baseapi/platform/standard_output_log.h"
#include "baseapi/platform/worker_pool.h"

namespace baseapi::inline v1 {
namespace {

std::filesystem::path folderFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::filesystem::path(value) : std::filesystem::path();
}

std::filesystem::path homeFolder() {
    if (auto home = folderFromEnvironment("HOME"); home.is_absolute()) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user ? user->pw_dir : "/";
}

std::filesystem::path defaultStateFolder() {
    // A relative XDG folder is to be ignored.
    const auto state = folderFromEnvironment("XDG_STATE_HOME");
    return (state.is_absolute() ? state : homeFolder() / ".local/state") / "baseapi";
}

std::filesystem::path defaultTemporaryFolder() {
    const auto folder = folderFromEnvironment("TMPDIR");
    return folder.empty() ? "/tmp" : folder;
}

std::shared_ptr<HttpTransport> defaultTransport(const Platform& parts) {
    return std::make_shared<CurlTransport>(parts.delegateQueue,
                                           CurlTransport::Options{.caBundle = parts.caBundle});
}

Platform completed(Platform parts) {
    if (parts.stateFolder.empty()) parts.stateFolder = defaultStateFolder();
    if (parts.temporaryFolder.empty()) parts.temporaryFolder = defaultTemporaryFolder();
    if (!parts.delegateQueue) parts.delegateQueue = sharedPool();
    if (!parts.http) parts.http = defaultTransport(parts);
    if (!parts.store) parts.store = std::make_shared<SqliteStore>(parts.stateFolder / "preferences.sqlite");
    if (!parts.log) parts.log = std::make_shared<StandardOutputLog>();
    if (!parts.mainQueue) parts.mainQueue = makeSerialQueue(sharedPool());
    if (!parts.photoLibrary) parts.photoLibrary = std::make_shared<NoPhotoLibrary>();
    if (!parts.waitClock) parts.waitClock = std::make_shared<SteadyWaitClock>();
    if (!parts.addressBook) parts.addressBook = std::make_shared<NoAddressBook>();
    return parts;
}

std::mutex mutex;
// Never destroyed: transfers may be under way while the process ends.
const Platform* settled = nullptr;

}  // namespace

void usePlatform(Platform parts) {
    const std::lock_guard lock(mutex);
    if (settled) fatalStop("usePlatform() must come before anything else of the library, and once");
    settled = new Platform(completed(std::move(parts)));
}

const Platform& platform() {
    static const Platform& parts = [&]() -> const Platform& {
        const std::lock_guard lock(mutex);
        if (!settled) settled = new Platform(completed({}));
        return *settled;
    }();
    return parts;
}

}  // namespace baseapi::inline v1
