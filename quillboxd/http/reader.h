#pragma once

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/buffer_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "quillboxd/crypto/sha256.h"
#include "quillboxd/http/message.h"
#include "quillboxd/http/stream.h"

namespace quillboxd {

/// Reads the requests of one connection, one after the other.
class RequestReader {
  public:
    static constexpr std::size_t longestHead = 64 * 1024;

    explicit RequestReader(Stream& stream) : stream_(stream) {}

    /// The next head; nothing after the last request. Throws ApiError for what is no HTTP.
    std::optional<Request> readHead();
    /// Whether the client reads on after the answer; HTTP/1.0 would need to be told.
    bool keepAlive() const { return parser_->keep_alive() && parser_->get().version() >= 11; }

    /// What the head says of the body's length; nothing for a chunked body.
    std::optional<std::int64_t> announcedLength() const;

    /// The next run of the body, valid until the next call; empty at its end.
    std::string_view readBody();

    /// The whole body; throws ApiError where it is longer than `limit`.
    std::string readWholeBody(std::size_t limit);

    /// Takes in what nobody has read, so that the next request can follow.
    void drainBody();

    // Of the part of the body that has been read.
    std::int64_t bodyLength() const { return bodyLength_; }
    std::string bodySha256() const { return hex(bodyHash_.digest()); }

  private:
    using Parser = boost::beast::http::request_parser<boost::beast::http::buffer_body>;
    static constexpr std::size_t bodyBufferSize = 512 * 1024;

    bool fillInput();
    void confirmBody();
    std::string_view readSized();
    std::string_view readChunked();

    Stream& stream_;
    boost::beast::flat_buffer input_;
    std::optional<Parser> parser_;
    std::unique_ptr<char[]> bodyBuffer_;
    std::int64_t remaining_ = 0;  ///< of a body of known length
    bool wantsConfirmation_ = false;
    std::int64_t bodyLength_ = 0;
    Sha256 bodyHash_;
};

}  // namespace quillboxd
