#include <chrono>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/api/sync/i_folder_sync.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/cloud_folder.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"
#include "cli/private_file.h"

namespace quillbox {
namespace {

using baseapi::CloudInstance;
using baseapi::IFolderSync;

constexpr auto pollInterval = std::chrono::seconds(1);
constexpr std::int64_t changesPerPage = 200;
// The service's answer to a cursor that its feed does not know.
constexpr std::int64_t unknownCursor = 13000409;

void tell(Output& output, const baseapi::FileChangeInfo& change) {
    const auto file = change.fileInfo.value_or(baseapi::File{});
    const auto kind = change.changeType.value_or("");
    JsonLine event("change");
    event.add("kind", kind).add("id", file.id).add("name", file.fileName);
    event.add("folder", file.fileType == folderType).add("size", file.size);
    if (change.extInfo) event.add("from", change.extInfo->srcParentFileId);
    output.event(event, {kind + "  " + file.id.value_or("") + "  " + file.fileName.value_or("")});
}

/// The feed of one folder, read on from the place that was reached last.
class Feed {
  public:
    Feed(Host& host, const std::string& folder) : host_(host) {
        const auto opened = ask(&IFolderSync::createSyncFolder, baseapi::CreateSyncDirReq{.fileId = folder});
        bean_.syncDirId = opened.fileId;
        bean_.pageSize = changesPerPage;
        file_ = host.stateFolder() / "watch" /
                (opened.container.value_or("") + "-" + opened.fileId.value_or("") + ".cursor");
        bean_.cursor = keptCursor();
        if (!bean_.cursor) start();
    }

    /// Tells what is new; the place is kept once it was told.
    void tellNews() {
        for (bool more = true; more && !host_.output().unread();) {
            const auto page = ask(&IFolderSync::listChangeSyncFolder, bean_);
            if (page.fileChangeList)
                for (const auto& change : *page.fileChangeList) tell(host_.output(), change);
            if (page.nextCursor != bean_.cursor) keep(page.nextCursor);
            more = page.hasMore;
        }
    }

    /// Goes on where the feed is now.
    void start() {
        keep(
            ask(&IFolderSync::getSyncFolderStartCursor, baseapi::GetStartCursorReq{.fileId = bean_.syncDirId})
                .startCursor);
    }

  private:
    template <class Bean, class Response>
    Response ask(void (IFolderSync::*operation)(std::optional<Bean>, baseapi::NetworkCallback<Response>),
                 Bean bean) const {
        return host_.ask("the changes", CloudInstance::shared().getfolderSyncImpl(), operation,
                         std::optional(std::move(bean)));
    }
    std::optional<std::string> keptCursor() const {
        std::ifstream stream(file_);
        std::string line;
        return std::getline(stream, line) && !line.empty() ? std::optional(line) : std::nullopt;
    }
    void keep(const std::optional<std::string>& cursor) {
        bean_.cursor = cursor;
        writePrivateFile(file_, cursor.value_or("") + "\n");
    }

    Host& host_;
    std::filesystem::path file_;
    baseapi::ListChangeReq bean_;
};

class Watch : public Command {
  public:
    std::string name() const override { return "watch"; }
    std::string description() const override {
        return "Tell each change below a folder, from where the last watch ended";
    }

    void addOptions(Options& options) override {
        options.requiredText("ID", folder_, "", "The folder, by its id; root for all");
        options.flag("--once", once_, "Tell what has changed by now, and end");
    }

    ExitStatus run(Host& host) override {
        Feed feed(host, folder_);
        while (true) {
            tellNews(host, feed);
            if (once_ || host.output().unread()) return ExitStatus::success;
            host.interrupt().setWork({[] {}, [] { return std::string("the watch to end"); }});
            if (!host.monitor().sleepUntil(Monitor::Clock::now() + pollInterval)) throw Interrupted{};
        }
    }

  private:
    static void tellNews(Host& host, Feed& feed) {
        try {
            feed.tellNews();
        } catch (const ServiceFailure& failure) {
            if (failure.code != unknownCursor) throw;
            host.output().note("quillbox: warning: changes may have been missed; list the folder");
            feed.start();
        }
    }

    std::string folder_;
    bool once_ = false;
};

}  // namespace

std::unique_ptr<Command> makeWatch() {
    return std::make_unique<Watch>();
}

}  // namespace quillbox
