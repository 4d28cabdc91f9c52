#include "baseapi/transfer/temporary_file.h"

#include <stdlib.h>

#include <cerrno>
#include <system_error>

namespace baseapi::inline v1 {
namespace fs = std::filesystem;
namespace {

fs::path makePrivateFolder(const fs::path& parent) {
    std::string name = (parent / "baseapi-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
    return name;
}

/// Throws where a step failed.
void check(const std::error_code& error, const fs::path& path) {
    if (error) throw std::system_error(error, path.string());
}

/// A file system cannot move to another: the copy is made beside the place and then moved there.
void copyIntoPlace(const fs::path& file, const fs::path& place) {
    const auto folder = place.has_parent_path() ? place.parent_path() : fs::path(".");
    const TemporaryFile copy(folder);
    std::error_code error;
    fs::copy_file(file, copy.path(), error);
    check(error, place);
    fs::rename(copy.path(), place, error);
    check(error, place);
    fs::remove(file, error);
}

}  // namespace

TemporaryFile::TemporaryFile(const fs::path& parent) : folder_(makePrivateFolder(parent)) {}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    fs::remove(path(), ignored);
    fs::remove(folder_, ignored);
}

void moveIntoPlace(const fs::path& file, const fs::path& place) {
    std::error_code error;
    if (place.has_parent_path()) fs::create_directories(place.parent_path(), error);
    check(error, place.parent_path());
    fs::remove(place, error);
    check(error, place);
    fs::rename(file, place, error);
    if (error == std::errc::cross_device_link) return copyIntoPlace(file, place);
    check(error, place);
}

}  // namespace baseapi::inline v1
