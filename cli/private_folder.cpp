#include "cli/private_folder.h"

#include <stdlib.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "cli/problems.h"

namespace quillbox {

PrivateFolder::PrivateFolder(const std::filesystem::path& above) {
    auto name = (above / "quillbox-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw UsageError{"no folder can be made in " + above.string() + " (" +
                         std::generic_category().message(errno) + "); name another one in TMPDIR"};
    path_ = name;
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace quillbox
