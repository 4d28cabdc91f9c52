#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cancelable.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/transfer/i_transfer.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/job_display.h"
#include "cli/options.h"
#include "cli/quantity.h"
#include "hostkit/slice_file.h"

namespace quillbox {
namespace {

using baseapi::CloudInstance;
using baseapi::DownloadResult;

/// Where the content is, and what it has to be; what is not known is absent.
struct Source {
    std::string url;
    std::string fileId;
    std::optional<std::int64_t> size;
    std::optional<std::string> sha256;
};

/// Why a download failed: the message of its event, and the words for people.
struct DownloadFailure {
    explicit DownloadFailure(std::string text) : message(text), words(std::move(text)) {}
    DownloadFailure(std::string text, std::string inWords)
        : message(std::move(text)), words(std::move(inWords)) {}

    std::string message;
    std::string words;
};

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

/// The library would put the file in the place of whatever is there.
void requireReplaceable(const std::string& path) {
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    if (std::filesystem::is_directory(status))
        throw UsageError{"--to " + path + " is a folder; give the path of a file in it"};
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw UsageError{"--to " + path + " is no regular file; give the path of one"};
}

std::string contentLink(const baseapi::GetFileDetailResponse& detail) {
    if (detail.downloadLinks)
        for (const auto& link : *detail.downloadLinks)
            if (link.usage == "content") return link.downloadLink.value_or("");
    return {};
}

Source sourceOf(const Host& host, const std::string& fileId) try {
    baseapi::GetFileDetailBean bean;
    bean.fileId = fileId;
    bean.containerId = CloudInstance::shared().contentId.get();
    const auto detail = host.ask("the detail of " + fileId, CloudInstance::shared().getFileImpl(),
                                 &baseapi::IFile::getFileDetail, std::optional(std::move(bean)));
    Source source{contentLink(detail), fileId, detail.size, detail.sha256};
    if (source.url.empty()) throw DownloadFailure("the file has no download link");
    if (source.sha256 && source.sha256->empty()) source.sha256.reset();
    return source;
} catch (const ServiceFailure& failure) {
    throw DownloadFailure(failure.message,
                          failureText("to tell where the file is", failure.code, failure.message));
}

class Download : public Command {
  public:
    std::string name() const override { return "download"; }
    std::string description() const override { return "Download a file's content"; }

    void addOptions(Options& options) override {
        options.text("--url", url_, "URL", "The address of the content");
        options.text("--file-id", fileId_, "ID", "The file, by its id");
        options.requiredText("--to", to_, "PATH", "The local file; an existing one is replaced");
    }

    ExitStatus run(Host& host) override {
        if (url_.has_value() == fileId_.has_value())
            throw UsageError{"download needs either --url URL or --file-id ID"};
        if (to_.empty()) throw UsageError{"--to names no file; give the path of one"};
        requireReplaceable(to_);
        try {
            const auto source = url_ ? Source{*url_, {}, {}, {}} : sourceOf(host, *fileId_);
            fetch(host, source);
            if (fileId_) compare(host, source);
        } catch (const DownloadFailure& failure) {
            host.output().event(JsonLine("failure").add("message", failure.message));
            host.output().note(to_ + ": " + failure.words);
            return ExitStatus::failure;
        }
        host.output().event(JsonLine("success").add("path", to_), {to_, Line::Mark::good});
        return ExitStatus::success;
    }

  private:
    void fetch(const Host& host, const Source& source) const {
        const auto unit = source.size ? JobProgress::Unit::bytes : JobProgress::Unit::shares;
        const auto total = source.size.value_or(JobProgress::allShares);
        const auto display = std::make_shared<JobDisplay>(host.output(), total, unit);
        display->begin(std::filesystem::path(to_).filename().string(), total);
        const auto result = std::make_shared<std::optional<DownloadResult>>();
        const auto what = [to = to_] { return "the download of " + to; };
        host.interrupt().setWork({[] {}, what});
        const auto download = CloudInstance::shared().getTransferImpl().downloadFile(
            baseapi::URL(source.url), source.fileId, baseapi::URL::file(to_),
            [&output = host.output(), display, total](double fraction) {
                output.event(JsonLine("onProgress").add("fraction", fraction));
                // Where the size is not known the fraction is no share.
                if (fraction >= 0 && fraction <= 1)
                    display->sent(static_cast<std::int64_t>(fraction * static_cast<double>(total)));
            },
            [result, &monitor = host.monitor()](DownloadResult end) {
                monitor.change([&] {
                    if (!*result) result->emplace(std::move(end));
                });
            });
        host.interrupt().setWork({[download] { download->cancel(); }, what});
        const bool ended = host.monitor().wait([&] { return result->has_value(); });
        display->close();
        if (!ended) throw Interrupted{};
        (*result)->visit([](const DownloadResult::success&) {},
                         [](const DownloadResult::failure& it) { throw DownloadFailure(it.message); });
    }

    /// The library saves whatever the address answers.
    void compare(const Host& host, const Source& source) const {
        if (!source.size && !source.sha256) {
            host.output().note(to_ +
                               ": warning: the service names neither size nor SHA-256; nothing was compared");
            return;
        }
        const auto problem = difference(host, source);
        if (problem.empty()) return;
        std::error_code ignored;
        std::filesystem::remove(to_, ignored);
        throw DownloadFailure(problem);
    }

    /// What does not fit; throws for what cannot be compared, which says nothing of the file.
    std::string difference(const Host& host, const Source& source) const {
        std::error_code error;
        const auto size = std::filesystem::file_size(to_, error);
        if (error) throw DownloadFailure("the file cannot be compared: " + error.message());
        if (source.size && static_cast<std::int64_t>(size) != *source.size)
            return "the content is not the file: " + std::to_string(size) + " bytes in place of " +
                   std::to_string(*source.size);
        if (!source.sha256) return {};
        const auto slicer = std::make_shared<hostkit::SliceFile>();
        host.interrupt().setWork(
            {[slicer] { slicer->stop(); }, [to = to_] { return "the comparison of " + to; }});
        const auto sliced = slicer->slice(to_);
        if (host.monitor().interrupted()) throw Interrupted{};
        if (const auto* refusal = std::get_if<hostkit::SliceFile::Refusal>(&sliced))
            throw DownloadFailure("the file cannot be compared: " + refusal->why);
        if (std::get<baseapi::Sha256Result>(sliced).hash != lowerCase(*source.sha256))
            return "the content is not the file: its SHA-256 differs";
        return {};
    }

    std::optional<std::string> url_;
    std::optional<std::string> fileId_;
    std::string to_;
};

}  // namespace

std::unique_ptr<Command> makeDownload() {
    return std::make_unique<Download>();
}

}  // namespace quillbox
