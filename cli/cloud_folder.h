#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/api/records/file_bean.h"
#include "cli/host.h"

namespace quillbox {

/// The service's code for a folder among the kinds of files.
inline constexpr const char* folderType = "10";

/// Hands over what the folder holds, page by page, until `page` returns false. The root folder where the id
/// is absent. Throws as `Host::ask`.
void eachPage(const Host& host, const std::optional<std::string>& folderId,
              const std::function<bool(std::vector<baseapi::FileListMetadata>&)>& page);

std::vector<baseapi::FileListMetadata> listFolder(const Host& host, const std::string& folderId);

/// The id of the folder of this name, which is made where it does not exist. Throws as `Host::ask`.
std::string ensureFolder(const Host& host, const std::string& name,
                         const std::optional<std::string>& parentId);

}  // namespace quillbox
