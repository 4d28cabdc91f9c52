#include "quillboxd/store/backup_records.h"

#include "quillboxd/handlers/backup_json.h"
#include "quillboxd/handlers/file_create.h"
#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/store/backup_locks.h"

namespace quillboxd::backup {
namespace {

BackupRecords recordStore(Call& call) {
    return {call.service.database, call.account.id};
}

BackupRecord recordInPath(Call& call) {
    const auto& id = call.wildcards[0];
    const auto record = recordStore(call).find(numberIn(id, "the record id in the path"));
    if (!record) notFound("there is no record " + id);
    return *record;
}

/// The record of the path, to be written to under its module's lock; a body may name it as well.
BackupRecord writableRecord(Call& call) {
    static constexpr Field shape[] = {{"recordId", Type::text}};
    const auto lock = lockId(call);
    auto record = recordInPath(call);
    BackupLocks(call.service.database, call.account.id).require(lock, record.module);
    if (!call.body.empty() && text(call.record(shape), "recordId", call.wildcards[0]) != call.wildcards[0])
        badRequest("\"recordId\" is not the record of the path");
    return record;
}

std::int64_t requiredPageSize(const Call& call) {
    return pageSize(numberIn(requiredParameter(call, "pageSize"), "\"pageSize\""), "pageSize");
}

json::object recordFields(Call& call, const BackupRecord& record) {
    json::object fields{{"recordId", std::to_string(record.id)},
                        {"moduleCode", record.module},
                        {"status", static_cast<int>(record.status)},
                        {"version", record.version},
                        {"createTime", record.createdTime}};
    if (record.properties) fields["properties"] = *record.properties;
    if (record.endTime) fields["endTime"] = *record.endTime;
    if (const auto device = BackupDevices(call.service.database, call.account.id).find(record.device)) {
        auto info = deviceFields(*device);
        info["deviceId"] = std::to_string(device->id);  // a text here, as it may be
        fields["deviceInfo"] = std::move(info);
    }
    return fields;
}

json::object fileFields(std::int64_t record, const RecordFile& file) {
    return {{"recordId", std::to_string(record)},
            {"fileId", Tree::wireId(file.node)},
            {"fileName", file.name},
            {"sha256", file.sha256},
            {"size", std::to_string(file.size)},
            {"desc", file.description},
            {"createTime", file.createdTime}};
}

}  // namespace

Reply addRecord(Call& call) {
    static constexpr Field shape[] = {{"recordId", Type::text},
                                      {"moduleCode", Type::text},
                                      {"deviceId", Type::integer},
                                      {"properties", Type::text}};
    const auto lock = lockId(call);
    const auto request = call.record(shape);
    const auto module = requiredText(request, "moduleCode");
    const auto device = requiredInteger(request, "deviceId");
    BackupLocks(call.service.database, call.account.id).require(lock, module);
    const auto record = recordStore(call).add(device, module, optionalText(request, "properties"));
    return success({{"data", recordFields(call, record)}});
}

Reply finishRecord(Call& call) {
    static constexpr Field shape[] = {{"properties", Type::text}};
    const auto record = writableRecord(call);
    recordStore(call).finish(record.id, optionalText(call.record(shape), "properties"));
    return success();
}

Reply removeRecord(Call& call) {
    recordStore(call).remove(writableRecord(call).id);
    return success();
}

Reply record(Call& call) {
    return success({{"data", recordFields(call, recordInPath(call))}});
}

Reply records(Call& call) {
    RecordPage page;
    page.device = numberIn(requiredParameter(call, "deviceId"), "\"deviceId\"");
    page.module = requiredParameter(call, "moduleCode");
    page.size = requiredPageSize(call);
    const auto cursor = call.request.parameter("cursor").value_or("");
    if (!cursor.empty()) page.before = numberIn(cursor, "\"cursor\"");
    json::array list;
    for (const auto& record : recordStore(call).list(page)) list.push_back(recordFields(call, record));
    return success({{"data", std::move(list)}});
}

Reply recordFiles(Call& call) {
    const auto record = recordInPath(call);
    json::array list;
    for (const auto& file : recordStore(call).files(record.id, requiredPageSize(call)))
        list.push_back(fileFields(record.id, file));
    return success({{"data", std::move(list)}});
}

Reply addRecordFile(Call& call) {
    const auto record = writableRecord(call);
    if (record.status == RecordStatus::finished)
        conflict(Code::conflict, "the record " + std::to_string(record.id) + " is finished");
    auto file = files::createFile(call);
    recordStore(call).attach(record.id, file.node);
    return std::move(file.reply);
}

}  // namespace quillboxd::backup
