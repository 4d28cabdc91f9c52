#include "baseapi/platform/curl/partial_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace baseapi::inline v1 {

void PartialFile::open(const std::filesystem::path& path) {
    path_ = path;
    // Non-blocking for what is no file at all: opening a FIFO would wait for a reader.
    descriptor_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, 0666);
    if (descriptor_ < 0) fail();
    struct stat status;
    if (::fstat(descriptor_, &status) != 0) fail();
    if (!S_ISREG(status.st_mode)) throw std::runtime_error("cannot write " + path_.string() + ": not a file");
    size_ = status.st_size;
}

void PartialFile::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) fail();
        size_ += written;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void PartialFile::clear() {
    if (::ftruncate(descriptor_, 0) != 0) fail();
    size_ = 0;
}

void PartialFile::close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
}

void PartialFile::fail() const {
    throw std::runtime_error("cannot write " + path_.string() + ": " + std::system_category().message(errno));
}

}  // namespace baseapi::inline v1
