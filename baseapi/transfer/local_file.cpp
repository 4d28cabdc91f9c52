#include "baseapi/transfer/local_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace baseapi::inline v1 {

LocalFile::LocalFile(const std::filesystem::path& path)
    : path_(path), descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (descriptor_ < 0) fail();
}

LocalFile::~LocalFile() {
    ::close(descriptor_);
}

std::int64_t LocalFile::seekToEnd() {
    const auto position = ::lseek(descriptor_, 0, SEEK_END);
    if (position < 0) fail();
    return position;
}

void LocalFile::seek(std::int64_t offset) {
    if (::lseek(descriptor_, offset, SEEK_SET) < 0) fail();
}

std::size_t LocalFile::read(char* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const auto count = ::read(descriptor_, bytes + done, size - done);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail();
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

void LocalFile::fail() const {
    throw std::system_error(errno, std::generic_category(), path_.string());
}

}  // namespace baseapi::inline v1
