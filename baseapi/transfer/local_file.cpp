#include "baseapi/transfer/local_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace baseapi::inline v1 {

LocalFile::LocalFile(std::string path)
    : path_(std::move(path)), descriptor_(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (descriptor_ < 0) fail();
}

LocalFile::LocalFile(const URL& file) : LocalFile(file.isFileURL() ? file.text() : std::string()) {}

LocalFile::~LocalFile() {
    ::close(descriptor_);
}

std::int64_t LocalFile::seekToEnd() {
    const auto position = ::lseek(descriptor_, 0, SEEK_END);
    if (position < 0) fail();
    return position;
}

std::size_t LocalFile::read(char* bytes, std::size_t size) {
    return readAll(size, [&](std::size_t done) { return ::read(descriptor_, bytes + done, size - done); });
}

std::size_t LocalFile::readAt(std::int64_t offset, char* bytes, std::size_t size) const {
    return readAll(size, [&](std::size_t done) {
        return ::pread(descriptor_, bytes + done, size - done, offset + static_cast<std::int64_t>(done));
    });
}

template <class ReadSome>
std::size_t LocalFile::readAll(std::size_t size, ReadSome readSome) const {
    std::size_t done = 0;
    while (done < size) {
        const auto count = readSome(done);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail();
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

void LocalFile::fail() const {
    throw std::system_error(errno, std::generic_category(), path_);
}

}  // namespace baseapi::inline v1
