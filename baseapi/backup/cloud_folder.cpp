#include "baseapi/backup/cloud_folder.h"

#include <chrono>
#include <cstdint>
#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/backup/timed_answer.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/log.h"
#include "baseapi/json/codec.h"

namespace baseapi::inline v1 {
namespace {

constexpr std::int64_t nameExists = 13000405;

}  // namespace

CreateDirectoryBean folderBean(std::string name, std::string parentId) {
    CreateDirectoryBean bean;
    bean.fileName = std::move(name);
    bean.fileType = "10";
    bean.parentFolder = {std::move(parentId)};
    bean.containerId = CloudInstance::shared().contentId.get();
    bean.renameMode = 3;
    bean.scene = "";
    return bean;
}

std::string folderId(const CreateDirectoryResponse& response) {
    if (response.id && !response.id->empty()) return *response.id;
    return response.code == nameExists ? response.existFileId.value_or("") : "";
}

std::string createSingleFolderSync(const std::string& name, const std::string& parentId) {
    using Answer = NetworkResult<CreateDirectoryResponse>;
    const auto answer = timedAnswer<Answer>(std::chrono::seconds(3), [&](auto callback) {
        CloudInstance::shared().getFileImpl().createDirectory(folderBean(name, parentId),
                                                              std::move(callback));
    });
    if (!answer) {
        logLine("get single cloud path overTime");
        return "";
    }
    if (const auto* failure = std::get_if<NetworkFailure>(&answer->value)) {
        logLine("createSingleFolderSync failure code = ", failure->code, ", msg = ", failure->message);
        return "";
    }
    const auto& response = std::get<Answer::success>(answer->value).record;
    const auto text = encode(response);
    if (!text) {
        logLine("createSingleFolderSync success but change json error");
        return "";
    }
    logLine("createSingleFolderSync success resp = ", *text);
    // The line has always come after a success too.
    logLine("createSingleFolderSync failed, id is empty");
    return folderId(response);
}

}  // namespace baseapi::inline v1
