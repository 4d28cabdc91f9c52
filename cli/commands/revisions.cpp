#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"
#include "cli/quantity.h"

namespace quillbox {
namespace {

// What the service says of an attachment that is a revision, and of one that is kept for ever.
constexpr const char* revisionUsage = "revision";
constexpr std::int64_t keptState = 1;

void tell(Output& output, const baseapi::AssetMetadata& revision) {
    const bool kept = revision.state == keptState;
    std::optional<std::int64_t> size;
    if (revision.resource) size = revision.resource->length;
    JsonLine event("revision");
    event.add("revisionId", revision.versionId).add("number", revision.version).add("size", size);
    event.add("createdTime", revision.createdTime).add("keptForEver", kept);
    output.event(
        event, {std::to_string(revision.version.value_or(0)) + "  " + revision.versionId.value_or("") + "  " +
                byteText(static_cast<double>(size.value_or(0))) + "  " + revision.createdTime.value_or("") +
                (kept ? "  kept for ever" : "")});
}

class Revisions : public Command {
  public:
    std::string name() const override { return "revisions"; }
    std::string description() const override { return "List what a file has held, the newest first"; }

    void addOptions(Options& options) override { options.requiredText("ID", id_, "", "The file, by its id"); }

    ExitStatus run(Host& host) override {
        baseapi::GetFileDetailBean bean;
        bean.fileId = id_;
        bean.containerId = baseapi::CloudInstance::shared().contentId.get();
        const auto answer = host.ask("the revisions", baseapi::CloudInstance::shared().getFileImpl(),
                                     &baseapi::IFile::getFileDetail, std::optional(std::move(bean)));
        if (!answer.attachments) return ExitStatus::success;
        for (const auto& each : *answer.attachments)
            if (each.usage == revisionUsage && each.asset) tell(host.output(), *each.asset);
        return ExitStatus::success;
    }

  private:
    std::string id_;
};

}  // namespace

std::unique_ptr<Command> makeRevisions() {
    return std::make_unique<Revisions>();
}

}  // namespace quillbox
