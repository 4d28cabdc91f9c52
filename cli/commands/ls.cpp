#include <cstdio>
#include <memory>
#include <optional>

#include "cli/cloud_folder.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"
#include "cli/quantity.h"
#include "cli/text.h"

namespace quillbox {
namespace {

std::string padded(const std::string& text, std::size_t width) {
    const auto used = columns(text);
    return used < width ? std::string(width - used, ' ') + text : text;
}

void tell(Output& output, const baseapi::FileListMetadata& item) {
    const bool folder = item.fileType == folderType;
    const auto name = item.fileName.value_or("");
    JsonLine event("item");
    event.add("id", item.id).add("name", item.fileName).add("folder", folder).add("size", item.size);
    event.add("editedTime", item.editedTime);
    const auto size = folder ? "folder" : byteText(static_cast<double>(item.size.value_or(0)));
    output.event(event, {padded(size, 9) + "  " + item.id.value_or("") + "  " + name + (folder ? "/" : "")});
}

class Ls : public Command {
  public:
    std::string name() const override { return "ls"; }
    std::string description() const override { return "List a folder"; }

    void addOptions(Options& options) override {
        options.text("FOLDER", folder_, "", "The folder's id; the root folder without it");
    }

    ExitStatus run(Host& host) override {
        eachPage(host, folder_, [&](const auto& items) {
            for (const auto& item : items) tell(host.output(), item);
            return !host.output().unread();
        });
        return ExitStatus::success;
    }

  private:
    std::optional<std::string> folder_;
};

}  // namespace

std::unique_ptr<Command> makeLs() {
    return std::make_unique<Ls>();
}

}  // namespace quillbox
