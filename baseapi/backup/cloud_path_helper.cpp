#include "baseapi/backup/cloud_path_helper.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

#include "baseapi/api/files/i_file.h"
#include "baseapi/backup/cloud_folder.h"
#include "baseapi/backup/timed_answer.h"
#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/log.h"
#include "baseapi/core/time_stamp.h"
#include "baseapi/json/codec.h"

namespace baseapi::inline v1 {
namespace {

/// White space and new-lines of Unicode, in UTF-8.
constexpr std::array<std::string_view, 25> blanks = {" ",
                                                     "\t",
                                                     "\n",
                                                     "\v",
                                                     "\f",
                                                     "\r",
                                                     "\xC2\x85",
                                                     "\xC2\xA0",
                                                     "\xE1\x9A\x80",
                                                     "\xE2\x80\x80",
                                                     "\xE2\x80\x81",
                                                     "\xE2\x80\x82",
                                                     "\xE2\x80\x83",
                                                     "\xE2\x80\x84",
                                                     "\xE2\x80\x85",
                                                     "\xE2\x80\x86",
                                                     "\xE2\x80\x87",
                                                     "\xE2\x80\x88",
                                                     "\xE2\x80\x89",
                                                     "\xE2\x80\x8A",
                                                     "\xE2\x80\xA8",
                                                     "\xE2\x80\xA9",
                                                     "\xE2\x80\xAF",
                                                     "\xE2\x81\x9F",
                                                     "\xE3\x80\x80"};

bool isBlank(std::string_view text) {
    while (!text.empty()) {
        const auto first = std::ranges::find_if(blanks, [&](auto blank) { return text.starts_with(blank); });
        if (first == blanks.end()) return false;
        text.remove_prefix(first->size());
    }
    return true;
}

/// The names between the slashes, those that show nothing left out.
std::vector<std::string> namesOf(std::string_view path) {
    std::vector<std::string> names;
    while (!path.empty()) {
        const auto name = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(name.size() + 1, path.size()));
        if (!isBlank(name)) names.emplace_back(name);
    }
    return names;
}

using Answer = NetworkResult<CreateDirectoryResponse>;

}  // namespace

CloudPathHelper::CloudPathHelper(std::optional<std::string> path, bool needHide,
                                 CreatePathCallback onCallback, std::optional<std::string> scene)
    : path_(std::move(path)),
      needHide_(needHide),
      onCallback_(std::move(onCallback)),
      scene_(std::move(scene)),
      timeStamp_(secondsSince1970()) {}

void CloudPathHelper::submit() {
    if (!path_) {
        logLine("Path is nil, defaulting to root");
        return finish("root", 0, "success");
    }
    logLine("CloudPathHelper submit path = ", *path_);
    walk(shared_from_this(), namesOf(*path_));
}

Detached CloudPathHelper::walk(std::shared_ptr<CloudPathHelper> self, std::vector<std::string> names) {
    std::string parent;
    for (const auto& name : names) {
        const auto answer =
            co_await callbackOf<Answer>([&](NetworkCallback<CreateDirectoryResponse> callback) {
                self->createDirectory(name, parent, std::move(callback));
            });
        if (const auto* failure = std::get_if<NetworkFailure>(&answer.value)) {
            self->finish("", failure->code, failure->message);
            logLine("createDirectoryRequest failure code = ", failure->code, ", msg = ", failure->message);
            co_return;
        }
        const auto& response = std::get<Answer::success>(answer.value).record;
        const auto text = encode(response);
        if (!text) {
            self->finish("", -1, "failure");
            logLine("createDirectoryRequest success but change json error");
            co_return;
        }
        logLine("createDirectoryRequest success resp = ", *text);
        parent = folderId(response);
        if (parent.empty()) {
            logLine("createDirectory failed, id is empty");
            co_return self->finish("", response.code.value_or(-1), response.msg.value_or("msg is empty"));
        }
    }
    self->finish(names.empty() ? "root" : std::move(parent), 0, "success");
}

void CloudPathHelper::createDirectory(const std::string& name, const std::string& parent,
                                      NetworkCallback<CreateDirectoryResponse> callback) const {
    auto bean = folderBean(name, parent);
    bean.scene = scene_;
    bean.hidden = needHide_;
    CloudInstance::shared().getFileImpl().createDirectory(std::move(bean), std::move(callback));
}

void CloudPathHelper::finish(std::string id, std::int64_t code, std::string message) const {
    invokeCallback(onCallback_,
                   CreatePathResult{CreatePathResult::onResult{std::move(id), code, std::move(message)}});
    logLine("CloudPathHelper create path ", timeStamp_);
}

CreatePathResult::onResult fetchCloudPath(const std::string& path) {
    const auto result = timedAnswer<CreatePathResult>(std::chrono::seconds(10), [&](auto callback) {
        std::make_shared<CloudPathHelper>(path, false, std::move(callback), "")->submit();
    });
    if (result) return std::get<CreatePathResult::onResult>(result->value);
    logLine("get cloudPath overTime");
    return {"", -1, "timeout"};
}

}  // namespace baseapi::inline v1
