#include "quillboxd/store/blob_store.h"

#include <fcntl.h>
#include <sys/mman.h>

#include <cerrno>
#include <system_error>

#include "quillboxd/crypto/random.h"
#include "quillboxd/crypto/sha256.h"

namespace quillboxd {
namespace {

UniqueFd checked(int fd, const char* what) {
    if (fd < 0) throw std::system_error(errno, std::generic_category(), what);
    return UniqueFd(fd);
}

}  // namespace

BlobWriter::BlobWriter(BlobStore& store, std::string id, UniqueFd file)
    : store_(store), id_(std::move(id)), file_(std::move(file)) {}

BlobWriter::~BlobWriter() {
    if (!kept_) store_.remove(id_);
}

void BlobWriter::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(file_.get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throw std::system_error(errno, std::generic_category(), "a blob cannot be written");
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

BlobStore::BlobStore(std::filesystem::path folder) : folder_(std::move(folder)) {
    if (inMemory()) return;
    for (int first = 0; first < 256; ++first) {
        const char byte = static_cast<char>(first);
        std::filesystem::create_directories(folder_ / hex(std::string_view(&byte, 1)));
    }
}

BlobWriter BlobStore::create() {
    auto id = hex(randomBytes(16));
    if (!inMemory()) {
        const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
        return {*this, id, checked(::open(pathOf(id).c_str(), flags, 0600), "a blob cannot be made")};
    }
    auto file = checked(::memfd_create("blob", MFD_CLOEXEC), "a blob in memory cannot be made");
    auto writing = checked(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0), "a blob in memory cannot be opened");
    const std::lock_guard lock(mutex_);
    memory_.emplace(id, std::move(file));
    return {*this, id, std::move(writing)};
}

UniqueFd BlobStore::open(const std::string& id) const {
    if (!inMemory())
        return checked(::open(pathOf(id).c_str(), O_RDONLY | O_CLOEXEC), "a blob cannot be opened");
    const std::lock_guard lock(mutex_);
    const auto found = memory_.find(id);
    const int fd = found == memory_.end() ? -1 : ::fcntl(found->second.get(), F_DUPFD_CLOEXEC, 0);
    return checked(fd, "a blob in memory cannot be opened");
}

void BlobStore::remove(const std::string& id) {
    if (!inMemory()) {
        ::unlink(pathOf(id).c_str());
        return;
    }
    const std::lock_guard lock(mutex_);
    memory_.erase(id);
}

void BlobStore::clear() {
    removeAllBut({});
}

void BlobStore::removeAllBut(const std::set<std::string>& used) {
    const std::lock_guard lock(mutex_);
    std::erase_if(memory_, [&](const auto& entry) { return !used.contains(entry.first); });
    if (inMemory()) return;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
        if (!entry.is_directory() && !used.contains(entry.path().filename()))
            std::filesystem::remove(entry.path());
    }
}

std::filesystem::path BlobStore::pathOf(const std::string& id) const {
    return folder_ / id.substr(0, 2) / id;
}

}  // namespace quillboxd
