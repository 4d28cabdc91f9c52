#include "cli/folder_walk.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "baseapi/backup/directory_traverser.h"
#include "cli/output.h"

namespace quillbox {
namespace {

std::filesystem::path folderOf(const baseapi::ScopeDetail& scope) {
    std::error_code ignored;
    return std::filesystem::weakly_canonical(scope.localPath.value_or(""), ignored) / "";
}

bool liesIn(const std::filesystem::path& inner, const std::filesystem::path& outer) {
    // The last component of a folder is the empty one behind its slash.
    return std::mismatch(outer.begin(), std::prev(outer.end()), inner.begin(), inner.end()).first ==
           std::prev(outer.end());
}

/// The library keeps one result for a file, however many scopes it stands in.
void warnOfOverlap(Output& output, const std::vector<baseapi::ScopeDetail>& scopes) {
    for (const auto& inner : scopes)
        for (const auto& outer : scopes)
            if (&inner != &outer && liesIn(folderOf(inner), folderOf(outer)))
                output.note("quillbox: warning: " + inner.localPath.value_or("") + " lies in the scope " +
                            outer.localPath.value_or("") +
                            " too; its files are sent for both, and counted as failed once each");
}

}  // namespace

void walkScopes(Output& output, const std::vector<baseapi::ScopeDetail>& scopes,
                const std::function<void(baseapi::FileDetailBean&&)>& file) {
    if (scopes.empty())
        output.note("quillbox: warning: the device has no folder to back up; quillbox scope-add adds one");
    warnOfOverlap(output, scopes);
    for (const auto& scope : scopes) {
        if (!scope.localPath || !scope.targetFolderPath) continue;
        if (std::error_code ignored; !std::filesystem::is_directory(*scope.localPath, ignored))
            output.note("quillbox: warning: " + *scope.localPath +
                        " is no folder here; nothing of it is backed up");
        baseapi::DirectoryTraverser::generateFileDetailBeans(*scope.localPath, *scope.targetFolderPath,
                                                             [&](baseapi::FileDetailBean&& bean) {
                                                                 if (!bean.isDirectory) file(std::move(bean));
                                                             });
    }
}

}  // namespace quillbox
