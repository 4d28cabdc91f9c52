#pragma once

#include <memory>

#include "baseapi/api/album/i_album.h"

namespace baseapi::inline v1 {

/// The implementation over the service's REST calls; it has no state.
std::unique_ptr<IAlbum> makeAlbumImpl();

}  // namespace baseapi::inline v1
