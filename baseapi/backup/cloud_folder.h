#pragma once

#include <string>

#include "baseapi/api/files/records.h"

namespace baseapi::inline v1 {

/// What asks the service for a folder, or for the one that is there.
CreateDirectoryBean folderBean(std::string name, std::string parentId);

/// The folder's id, whether it is new or was there; empty where there is none.
std::string folderId(const CreateDirectoryResponse& response);

/// Makes a folder and blocks until its id is known, 3 seconds at most; empty where it could not be made. Not
/// for a thread of the delegate queue.
std::string createSingleFolderSync(const std::string& name, const std::string& parentId);

}  // namespace baseapi::inline v1
