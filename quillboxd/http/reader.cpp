#include "quillboxd/http/reader.h"

#include <algorithm>
#include <boost/beast/http/error.hpp>
#include <cstring>

#include "quillboxd/error.h"

namespace quillboxd {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using ErrorCode = boost::system::error_code;

[[noreturn]] void refuseHead(const ErrorCode& error) {
    if (error == http::error::header_limit) {
        throw ApiError(431, Code::tooLarge, "the request's head is longer than 64 KiB");
    }
    badRequest("this is no HTTP request: " + error.message());
}

std::string toText(boost::beast::string_view view) {
    return {view.data(), view.size()};
}

template <class Parser>
Request requestOf(const Parser& parser) {
    const auto& head = parser.get();
    Request request;
    request.verb = toText(head.method_string());
    request.target = toText(head.target());
    for (const auto& field : head)
        request.headers.emplace_back(toText(field.name_string()), toText(field.value()));
    return request;
}

}  // namespace

std::optional<Request> RequestReader::readHead() {
    parser_.emplace();
    parser_->header_limit(longestHead);
    parser_->body_limit(boost::none);
    while (!parser_->is_header_done()) {
        ErrorCode error = http::error::need_more;
        if (input_.size() > 0) input_.consume(parser_->put(input_.data(), error));
        if (parser_->is_header_done()) break;
        if (error && error != http::error::need_more) refuseHead(error);
        if (input_.size() > longestHead) refuseHead(http::error::header_limit);
        if (!fillInput()) {
            if (input_.size() > 0) badRequest("the request ends inside its head");
            return std::nullopt;
        }
    }
    remaining_ = announcedLength().value_or(0);
    const auto& head = parser_->get();
    wantsConfirmation_ =
        head.version() >= 11 && boost::beast::iequals(head[http::field::expect], "100-continue");
    bodyLength_ = 0;
    bodyHash_ = Sha256();
    return requestOf(*parser_);
}

std::optional<std::int64_t> RequestReader::announcedLength() const {
    if (parser_->chunked()) return std::nullopt;
    return static_cast<std::int64_t>(parser_->content_length().value_or(0));
}

std::string_view RequestReader::readBody() {
    confirmBody();
    if (!bodyBuffer_) bodyBuffer_ = std::make_unique<char[]>(bodyBufferSize);
    const auto bytes = parser_->chunked() ? readChunked() : readSized();
    bodyLength_ += static_cast<std::int64_t>(bytes.size());
    bodyHash_.update(bytes);
    return bytes;
}

std::string RequestReader::readWholeBody(std::size_t limit) {
    std::string body;
    while (true) {
        const auto bytes = readBody();
        if (bytes.empty()) return body;
        if (body.size() + bytes.size() > limit) {
            throw ApiError(413, Code::tooLarge,
                           "the body is longer than " + std::to_string(limit) + " bytes");
        }
        body += bytes;
    }
}

void RequestReader::drainBody() {
    while (!readBody().empty()) {
    }
}

bool RequestReader::fillInput() {
    constexpr std::size_t step = 16 * 1024;
    const auto space = input_.prepare(step);
    const auto count = stream_.read(static_cast<char*>(space.data()), space.size());
    input_.commit(count);
    return count > 0;
}

void RequestReader::confirmBody() {
    if (std::exchange(wantsConfirmation_, false)) stream_.write("HTTP/1.1 100 Continue\r\n\r\n");
}

std::string_view RequestReader::readSized() {
    const auto wanted = static_cast<std::size_t>(std::min<std::int64_t>(remaining_, bodyBufferSize));
    if (wanted == 0) return {};
    std::size_t count = std::min(wanted, input_.size());
    std::memcpy(bodyBuffer_.get(), input_.data().data(), count);
    input_.consume(count);
    // Whole buffers, so that a part is written and hashed in few large steps.
    while (count < wanted) {
        const auto read = stream_.read(bodyBuffer_.get() + count, wanted - count);
        if (read == 0) throw ConnectionLost("the body ends before its announced length");
        count += read;
    }
    remaining_ -= static_cast<std::int64_t>(count);
    return {bodyBuffer_.get(), count};
}

std::string_view RequestReader::readChunked() {
    auto& body = parser_->get().body();
    body.data = bodyBuffer_.get();
    body.size = bodyBufferSize;
    while (!parser_->is_done() && body.size > 0) {
        ErrorCode error = http::error::need_more;
        if (input_.size() > 0) input_.consume(parser_->put(input_.data(), error));
        if (error == http::error::need_buffer) break;
        if (error && error != http::error::need_more)
            badRequest("the chunked body is broken: " + error.message());
        if (error && !fillInput()) throw ConnectionLost("the chunked body has no end");
    }
    return {bodyBuffer_.get(), bodyBufferSize - body.size};
}

}  // namespace quillboxd
