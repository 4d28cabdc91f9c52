#include "cli/cloud_folder.h"

#include <iterator>
#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"

namespace quillbox {
namespace {

using baseapi::CloudInstance;
using baseapi::IFile;

constexpr std::int64_t filesPerPage = 200;
// The answer of a create request in `useExisting` mode whose name is taken.
constexpr std::int64_t nameExists = 13000405;
constexpr std::int64_t useExisting = 3;

}  // namespace

void eachPage(const Host& host, const std::optional<std::string>& folderId,
              const std::function<bool(std::vector<baseapi::FileListMetadata>&)>& page) {
    const std::string what = "the list of a folder";
    baseapi::FilesListBean bean;
    bean.type = "list";
    bean.containerId = CloudInstance::shared().contentId.get();
    bean.parentFileId = folderId;
    bean.pageInfo = baseapi::PageInfo{.pageSize = filesPerPage};
    while (true) {
        auto answer =
            host.ask(what, CloudInstance::shared().getFileImpl(), &IFile::filesList, std::optional(bean));
        auto files = std::move(answer.files).value_or(std::vector<baseapi::FileListMetadata>{});
        const auto next = answer.nextCursor.value_or("");
        if (!page(files) || next.empty()) return;
        if (next == bean.pageInfo->pageCursor) throw ServiceFailure{what, -1, "the list has no end"};
        bean.pageInfo->pageCursor = next;
    }
}

std::vector<baseapi::FileListMetadata> listFolder(const Host& host, const std::string& folderId) {
    std::vector<baseapi::FileListMetadata> all;
    eachPage(host, folderId, [&](std::vector<baseapi::FileListMetadata>& files) {
        all.insert(all.end(), std::make_move_iterator(files.begin()), std::make_move_iterator(files.end()));
        return true;
    });
    return all;
}

std::string ensureFolder(const Host& host, const std::string& name,
                         const std::optional<std::string>& parentId) {
    const std::string what = "the folder \"" + name + "\"";
    baseapi::CreateDirectoryBean bean;
    bean.fileName = name;
    bean.fileType = folderType;
    if (parentId) bean.parentFolder = {*parentId};
    bean.containerId = CloudInstance::shared().contentId.get();
    bean.renameMode = useExisting;
    const auto answer = host.askForAny(what, CloudInstance::shared().getFileImpl(), &IFile::createDirectory,
                                       std::optional(std::move(bean)));
    if (!answer.id.value_or("").empty()) return *answer.id;
    if (answer.code == nameExists && !answer.existFileId.value_or("").empty()) return *answer.existFileId;
    throw ServiceFailure{what, answer.code.value_or(-1), answer.msg.value_or("the answer names no folder")};
}

}  // namespace quillbox
