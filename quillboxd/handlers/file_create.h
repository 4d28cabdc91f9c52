#pragma once

#include <cstdint>

#include "quillboxd/call.h"

namespace quillboxd::files {

/// A file that a create has begun, or found.
struct CreatedFile {
    std::int64_t node = 0;
    Reply reply;
};

/// Does what a create asks for; the call's body is its record.
CreatedFile createFile(Call& call);

}  // namespace quillboxd::files
