#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/cloud_folder.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/job_display.h"
#include "cli/local_tree.h"
#include "cli/options.h"
#include "cli/quantity.h"
#include "hostkit/slice_file.h"

namespace quillbox {
namespace {

using baseapi::CloudInstance;
using CloudItem = baseapi::FileListMetadata;

bool isFolder(const CloudItem& item) {
    return item.fileType == folderType;
}

bool equalHex(std::string_view left, std::string_view right) {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

/// The items of one cloud folder by kind and name, each given out once.
class CloudItems {
  public:
    explicit CloudItems(std::vector<CloudItem> items) {
        for (auto& item : items)
            byName_.emplace(keyOf(isFolder(item), item.fileName.value_or("")), std::move(item));
    }

    std::optional<CloudItem> take(bool folder, const std::string& name) {
        auto node = byName_.extract(keyOf(folder, name));
        if (node.empty()) return std::nullopt;
        return std::move(node.mapped());
    }

    std::vector<std::string> namesLeft() const {
        std::vector<std::string> names;
        for (const auto& [key, item] : byName_) names.push_back(key.second);
        return names;
    }

  private:
    using Key = std::pair<bool, std::string>;
    static Key keyOf(bool folder, const std::string& name) { return {folder, name}; }

    std::multimap<Key, CloudItem> byName_;
};

/// The comparison of a local file or folder with the cloud.
class Comparison {
  public:
    explicit Comparison(Host& host, const std::vector<LocalItem>& items)
        : host_(host),
          items_(items),
          children_(items.size()),
          display_(host.output(), bytesOf(items)),
          slicer_(std::make_shared<hostkit::SliceFile>(hostkit::SliceFile::Observers{
              {}, [this](std::int64_t done, std::int64_t) { display_.sent(done); }})) {
        for (std::size_t index = 0; index < items.size(); ++index)
            if (const auto& parent = items[index].parent) children_[*parent].push_back(index);
    }

    ExitStatus run(const std::string& parentId) {
        CloudItems siblings(listFolder(host_, parentId));
        compare(0, siblings.take(items_[0].isFolder, items_[0].name()));
        display_.close();
        host_.output().summary(summary());
        return differing_ + missing_ + unreadable_ == 0 ? ExitStatus::success : ExitStatus::failure;
    }

  private:
    void compare(std::size_t index, const std::optional<CloudItem>& cloud) {
        if (host_.monitor().interrupted()) throw Interrupted{};
        const auto& item = items_[index];
        if (!cloud)
            missing(item);
        else if (item.isFolder)
            compareFolder(index, *cloud);
        else
            compareFile(item, *cloud);
    }

    void compareFolder(std::size_t index, const CloudItem& cloud) {
        const auto& folder = items_[index];
        if (!folder.problem.empty()) unreadable(folder, folder.problem);
        CloudItems inside(listFolder(host_, cloud.id.value_or("")));
        for (const auto child : children_[index])
            compare(child, inside.take(items_[child].isFolder, items_[child].name()));
        // What could not be read here says nothing of what is too much there.
        if (!folder.problem.empty()) return;
        for (const auto& name : inside.namesLeft()) extra(folder.label + "/" + name);
    }

    void compareFile(const LocalItem& file, const CloudItem& cloud) {
        if (cloud.size && *cloud.size != file.size) return differs(file, "size");
        host_.interrupt().setWork({[slicer = slicer_] { slicer->stop(); },
                                   [label = file.label] { return "the comparison of " + label; }});
        display_.begin(file.label, file.size);
        const auto sliced = slicer_->slice(file.path);
        display_.end(true);
        if (host_.monitor().interrupted()) throw Interrupted{};
        if (const auto* refusal = std::get_if<hostkit::SliceFile::Refusal>(&sliced))
            return unreadable(file, refusal->why);
        const auto wanted = sha256Of(cloud);
        if (wanted.empty())
            host_.output().note(file.label +
                                ": warning: the service names no SHA-256; only the size was compared");
        else if (!equalHex(std::get<baseapi::Sha256Result>(sliced).hash, wanted))
            return differs(file, "sha256");
        same(file);
    }

    /// The list names the hash, or the detail does.
    std::string sha256Of(const CloudItem& cloud) const {
        if (!cloud.sha256.value_or("").empty()) return *cloud.sha256;
        baseapi::GetFileDetailBean bean;
        bean.fileId = cloud.id;
        bean.containerId = CloudInstance::shared().contentId.get();
        return host_
            .ask("the detail of " + cloud.fileName.value_or(""), CloudInstance::shared().getFileImpl(),
                 &baseapi::IFile::getFileDetail, std::optional(std::move(bean)))
            .sha256.value_or("");
    }

    void same(const LocalItem& file) {
        ++same_;
        host_.output().event(JsonLine("same").add("path", file.label), {file.label, Line::Mark::good});
    }
    void differs(const LocalItem& file, const char* why) {
        ++differing_;
        host_.output().event(JsonLine("differs").add("path", file.label).add("why", why),
                             {file.label + "  differs: " + why, Line::Mark::bad});
    }
    void missing(const LocalItem& item) {
        ++missing_;
        host_.output().event(JsonLine("missing").add("path", item.label),
                             {item.label + "  is missing in the cloud", Line::Mark::bad});
    }
    void extra(const std::string& path) {
        ++extra_;
        host_.output().event(JsonLine("extra").add("path", path), {path + "  is in the cloud alone"});
    }
    void unreadable(const LocalItem& item, const std::string& why) {
        ++unreadable_;
        host_.output().note(item.label + ": it cannot be compared: " + why);
    }

    std::string summary() const {
        auto text = std::to_string(same_) + " same";
        const auto add = [&](std::int64_t count, const char* words) {
            if (count > 0) text += ", " + std::to_string(count) + " " + words;
        };
        add(differing_, "different");
        add(missing_, "missing in the cloud");
        add(unreadable_, "not readable here");
        add(extra_, "in the cloud alone");
        return text;
    }

    Host& host_;
    const std::vector<LocalItem>& items_;
    std::vector<std::vector<std::size_t>> children_;
    JobDisplay display_;
    const std::shared_ptr<hostkit::SliceFile> slicer_;
    std::int64_t same_ = 0;
    std::int64_t differing_ = 0;
    std::int64_t missing_ = 0;
    std::int64_t unreadable_ = 0;
    std::int64_t extra_ = 0;
};

class Verify : public Command {
  public:
    std::string name() const override { return "verify"; }
    std::string description() const override {
        return "Compare a local file or folder with its copy in the cloud";
    }

    void addOptions(Options& options) override {
        options.requiredText("PATH", path_, "", "The file or folder");
        options.requiredText("--parent", parent_, "ID", "The cloud folder that holds the copy, by its id");
    }

    ExitStatus run(Host& host) override {
        const auto items = listLocal({path_});
        return Comparison(host, items).run(parent_);
    }

  private:
    std::string path_;
    std::string parent_;
};

}  // namespace

std::unique_ptr<Command> makeVerify() {
    return std::make_unique<Verify>();
}

}  // namespace quillbox
