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

/// Regions start at whole pages, so that each can be given back to the system alone.
std::int64_t wholePages(std::int64_t size) {
    constexpr std::int64_t page = 64 * 1024;
    return (size + page - 1) / page * page;
}

}  // namespace

BlobWriter::BlobWriter(BlobStore& store, std::string id, OpenBlob blob)
    : store_(store), id_(std::move(id)), blob_(std::move(blob)) {}

BlobWriter::~BlobWriter() {
    if (!kept_) store_.remove(id_);
}

void BlobWriter::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = ::pwrite(blob_.file.get(), bytes.data(), bytes.size(), blob_.base + written_);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw std::system_error(errno, std::generic_category(), "a part cannot be stored");
        bytes.remove_prefix(static_cast<std::size_t>(count));
        written_ += count;
    }
}

BlobStore::BlobStore(std::filesystem::path folder) : folder_(std::move(folder)) {
    if (inMemory()) {
        memory_ = checked(::memfd_create("blobs", MFD_CLOEXEC), "the store in memory cannot be made");
        return;
    }
    std::filesystem::create_directories(folder_);
}

BlobWriter BlobStore::create(std::int64_t size) {
    auto id = hex(randomBytes(16));
    if (!inMemory()) {
        const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
        return {
            *this, id, {checked(::open((folder_ / id).c_str(), flags, 0600), "a part cannot be stored"), 0}};
    }
    const std::lock_guard lock(mutex_);
    const Region region{nextBase_, wholePages(size)};
    nextBase_ += region.size;
    regions_.emplace(id, region);
    return {*this, id, openRegion(region)};
}

OpenBlob BlobStore::open(const std::string& id) const {
    if (!inMemory())
        return {checked(::open((folder_ / id).c_str(), O_RDONLY | O_CLOEXEC), "a part cannot be read"), 0};
    const std::lock_guard lock(mutex_);
    return openRegion(regions_.at(id));
}

void BlobStore::remove(const std::string& id) {
    if (!inMemory()) {
        ::unlink((folder_ / id).c_str());
        return;
    }
    const std::lock_guard lock(mutex_);
    const auto found = regions_.find(id);
    if (found == regions_.end()) return;
    freeRegion(found->second);
    regions_.erase(found);
}

void BlobStore::clear() {
    removeAllBut({});
}

void BlobStore::removeAllBut(const std::set<std::string>& used) {
    if (inMemory()) {
        const std::lock_guard lock(mutex_);
        std::erase_if(regions_, [&](const auto& entry) {
            if (used.contains(entry.first)) return false;
            freeRegion(entry.second);
            return true;
        });
        return;
    }
    // A part on its way may be taken away by its own writer meanwhile: no error.
    std::error_code vanished;
    for (const auto& blob : std::filesystem::directory_iterator(folder_)) {
        if (!used.contains(blob.path().filename())) std::filesystem::remove(blob.path(), vanished);
    }
}

OpenBlob BlobStore::openRegion(const Region& region) const {
    return {checked(::fcntl(memory_.get(), F_DUPFD_CLOEXEC, 0), "the store in memory cannot be opened"),
            region.base};
}

void BlobStore::freeRegion(const Region& region) {
    if (region.size == 0) return;
    ::fallocate(memory_.get(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, region.base, region.size);
}

}  // namespace quillboxd
