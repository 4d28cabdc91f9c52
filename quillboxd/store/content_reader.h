#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "quillboxd/store/blob_store.h"
#include "quillboxd/store/contents.h"

namespace quillboxd {

/// Reads the bytes of pieces in order as if they were one file, without the database.
class ContentReader {
  public:
    ContentReader(const BlobStore& blobs, std::vector<Piece> pieces);

    std::int64_t size() const { return starts_.back(); }

    /// Fills the buffer from `offset` on, up to the end; returns how many bytes it got.
    std::size_t read(std::int64_t offset, char* buffer, std::size_t size);

  private:
    std::size_t readPiece(std::size_t index, std::int64_t offset, char* buffer, std::size_t size);

    const BlobStore& blobs_;
    std::vector<Piece> pieces_;
    std::vector<std::int64_t> starts_{0};  ///< of each piece, and the end
    std::size_t openPiece_ = 0;
    OpenBlob blob_;
};

}  // namespace quillboxd
