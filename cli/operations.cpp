#include "cli/operations.h"

#include <algorithm>
#include <array>
#include <utility>

#include "baseapi/api/album/i_album.h"
#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/api/carrier/i_carrier.h"
#include "baseapi/api/favor/i_favor.h"
#include "baseapi/api/favor/i_revision.h"
#include "baseapi/api/files/i_file.h"
#include "baseapi/api/job/i_job.h"
#include "baseapi/api/share/i_share.h"
#include "baseapi/api/sharefolder/i_share_folder.h"
#include "baseapi/api/sync/i_folder_sync.h"
#include "baseapi/api/user/i_space.h"
#include "baseapi/api/user/i_user.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/json/codec.h"
#include "cli/problems.h"
#include "cli/text.h"

namespace quillbox {
namespace {

using baseapi::CloudInstance;
using baseapi::NetworkCallback;
using baseapi::NetworkFailure;
using baseapi::NetworkResult;

using Done = std::function<void(OperationResult)>;

std::string words(const baseapi::DecodingError& error) {
    using Kind = baseapi::DecodingError::Kind;
    const auto place = error.path.empty() ? std::string("RECORD") : "\"" + error.path + "\"";
    if (error.kind == Kind::typeMismatch || error.kind == Kind::valueNotFound)
        return place + " must be of type " + error.subject +
               (error.detail.empty() ? "" : " (" + error.detail + ")");
    return "RECORD is no JSON object that can be read: " + error.description();
}

/// The keys of `text` laid over an empty record.
template <class Bean>
std::optional<Bean> recordFrom(std::optional<std::string> text) {
    if (!text) return std::nullopt;
    auto bean = baseapi::emptyRecord<Bean>();
    if (const auto error = baseapi::decode(*text, bean, baseapi::DecodingMode::overlay))
        throw UsageError{words(*error) + "; RECORD is a " + std::string(Bean::recordName)};
    return bean;
}

template <class Response>
NetworkCallback<Response> encoding(Done done) {
    return [done = std::move(done)](const NetworkResult<Response>& result) {
        result.visit(
            [&](const typename NetworkResult<Response>::success& it) {
                if (auto text = baseapi::encode(it.record))
                    done(std::move(*text));
                else
                    done(NetworkFailure{-1, "the response record has no JSON form"});
            },
            [&](const NetworkFailure& it) { done(it); });
    };
}

/// Takes the argument of a parameter, by the parameter's type, out of those that were given.
template <class Parameter>
struct Argument;

template <baseapi::Record Bean>
struct Argument<std::optional<Bean>> {
    static std::optional<Bean> take(OperationArguments& given) {
        return recordFrom<Bean>(std::exchange(given.record, std::nullopt));
    }
};

template <>
struct Argument<std::optional<std::string>> {
    static std::optional<std::string> take(OperationArguments& given) {
        return std::exchange(given.lockId, std::nullopt);
    }
};

template <>
struct Argument<std::int64_t> {
    static std::int64_t take(OperationArguments& given) {
        if (!given.deviceId) throw UsageError{"the device id is missing; give it with --device-id"};
        return *std::exchange(given.deviceId, std::nullopt);
    }
};

void refuseLeftovers(std::string_view operation, const OperationArguments& given) {
    const std::string name(operation);
    if (given.record) throw UsageError{name + " takes no record; leave RECORD out"};
    if (given.lockId) throw UsageError{name + " takes no lock id; leave --lock-id out"};
    if (given.deviceId) throw UsageError{name + " takes no device id; leave --device-id out"};
}

template <class Parameter>
constexpr std::optional<std::string_view> requestName = std::nullopt;
template <baseapi::Record Bean>
constexpr std::optional<std::string_view> requestName<std::optional<Bean>> = Bean::recordName;

// One function for each number of parameters that operations have before their callback.

template <class Service, class Response>
Operation makeOperation(Service& service, std::string_view name,
                        void (Service::*member)(NetworkCallback<Response>)) {
    return {Service::interfaceName, name, std::nullopt, Response::recordName,
            [=, &service](const OperationArguments& given, Done done) {
                refuseLeftovers(name, given);
                (service.*member)(encoding<Response>(std::move(done)));
            }};
}

template <class Service, class Parameter, class Response>
Operation makeOperation(Service& service, std::string_view name,
                        void (Service::*member)(Parameter, NetworkCallback<Response>)) {
    return {Service::interfaceName, name, requestName<Parameter>, Response::recordName,
            [=, &service](OperationArguments given, Done done) {
                auto argument = Argument<Parameter>::take(given);
                refuseLeftovers(name, given);
                (service.*member)(std::move(argument), encoding<Response>(std::move(done)));
            }};
}

template <class Service, class First, class Second, class Response>
Operation makeOperation(Service& service, std::string_view name,
                        void (Service::*member)(First, Second, NetworkCallback<Response>)) {
    return {Service::interfaceName, name, requestName<First>, Response::recordName,
            [=, &service](OperationArguments given, Done done) {
                auto first = Argument<First>::take(given);
                auto second = Argument<Second>::take(given);
                refuseLeftovers(name, given);
                (service.*member)(std::move(first), std::move(second), encoding<Response>(std::move(done)));
            }};
}

/// The service object lives as long as the process.
template <class Service>
void add(std::vector<Operation>& all, Service& service) {
    Service::operations(
        [&](std::string_view name, auto member) { all.push_back(makeOperation(service, name, member)); });
}

std::vector<Operation> makeOperations() {
    const auto& instance = CloudInstance::shared();
    std::vector<Operation> all;
    add(all, instance.getUserImpl());
    add(all, instance.getFileImpl());
    add(all, instance.getShareImpl());
    add(all, instance.getFavorImpl());
    add(all, instance.getJobImpl());
    add(all, instance.getCarrierImpl());
    add(all, instance.getBackupImpl());
    add(all, instance.getShareFolderImpl());
    add(all, instance.getAlbumImpl());
    add(all, instance.getRevisionImpl());
    add(all, instance.getSpaceImpl());
    add(all, instance.getfolderSyncImpl());
    return all;
}

bool equalInAnyCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return (a | 0x20) == (b | 0x20); });
}

}  // namespace

const std::vector<Operation>& operations() {
    static const auto& all = *new std::vector<Operation>(makeOperations());
    return all;
}

const Operation& operationNamed(std::string_view name) {
    for (const auto& operation : operations())
        if (operation.name == name) return operation;
    std::string hint = "quillbox call --list names them all";
    for (const auto& operation : operations())
        if (equalInAnyCase(operation.name, name)) hint = "did you mean " + std::string(operation.name) + "?";
    throw UsageError{"there is no operation " + repairUtf8(name) + "; " + hint};
}

}  // namespace quillbox
