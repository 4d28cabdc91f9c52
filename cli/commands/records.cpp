#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

constexpr std::int64_t recordsPerPage = 100;
constexpr std::int64_t finished = 1;

class Records : public Command {
  public:
    std::string name() const override { return "records"; }
    std::string description() const override { return "List the backups, the newest first"; }

    void addOptions(Options& options) override {
        options.integer("--device-id", deviceId_, "N", "Those of one device; of all without it");
        options.text("--module", module_, "CODE",
                     "100 folders, 101 album, 102 contacts; all of them without it");
    }

    ExitStatus run(Host& host) override {
        const std::string what = "the backup records";
        baseapi::GetRecordBean bean{.moduleCode = module_, .pageSize = recordsPerPage, .deviceId = deviceId_};
        while (true) {
            const auto answer = host.ask(what, baseapi::CloudInstance::shared().getBackupImpl(),
                                         &baseapi::IBackUp::getRecords, std::optional(bean));
            const auto records = answer.data.value_or(std::vector<baseapi::RecordDetailBean>{});
            for (const auto& record : records) tell(host.output(), record);
            if (records.size() < recordsPerPage || !records.back().recordId || host.output().unread()) break;
            if (bean.cursor == records.back().recordId) throw ServiceFailure{what, -1, "the list has no end"};
            bean.cursor = records.back().recordId;
        }
        return ExitStatus::success;
    }

  private:
    static void tell(Output& output, const baseapi::RecordDetailBean& record) {
        JsonLine event("record");
        event.add("recordId", record.recordId).add("moduleCode", record.moduleCode);
        event.add("status", record.status).add("createTime", record.createTime);
        event.add("endTime", record.endTime).add("properties", record.properties);
        output.event(event, {record.recordId.value_or("") + "  " + record.moduleCode.value_or("") + "  " +
                             (record.status == finished ? "finished" : "open    ") + "  " +
                             record.createTime.value_or("") + "  " + record.properties.value_or("")});
    }

    std::optional<std::int64_t> deviceId_;
    std::optional<std::string> module_;
};

}  // namespace

std::unique_ptr<Command> makeRecords() {
    return std::make_unique<Records>();
}

}  // namespace quillbox
