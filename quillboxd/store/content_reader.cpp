#include "quillboxd/store/content_reader.h"

#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace quillboxd {

ContentReader::ContentReader(const BlobStore& blobs, std::vector<Piece> pieces)
    : blobs_(blobs), pieces_(std::move(pieces)) {
    for (const auto& piece : pieces_) starts_.push_back(size() + piece.length);
}

std::size_t ContentReader::read(std::int64_t offset, char* buffer, std::size_t size) {
    std::size_t done = 0;
    while (done < size && offset < this->size()) {
        const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
        const auto index = static_cast<std::size_t>(next - starts_.begin()) - 1;
        const auto count = readPiece(index, offset - starts_[index], buffer + done, size - done);
        done += count;
        offset += static_cast<std::int64_t>(count);
    }
    return done;
}

std::size_t ContentReader::readPiece(std::size_t index, std::int64_t offset, char* buffer, std::size_t size) {
    const auto& piece = pieces_[index];
    if (!blob_.file || openPiece_ != index) blob_ = blobs_.open(piece.blob);
    openPiece_ = index;
    const auto wanted = std::min(size, static_cast<std::size_t>(piece.length - offset));
    const auto count = ::pread(blob_.file.get(), buffer, wanted, blob_.base + piece.offset + offset);
    if (count <= 0) throw std::runtime_error("a blob is shorter than the database says");
    return static_cast<std::size_t>(count);
}

}  // namespace quillboxd
