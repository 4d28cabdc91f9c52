#include "quillboxd/store/backup_devices.h"

#include "quillboxd/handlers/backup_json.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"

namespace quillboxd::backup {
namespace {

constexpr Field pathPairShape[] = {{"localPath", Type::text}, {"targetFolderPath", Type::text}};

BackupDevices deviceStore(Call& call) {
    return {call.service.database, call.account.id};
}

std::int64_t deviceInPath(const Call& call) {
    return numberIn(call.wildcards[0], "the device id in the path");
}

/// A body may name the device as well.
void checkDevice(const json::object& request, std::int64_t device) {
    if (integer(request, "deviceId", device) != device)
        badRequest("\"deviceId\" is not the device of the path");
}

json::object withNumber(const Device& device) {
    auto fields = deviceFields(device);
    fields["deviceId"] = device.id;
    return fields;
}

json::object scopeFields(const Scope& scope) {
    return {{"scopeId", std::to_string(scope.id)},
            {"moduleCode", scope.module},
            {"createTime", scope.createdTime},
            {"localPath", scope.localPath},
            {"targetFolderPath", scope.targetPath}};
}

json::object valueFields(std::int64_t device, const ConfigValue& value) {
    return {{"device_id", std::to_string(device)},
            {"module_code", value.module},
            {"config_name", value.name},
            {"config_value", value.value}};
}

Reply valueList(Call& call, const std::optional<std::string>& name) {
    const auto device = deviceInPath(call);
    json::array list;
    for (const auto& value : deviceStore(call).values(device, requiredParameter(call, "moduleCode"), name))
        list.push_back(valueFields(device, value));
    return success({{"data", std::move(list)}});
}

std::string numberText(Code code) {
    return std::to_string(static_cast<int>(code));
}

/// The scope that was added, or why it was not.
std::variant<Scope, ApiError> tryToAdd(BackupDevices store, std::int64_t device, const std::string& module,
                                       const json::object& pair) {
    try {
        const Scope wanted{0, module, requiredText(pair, "localPath"), requiredText(pair, "targetFolderPath"),
                           ""};
        if (auto scope = store.addScope(device, wanted)) return *std::move(scope);
        conflict(Code::nameExists, "the module backs up this folder already");
    } catch (const ApiError& error) {
        return error;
    }
}

}  // namespace

json::object deviceFields(const Device& device) {
    json::object fields{{"machineCode", device.machineCode}, {"createTime", device.createdTime}};
    if (device.name) fields["deviceName"] = *device.name;
    if (device.os) fields["deviceOS"] = *device.os;
    return fields;
}

Reply bindDevice(Call& call) {
    static constexpr Field shape[] = {
        {"machineCode", Type::text}, {"deviceName", Type::text}, {"deviceOS", Type::text}};
    const auto request = call.record(shape);
    const auto device =
        deviceStore(call).bind(requiredText(request, "machineCode"), optionalText(request, "deviceName"),
                               optionalText(request, "deviceOS"));
    return success({{"data", withNumber(device)}});
}

Reply unbindDevice(Call& call) {
    const auto device = deviceInPath(call);
    if (!deviceStore(call).unbind(device)) notFound("there is no device " + std::to_string(device));
    return success();
}

Reply devices(Call& call) {
    json::array list;
    for (const auto& device : deviceStore(call).devices()) list.push_back(withNumber(device));
    return success({{"data", std::move(list)}});
}

Reply addScopes(Call& call) {
    static constexpr Field shape[] = {
        {"deviceId", Type::integer}, {"moduleCode", Type::text}, {"scopeList", Type::records, pathPairShape}};
    const auto request = call.record(shape);
    const auto device = deviceInPath(call);
    checkDevice(request, device);
    const auto module = requiredText(request, "moduleCode");
    const auto* pairs = present(request, "scopeList");
    if (!pairs) badRequest("\"scopeList\" is missing");
    json::array added;
    json::array failed;
    for (const auto& pair : pairs->get_array()) {
        const auto outcome = tryToAdd(deviceStore(call), device, module, pair.get_object());
        if (const auto* scope = std::get_if<Scope>(&outcome)) {
            added.push_back(scopeFields(*scope));
            continue;
        }
        const auto& error = std::get<ApiError>(outcome);
        auto fields = pair.get_object();
        fields["errorCode"] = numberText(error.code());
        fields["msg"] = error.what();
        failed.push_back(std::move(fields));
    }
    return success({{"scopeList", std::move(added)}, {"failedScopeList", std::move(failed)}});
}

Reply removeScopes(Call& call) {
    static constexpr Field shape[] = {
        {"deviceId", Type::integer}, {"moduleCode", Type::text}, {"scopeIdList", Type::integers}};
    const auto request = call.record(shape);
    const auto device = deviceInPath(call);
    checkDevice(request, device);
    const auto* ids = present(request, "scopeIdList");
    if (!ids) badRequest("\"scopeIdList\" is missing");
    json::array removed;
    json::array failed;
    for (const auto& id : ids->get_array()) {
        if (deviceStore(call).removeScope(device, id.get_int64())) {
            removed.push_back(id);
        } else {
            failed.push_back({{"scopeId", id},
                              {"errorCode", numberText(Code::notFound)},
                              {"msg", "the device has no scope of this id"}});
        }
    }
    return success({{"scopeIdList", std::move(removed)}, {"failedScopeList", std::move(failed)}});
}

Reply scopes(Call& call) {
    json::array list;
    for (const auto& scope :
         deviceStore(call).scopes(deviceInPath(call), requiredParameter(call, "moduleCode")))
        list.push_back(scopeFields(scope));
    return success({{"scopeList", std::move(list)}});
}

Reply values(Call& call) {
    return valueList(call, std::nullopt);
}

Reply value(Call& call) {
    return valueList(call, requiredParameter(call, "congigName"));  // as clients send it
}

Reply setValue(Call& call) {
    static constexpr Field shape[] = {{"deviceId", Type::text},
                                      {"moduleCode", Type::text},
                                      {"configName", Type::text},
                                      {"newConfigValue", Type::text}};
    const auto request = call.record(shape);
    const auto device = deviceInPath(call);
    if (text(request, "deviceId", call.wildcards[0]) != call.wildcards[0])
        badRequest("\"deviceId\" is not the device of the path");
    const ConfigValue value{requiredText(request, "moduleCode"), requiredText(request, "configName"),
                            text(request, "newConfigValue")};
    deviceStore(call).setValue(device, value);
    return success({{"data", json::array{valueFields(device, value)}}});
}

}  // namespace quillboxd::backup
