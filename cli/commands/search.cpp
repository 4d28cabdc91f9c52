#include <charconv>
#include <memory>
#include <optional>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/cloud_folder.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

constexpr std::int64_t foundPerPage = 200;

/// A found item names its size as text.
std::optional<std::int64_t> sizeOf(const baseapi::FileBean& item) {
    const auto text = item.size.value_or("");
    std::int64_t size = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return size;
}

void tell(Output& output, const baseapi::FileBean& item) {
    JsonLine event("item");
    event.add("id", item.id).add("name", item.fileName).add("folder", item.fileType == folderType);
    event.add("size", sizeOf(item)).add("path", item.namePath);
    output.event(event, {item.id.value_or("") + "  " + item.namePath.value_or(item.fileName.value_or(""))});
}

class Search : public Command {
  public:
    std::string name() const override { return "search"; }
    std::string description() const override { return "Find files and folders by a word of their names"; }

    void addOptions(Options& options) override {
        options.requiredText("WORD", word_, "", "What the names hold");
        options.text("--parent", parent_, "ID", "Only below this folder, by its id");
    }

    ExitStatus run(Host& host) override {
        baseapi::FilesSearchBean bean;
        bean.pageInfo = baseapi::PageInfo{.pageSize = foundPerPage};
        bean.filter = baseapi::Filter{.keyWord = word_,
                                      .containerId = baseapi::CloudInstance::shared().contentId.get(),
                                      .parentFolder = parent_};
        bean.recursived = true;
        while (true) {
            const auto answer = host.ask("the search", baseapi::CloudInstance::shared().getFileImpl(),
                                         &baseapi::IFile::fileSearch, std::optional(bean));
            if (answer.files)
                for (const auto& item : *answer.files) tell(host.output(), item);
            const auto next = answer.nextPageCursor.value_or("");
            if (next.empty() || host.output().unread()) return ExitStatus::success;
            if (next == bean.pageInfo->pageCursor)
                throw ServiceFailure{"the search", -1, "the list has no end"};
            bean.pageInfo->pageCursor = next;
        }
    }

  private:
    std::string word_;
    std::optional<std::string> parent_;
};

}  // namespace

std::unique_ptr<Command> makeSearch() {
    return std::make_unique<Search>();
}

}  // namespace quillbox
