#include "baseapi/contacts/side_file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace baseapi::inline v1 {

SideFile::SideFile(std::filesystem::path place)
    : place_(std::move(place)),
      name_(place_.parent_path() / ".baseapi-XXXXXX"),
      descriptor_(::mkostemp(name_.data(), O_CLOEXEC)) {
    if (descriptor_ < 0) fail();
}

SideFile::SideFile(SideFile&& other) noexcept
    : place_(std::move(other.place_)),
      name_(std::exchange(other.name_, {})),
      descriptor_(std::exchange(other.descriptor_, -1)) {}

SideFile::~SideFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!name_.empty()) ::unlink(name_.c_str());
}

void SideFile::write(std::string_view content) {
    while (!content.empty()) {
        const auto count = ::write(descriptor_, content.data(), content.size());
        if (count < 0 && errno != EINTR) fail();
        if (count > 0) content.remove_prefix(static_cast<std::size_t>(count));
    }
    // Some file systems tell of a full disk no sooner than here.
    if (::close(std::exchange(descriptor_, -1)) != 0) fail();
}

void SideFile::takePlace() {
    if (std::rename(name_.c_str(), place_.c_str()) != 0) fail();
    name_.clear();
}

void SideFile::fail() const {
    throw std::system_error(errno, std::generic_category(), place_.string());
}

}  // namespace baseapi::inline v1
