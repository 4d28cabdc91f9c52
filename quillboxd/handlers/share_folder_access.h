#pragma once

#include <string_view>

#include "quillboxd/call.h"
#include "quillboxd/store/share_folders.h"

namespace quillboxd::sharefolders {

ShareFolders folderStore(Call& call);

/// A share folder that the caller is in; throws for any other.
ShareFolder requireShareFolder(Call& call, std::string_view id);

/// A new folder for an album of this name, among those of the share folder's albums.
std::int64_t addAlbumFolder(Call& call, const ShareFolder& folder, const std::string& name);

}  // namespace quillboxd::sharefolders
