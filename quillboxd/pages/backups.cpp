#include "quillboxd/handlers/handlers.h"
#include "quillboxd/handlers/parameters.h"
#include "quillboxd/html.h"
#include "quillboxd/pages/pages.h"
#include "quillboxd/pages/view.h"
#include "quillboxd/store/all_backups.h"

namespace quillboxd::pages {
namespace {

constexpr Column recordColumns[] = {{"Record", "number"}, {"Account", "any"}, {"Module"},
                                    {"Device", "any"},    {"Status"},         {"Files", "number"},
                                    {"Counts", "wide"},   {"Begun"},          {"Ended"}};

/// What the client told of its run: the members of an object, or else the text itself.
std::string told(const std::optional<std::string>& properties) {
    if (!properties) return {};
    boost::system::error_code error;
    const auto value = json::parse(*properties, error);
    return !error && value.is_object() ? members(value.get_object()) : plain(*properties);
}

Row recordRow(const SomebodysRecord& each) {
    const auto& record = each.record;
    const bool open = record.status == RecordStatus::open;
    return {std::to_string(record.id),
            accountLink(each.account, each.accountName),
            plain(record.module),
            plain(each.deviceName.value_or(std::to_string(record.device))),
            open ? "open" : "finished",
            std::to_string(each.files),
            told(record.properties),
            timeCell(record.createdTime),
            timeCell(record.endTime.value_or(""))};
}

}  // namespace

std::string recordTable(Call& call, std::int64_t before, std::int64_t count) {
    auto records = AllBackups(call.service.database).records(before, count + 1);
    const bool goesOn = static_cast<std::int64_t>(records.size()) > count;
    if (goesOn) records.pop_back();
    std::vector<Row> rows;
    for (const auto& record : records) rows.push_back(recordRow(record));
    auto html = table("Backup records, the newest first", recordColumns, rows);
    if (goesOn)
        html += more(std::string(root) + "backups?before=" + std::to_string(records.back().record.id),
                     "Older records");
    return html;
}

Reply backups(Call& call) {
    return page("Backup records", recordTable(call, integerParameter(call, "before", INT64_MAX), 100));
}

}  // namespace quillboxd::pages
