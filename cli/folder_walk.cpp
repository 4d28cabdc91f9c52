#include "cli/folder_walk.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "baseapi/backup/directory_traverser.h"
#include "cli/output.h"

namespace quillbox {

void walkScopes(Output& output, const std::vector<baseapi::ScopeDetail>& scopes,
                const std::function<void(baseapi::FileDetailBean&&)>& file) {
    if (scopes.empty())
        output.note("quillbox: warning: the device has no folder to back up; quillbox scope-add adds one");
    for (const auto& scope : scopes) {
        if (!scope.localPath || !scope.targetFolderPath) continue;
        if (std::error_code ignored; !std::filesystem::is_directory(*scope.localPath, ignored))
            output.note("quillbox: warning: " + *scope.localPath +
                        " is no folder here; nothing of it is backed up");
        baseapi::DirectoryTraverser::generateFileDetailBeans(*scope.localPath, *scope.targetFolderPath,
                                                             [&](auto&& bean) {
                                                                 if (!bean.isDirectory) file(std::move(bean));
                                                             });
    }
}

}  // namespace quillbox
