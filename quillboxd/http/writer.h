#pragma once

#include "quillboxd/http/message.h"
#include "quillboxd/http/stream.h"
#include "quillboxd/store/blob_store.h"

namespace quillboxd {

/// How an answer is spoilt on its way out.
struct Spoiling {
    std::int64_t cutAfter = -1;  ///< bytes of the body; negative: the whole body goes out
    double bytesPerSecond = 0;   ///< 0: as fast as it goes
};

/// Sends an answer; head and body leave together where they are short.
void writeReply(Stream& stream, const Reply& reply, const BlobStore& blobs, bool keepAlive, bool headOnly);

/// Sends an answer byte for byte at a slow pace, or only its beginning.
void writeSpoilt(Stream& stream, const Reply& reply, const BlobStore& blobs, bool headOnly,
                 const Spoiling& spoiling);

}  // namespace quillboxd
