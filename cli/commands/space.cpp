#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/user/i_user.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"
#include "cli/progress_bar.h"
#include "cli/quantity.h"

namespace quillbox {
namespace {

constexpr std::size_t barColumns = 24;

class Space : public Command {
  public:
    std::string name() const override { return "space"; }
    std::string description() const override { return "Tell how much space is used and how much is free"; }
    void addOptions(Options&) override {}

    ExitStatus run(Host& host) override {
        baseapi::GetSpaceBean bean;
        bean.containerId = baseapi::CloudInstance::shared().contentId.get();
        const auto answer = host.ask("the space", baseapi::CloudInstance::shared().getUserImpl(),
                                     &baseapi::IUser::getSpace, std::optional(std::move(bean)));
        const auto space = answer.data.value_or(baseapi::SpaceInfo{});
        if (!space.capacity || !space.spaceUsed)
            throw ServiceFailure{"the space", -1, "the answer does not tell it"};
        tell(host.output(), *space.spaceUsed, *space.capacity);
        return ExitStatus::success;
    }

  private:
    static void tell(Output& output, std::int64_t used, std::int64_t capacity) {
        const auto free = std::max<std::int64_t>(0, capacity - used);
        JsonLine event("space");
        event.add("used", used).add("free", free).add("capacity", capacity);
        auto text = byteText(static_cast<double>(used)) + " used, " + byteText(static_cast<double>(free)) +
                    " free of " + byteText(static_cast<double>(capacity));
        if (output.isTerminal()) text = bar(fraction(used, capacity), barColumns) + "  " + text;
        output.event(event, {text});
    }
    /// Never beyond the whole, though the service may have made the space smaller than what is in it.
    static double fraction(std::int64_t used, std::int64_t capacity) {
        if (used >= capacity) return 1;
        return static_cast<double>(std::max<std::int64_t>(0, used)) / static_cast<double>(capacity);
    }
};

}  // namespace

std::unique_ptr<Command> makeSpace() {
    return std::make_unique<Space>();
}

}  // namespace quillbox
