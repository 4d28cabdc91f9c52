#pragma once

#include "quillboxd/call.h"
#include "quillboxd/store/albums.h"

namespace quillboxd::albums {

/// An album in a list. Without a cover of its own it shows the first file that it holds.
json::object albumFields(Call& call, const Album& album);

/// A file in an album.
json::object contentFields(Call& call, const Node& node);

}  // namespace quillboxd::albums
