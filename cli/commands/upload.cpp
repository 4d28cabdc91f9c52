#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/thread_pool_util.h"
#include "baseapi/transfer/i_transfer.h"
#include "cli/cloud_folder.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/local_tree.h"
#include "cli/options.h"
#include "cli/quantity.h"
#include "cli/retry.h"
#include "cli/upload_attempt.h"
#include "hostkit/slice_file.h"

namespace quillbox {
namespace {

using Failure = baseapi::UploadProcessResult::onFailure;

// As the library reports a file that it cannot read.
const Failure unreadable{baseapi::Constants::BACKUP_FILE_UPLOAD_PARTIALLY_FAILED, "file invaild"};

struct Counts {
    std::int64_t sent = 0;
    std::int64_t sentBytes = 0;
    std::int64_t thereAlready = 0;
    std::int64_t failed = 0;
};

/// The upload of a list of local items, one after the other.
class UploadJob {
  public:
    UploadJob(Host& host, std::vector<LocalItem> items, std::optional<std::string> parent, int retries)
        : host_(host),
          items_(std::move(items)),
          parent_(std::move(parent)),
          retries_(retries),
          display_(std::make_shared<JobDisplay>(host.output(), bytesOf(items_))),
          slicer_(std::make_shared<hostkit::SliceFile>(hostkit::SliceFile::Observers{
              [&host](const auto&, const std::string& why) { host.uploadCause().say(why); },
              [display = display_](std::int64_t done, std::int64_t) { display->hashed(done); }})) {}

    ExitStatus run() {
        for (std::size_t index = 0; index < items_.size() && !host_.monitor().interrupted(); ++index)
            items_[index].isFolder ? mirrorFolder(index) : uploadFile(index);
        display_->close();
        host_.output().summary(summary());
        return counts_.failed == 0 ? ExitStatus::success : ExitStatus::failure;
    }

  private:
    // Folders

    void mirrorFolder(std::size_t index) {
        const auto& folder = items_[index];
        if (const auto* failure = failureAbove(index)) {
            failedFolders_.emplace(index, *failure);
            return;
        }
        if (!folder.problem.empty()) {
            fail(folder, unreadable, folder.problem);
            failedFolders_.emplace(index, unreadable);
            return;
        }
        makeFolder(index);
    }

    void makeFolder(std::size_t index) {
        const auto& folder = items_[index];
        for (int failures = 0;;) try {
                folderIds_[index] = ensureFolder(host_, folder.name(), parentOf(folder));
                return;
            } catch (const ServiceFailure& failure) {
                if (++failures <= retries_ && pause(folder, failures)) continue;
                fail(folder, {failure.code, failure.message},
                     failureText("to make it", failure.code, failure.message));
                failedFolders_.emplace(index, Failure{failure.code, failure.message});
                return;
            }
    }

    const Failure* failureAbove(std::size_t index) const {
        const auto& parent = items_[index].parent;
        const auto found = parent ? failedFolders_.find(*parent) : failedFolders_.end();
        return found == failedFolders_.end() ? nullptr : &found->second;
    }

    std::optional<std::string> parentOf(const LocalItem& item) const {
        return item.parent ? folderIds_.at(*item.parent) : parent_;
    }

    // Files

    void uploadFile(std::size_t index) {
        const auto& file = items_[index];
        if (const auto* failure = failureAbove(index))
            return fail(file, *failure, "its folder could not be made");
        for (int failures = 0;;) {
            display_->begin(file.label, file.size);
            const auto end = attempt(file);
            if (const auto* success = std::get_if<baseapi::UploadProcessResult::onSuccess>(&end)) {
                display_->end(true);
                return succeed(file, *success);
            }
            display_->end(false);
            if (++failures <= retries_ && pause(file, failures)) continue;
            return fail(file, std::get<Failure>(end),
                        host_.uploadCause().cause().value_or("the cause is not known"));
        }
    }

    UploadEnd attempt(const LocalItem& file) {
        host_.uploadCause().reset();
        const auto upload = std::make_shared<UploadAttempt>(host_, display_, file);
        host_.interrupt().setWork({[upload, slicer = slicer_] {
                                       slicer->stop();
                                       upload->cancel();
                                   },
                                   [label = file.label] { return "the upload of " + label; }});
        return upload->run(parentOf(file), slicer_);
    }

    /// Waits before the next attempt; false where a Ctrl-C forbids it.
    bool pause(const LocalItem& item, int failures) {
        std::uniform_real_distribution<double> luck(0, 1);
        const auto delay = retryDelay(failures, luck(random_));
        host_.output().summary(item.label + ": starting again in " + std::to_string(delay.count()) + " ms (" +
                               std::to_string(failures) + " of " + std::to_string(retries_) + ")");
        return host_.monitor().sleepUntil(Monitor::Clock::now() + delay);
    }

    // Ends

    void succeed(const LocalItem& file, const baseapi::UploadProcessResult::onSuccess& end) {
        const bool moved = end.msg == "success";
        if (moved) {
            ++counts_.sent;
            counts_.sentBytes += file.size;
        } else {
            ++counts_.thereAlready;
        }
        JsonLine event("onSuccess");
        event.add("file", file.label).add("code", end.code).add("message", end.msg);
        const auto size = moved ? byteText(static_cast<double>(file.size)) : "there already";
        host_.output().event(event, {file.label + "  " + size, Line::Mark::good});
    }

    void fail(const LocalItem& item, const Failure& end, const std::string& cause) {
        ++counts_.failed;
        JsonLine event("onFailure");
        event.add("file", item.label).add("code", end.errCode).add("message", end.errMsg);
        host_.output().event(event);
        host_.output().note(item.label + ": " + cause);
    }

    std::string summary() const {
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin_;
        const auto bytes = static_cast<double>(counts_.sentBytes);
        auto text = countText(counts_.sent, "file") + " sent";
        if (counts_.sent > 0)
            text += " (" + byteText(bytes) + " in " +
                    timeText(std::chrono::duration_cast<std::chrono::seconds>(time)) + ", " +
                    byteText(bytes / std::max(time.count(), 1e-3)) + "/s)";
        if (counts_.thereAlready > 0) text += ", " + std::to_string(counts_.thereAlready) + " there already";
        if (counts_.failed > 0) text += ", " + std::to_string(counts_.failed) + " failed";
        return text;
    }

    Host& host_;
    const std::vector<LocalItem> items_;
    const std::optional<std::string> parent_;
    const int retries_;
    const std::shared_ptr<JobDisplay> display_;
    const std::shared_ptr<hostkit::SliceFile> slicer_;
    std::map<std::size_t, std::string> folderIds_;
    std::map<std::size_t, Failure> failedFolders_;
    Counts counts_;
    std::mt19937 random_{std::random_device{}()};
    const std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

class Upload : public Command {
  public:
    std::string name() const override { return "upload"; }
    std::string description() const override { return "Upload files, and folders with all that they hold"; }

    void addOptions(Options& options) override {
        options.requiredTexts("PATH", paths_, "Files and folders");
        options.text("--parent", parent_, "ID", "The folder that takes them, by its id");
        options.count("--retries", retries_, "N", "Start a failed file again, so many times at most");
    }

    ExitStatus run(Host& host) override {
        auto items = listLocal(paths_);
        if (baseapi::ThreadPoolUtil::queue().width() == 0)
            host.output().note(
                "quillbox: this machine has one active processor, so no part of a file is ever sent; "
                "see quillbox doctor");
        return UploadJob(host, std::move(items), parent_, retries_).run();
    }

  private:
    std::vector<std::string> paths_;
    std::optional<std::string> parent_;
    int retries_ = 0;
};

}  // namespace

std::unique_ptr<Command> makeUpload() {
    return std::make_unique<Upload>();
}

}  // namespace quillbox
