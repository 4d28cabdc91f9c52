#include "cli/favourite_change.h"

#include <optional>
#include <utility>
#include <vector>

#include "baseapi/api/favor/i_favor.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class FavouriteChange : public Command {
  public:
    FavouriteChange(std::string name, std::string description, bool starred)
        : name_(std::move(name)), description_(std::move(description)), starred_(starred) {}

    std::string name() const override { return name_; }
    std::string description() const override { return description_; }

    void addOptions(Options& options) override {
        options.requiredTexts("ID", ids_, "The files and folders, by their ids");
    }

    ExitStatus run(Host& host) override {
        std::vector<baseapi::StarFileRequest> items;
        for (const auto& id : ids_)
            items.push_back({.containerId = baseapi::CloudInstance::shared().contentId.get(), .fileId = id});
        const auto answer = host.ask("the favourites", baseapi::CloudInstance::shared().getFavorImpl(),
                                     &baseapi::IFavor::getStarBatch,
                                     std::optional(baseapi::GetStarBatchBean(starred_, std::move(items))));
        for (const auto& entry : answer.subResponseList.value_or(std::vector<baseapi::SubResponse>{}))
            tell(host.output(), entry);
        return answer.status == baseapi::BatchStatus::allSuccess ? ExitStatus::success : ExitStatus::failure;
    }

  private:
    void tell(Output& output, const baseapi::SubResponse& entry) const {
        const auto id = entry.fileId.value_or("");
        if (entry.code == "0") {
            output.event(JsonLine("success").add("id", id).add("favourite", starred_),
                         {id, Line::Mark::good});
            return;
        }
        JsonLine failure("failure");
        failure.add("id", id).add("code", entry.code).add("message", entry.message);
        output.event(failure, {id + "  " + entry.code.value_or("") + " " + entry.message.value_or(""),
                               Line::Mark::bad});
    }

    const std::string name_;
    const std::string description_;
    const bool starred_;
    std::vector<std::string> ids_;
};

}  // namespace

std::unique_ptr<Command> makeFavouriteChange(std::string name, std::string description, bool starred) {
    return std::make_unique<FavouriteChange>(std::move(name), std::move(description), starred);
}

}  // namespace quillbox
