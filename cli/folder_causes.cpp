#include "cli/folder_causes.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "cli/upload_cause.h"

namespace quillbox {
namespace {

constexpr std::string_view nextFolder = "new folder cloudPath = ";
constexpr std::string_view nextPath = "CloudPathHelper submit path = ";
constexpr std::string_view refusals[] = {"createSingleFolderSync failure code = ",
                                         "createDirectoryRequest failure code = "};
constexpr std::string_view timeouts[] = {"get single cloud path overTime", "get cloudPath overTime"};

template <class Prefixes>
bool beginsWithOne(std::string_view line, const Prefixes& prefixes) {
    return std::ranges::any_of(prefixes, [&](std::string_view prefix) { return line.starts_with(prefix); });
}

bool mayTell(std::string_view line) {
    return line.starts_with(nextFolder) || line.starts_with(nextPath) || beginsWithOne(line, refusals) ||
           beginsWithOne(line, timeouts);
}

/// "PARENT, name = NAME" as one path.
std::string joinedPath(std::string_view parentAndName) {
    constexpr std::string_view between = ", name = ";
    const auto end = std::min(parentAndName.rfind(between), parentAndName.size());
    const auto name = parentAndName.substr(std::min(end + between.size(), parentAndName.size()));
    return std::string(parentAndName.substr(0, end)).append("/").append(name);
}

}  // namespace

void FolderCauses::read(std::span<const std::string_view> pieces) {
    // The library begins these lines with a piece of their own.
    if (!pieces.empty() && mayTell(pieces.front())) readWhole(joinedLine(pieces));
}

void FolderCauses::readWhole(std::string_view line) {
    std::lock_guard lock(mutex_);
    if (line.starts_with(nextFolder)) {
        folder_ = joinedPath(line.substr(nextFolder.size()));
    } else if (line.starts_with(nextPath)) {
        folder_ = line.substr(nextPath.size());
    } else if (beginsWithOne(line, timeouts)) {
        say("the service did not answer the request to make it in time");
    } else {
        constexpr std::string_view beforeCode = "code = ";
        say(refusalText("to make it", line.substr(line.find(beforeCode) + beforeCode.size())));
    }
}

void FolderCauses::say(std::string cause) {
    causes_.emplace(folder_, std::move(cause));
}

std::optional<std::string> FolderCauses::causeFor(std::string cloudPath) const {
    std::lock_guard lock(mutex_);
    while (!cloudPath.empty()) {
        if (const auto found = causes_.find(cloudPath); found != causes_.end()) return found->second;
        const auto slash = cloudPath.rfind('/');
        cloudPath.resize(slash == cloudPath.npos ? 0 : slash);
    }
    return std::nullopt;
}

std::optional<std::string> FolderCauses::cause() const {
    std::lock_guard lock(mutex_);
    return causes_.empty() ? std::nullopt : std::optional(causes_.begin()->second);
}

}  // namespace quillbox
