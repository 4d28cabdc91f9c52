#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/net/network_result.h"
#include "baseapi/transfer/i_transfer.h"

namespace baseapi::inline v1 {

/// Doubles of the library's interfaces for the tests of a host; see docs/testing.md.
namespace testkit {

/// A value whose type only those know who put it in and take it out: a double has many operations, and what
/// need not be compiled once for each is not.
using Kept = std::shared_ptr<void>;

/// The end of what `keep` has made.
template <class T>
void destroyKept(void* value) {
    delete static_cast<T*>(value);
}
/// A copy of the value.
template <class T>
Kept keep(const T& value) {
    return Kept(static_cast<void*>(new T(value)), destroyKept<T>);
}

/// Its address stands for a type of event.
template <class Event>
inline char eventKey = 0;

/// A callback of a call.
struct Handler {
    /// Which events it takes.
    const void* event;
    /// A `std::function<void(Event)>` that is not empty.
    Kept function;
    /// Tells the function that its operation has failed; absent where no such event is.
    void (*fail)(const void* function, const std::string& why);
};

// The event that says that an operation has failed, for each kind that has such an event.

/// Of an operation of a service.
template <class Response>
NetworkResult<Response> failureOf(std::type_identity<NetworkResult<Response>>, const std::string& why) {
    return {NetworkFailure{-1, why}};
}
/// Of an upload.
inline UploadProcessResult failureOf(std::type_identity<UploadProcessResult>, const std::string& why) {
    return {UploadProcessResult::onFailure{-1, why}};
}
/// Of a download.
inline DownloadResult failureOf(std::type_identity<DownloadResult>, const std::string& why) {
    return {DownloadResult::failure{why}};
}
/// Of a backup of folders or of the album.
inline BackupResult failureOf(std::type_identity<BackupResult>, const std::string& why) {
    return {BackupResult::onComplete{0, 0, -1, why}};
}
/// Of a backup of the contacts.
inline BackupContactResult failureOf(std::type_identity<BackupContactResult>, const std::string& why) {
    return {BackupContactResult::failure{-1, why}};
}
/// Of a restore.
inline ContactResult failureOf(std::type_identity<ContactResult>, const std::string& why) {
    return {ContactResult::onFailure{"", -1, why}};
}

/// Tells the function, which takes such events, that its operation has failed.
template <class Event>
void tellFailure(const void* function, const std::string& why) {
    (*static_cast<const std::function<void(Event)>*>(function))(failureOf(std::type_identity<Event>{}, why));
}

/// What a call's argument brings to be called back on.
template <class Event>
std::vector<Handler> handlersIn(const std::function<void(Event)>& callback) {
    if (!callback) return {};
    if constexpr (requires(std::string why) { failureOf(std::type_identity<Event>{}, why); }) {
        return {{&eventKey<Event>, keep(callback), tellFailure<Event>}};
    } else {
        return {{&eventKey<Event>, keep(callback), nullptr}};
    }
}
/// Those of two arguments.
template <class First, class Second>
std::vector<Handler> handlersIn(const First& first, const Second& second) {
    auto all = handlersIn(first);
    for (auto& handler : handlersIn(second)) all.push_back(std::move(handler));
    return all;
}
/// The end of a backup of the contacts, and its progress.
inline std::vector<Handler> handlersIn(const BackupResultHandler& handler) {
    return handlersIn(handler.onComplete, handler.onProgress);
}

/// Whether an argument is there to be called back on.
template <class Parameter>
concept Callback = requires(const Parameter& parameter) {
    handlersIn(parameter);
};

/// Whether a callback takes the event.
template <class Parameter, class Event>
inline constexpr bool takes = std::is_same_v<Parameter, std::function<void(Event)>>;
template <>
inline constexpr bool takes<BackupResultHandler, BackupContactResult> = true;
template <>
inline constexpr bool takes<BackupResultHandler, BackupProgress> = true;

}  // namespace testkit
}  // namespace baseapi::inline v1
