#include "cli/contact_records.h"

#include <algorithm>
#include <functional>
#include <string_view>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/json/codec.h"
#include "cli/host.h"
#include "cli/module_code.h"
#include "cli/quantity.h"

namespace quillbox {
namespace {

constexpr std::int64_t finished = 1;

/// A number that the backup has written into its record; absent where it has not.
std::optional<std::int64_t> told(const baseapi::RecordDetailBean& record, std::string_view name) {
    auto text = record.properties.value_or("");
    const auto properties = baseapi::parseJSON(text);
    const auto* numbers = properties ? std::get_if<baseapi::JSONValue::Map>(&properties->value) : nullptr;
    if (numbers == nullptr) return std::nullopt;
    const auto found = numbers->find(name);
    if (found == numbers->end()) return std::nullopt;
    const auto* number = std::get_if<std::int64_t>(&found->second.value);
    return number ? std::optional(*number) : std::nullopt;
}

}  // namespace

std::optional<std::int64_t> contactsOfLastBackup(std::vector<baseapi::RecordDetailBean> records) {
    std::ranges::stable_sort(records, std::greater<>(), &baseapi::RecordDetailBean::createTime);
    const auto last = std::ranges::find_if(records, [](const auto& record) {
        return record.status == finished && told(record, "errorCode") == 0;
    });
    return last == records.end() ? std::nullopt : told(*last, "backupCount");
}

std::optional<std::int64_t> contactsOfLastBackup(const Host& host, std::int64_t deviceId) try {
    const auto answer = host.ask(
        "the backup records", baseapi::CloudInstance::shared().getBackupImpl(), &baseapi::IBackUp::getRecords,
        std::optional(baseapi::GetRecordBean{
            .moduleCode = module_code::contacts, .pageSize = 100, .deviceId = deviceId}));
    return contactsOfLastBackup(answer.data.value_or(std::vector<baseapi::RecordDetailBean>{}));
} catch (const ServiceFailure&) {
    // The backup itself will tell what is wrong.
    return std::nullopt;
}

std::string contactWarning(std::int64_t contacts, std::optional<std::int64_t> before) {
    const auto last = before.value_or(0);
    if (contacts == 0)
        return "the address book is empty" +
               (last > 0 ? "; the last backup holds " + countText(last, "contact") : std::string());
    if (contacts * 2 < last)
        return "the address book holds " + countText(contacts, "contact") + ", far fewer than the " +
               std::to_string(last) + " of the last backup";
    return {};
}

}  // namespace quillbox
