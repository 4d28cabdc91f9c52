#include "quillboxd/http/writer.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace quillboxd {
namespace {

/// Sends texts slowly, and stops after a number of bytes.
class SpoiltOutput {
  public:
    SpoiltOutput(Stream& stream, const Spoiling& spoiling) : stream_(stream), spoiling_(spoiling) {}

    void head(std::string_view text) { paced(text); }

    bool body(std::string_view text) {
        const bool cuts = spoiling_.cutAfter >= 0 && static_cast<std::int64_t>(text.size()) > left();
        if (cuts) text = text.substr(0, static_cast<std::size_t>(left()));
        sent_ += static_cast<std::int64_t>(text.size());
        paced(text);
        return !cuts;
    }

  private:
    std::int64_t left() const { return spoiling_.cutAfter - sent_; }

    void paced(std::string_view text) {
        if (spoiling_.bytesPerSecond <= 0) return stream_.write(text);
        const auto step = static_cast<std::size_t>(std::max(1.0, spoiling_.bytesPerSecond / 10));
        while (!text.empty()) {
            const auto run = text.substr(0, step);
            stream_.write(run);
            text.remove_prefix(run.size());
            std::this_thread::sleep_for(
                std::chrono::duration<double>(static_cast<double>(run.size()) / spoiling_.bytesPerSecond));
        }
    }

    Stream& stream_;
    const Spoiling& spoiling_;
    std::int64_t sent_ = 0;
};

/// Hands the bytes of a piece on in runs, until the taker has had enough.
template <class Take>
bool readPiece(const Piece& piece, const BlobStore& blobs, Take take) {
    std::string buffer(64 * 1024, '\0');
    const auto blob = blobs.open(piece.blob);
    for (std::int64_t done = 0; done < piece.length;) {
        const auto wanted =
            std::min<std::int64_t>(piece.length - done, static_cast<std::int64_t>(buffer.size()));
        const auto count = ::pread(blob.file.get(), buffer.data(), static_cast<std::size_t>(wanted),
                                   blob.base + piece.offset + done);
        if (count <= 0) throw ConnectionLost("a blob ends too early");
        if (!take(std::string_view(buffer.data(), static_cast<std::size_t>(count)))) return false;
        done += count;
    }
    return true;
}

}  // namespace

void writeReply(Stream& stream, const Reply& reply, const BlobStore& blobs, bool keepAlive, bool headOnly) {
    auto head = writeHead(reply, keepAlive);
    if (headOnly || reply.pieces.empty()) {
        if (!headOnly) head += reply.body;
        return stream.write(head);
    }
    for (const auto& piece : reply.pieces) {
        const auto blob = blobs.open(piece.blob);
        stream.sendFile(head, blob.file.get(), blob.base + piece.offset, piece.length);
        head.clear();
    }
}

void writeSpoilt(Stream& stream, const Reply& reply, const BlobStore& blobs, bool headOnly,
                 const Spoiling& spoiling) {
    SpoiltOutput output(stream, spoiling);
    output.head(writeHead(reply, false));
    if (headOnly || !output.body(reply.body)) return;
    for (const auto& piece : reply.pieces) {
        if (!readPiece(piece, blobs, [&](std::string_view bytes) { return output.body(bytes); })) return;
    }
}

}  // namespace quillboxd
