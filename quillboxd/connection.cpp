#include "quillboxd/connection.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "quillboxd/http/reader.h"
#include "quillboxd/http/writer.h"
#include "quillboxd/router.h"

namespace quillboxd {
namespace {

using Clock = std::chrono::steady_clock;

bool isAuthority(std::string_view text) {
    return !text.empty() && text.size() <= 255 && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' ||
               c == '-' || c == ':' || c == '[' || c == ']';
    });
}

Reply expiredReply() {
    return errorReply(ApiError(403, Code::refused, "the address has expired"));
}

Reply htmlReply() {
    return {
        .contentType = "text/html; charset=utf-8",
        .body =
            "<!DOCTYPE html><html><head><title>Welcome</title></head><body>Please sign in.</body></html>\n"};
}

/// The answer of a fault that takes the place of the real one; nothing where the real one is wanted.
std::optional<Reply> replacement(const Fault& fault) {
    switch (fault.kind) {
        case FaultKind::status:
            return Reply{.status = static_cast<int>(fault.status), .body = fault.body};
        case FaultKind::html:
            return htmlReply();
        case FaultKind::empty:
            return Reply{.status = 204};
        case FaultKind::expire:
            return expiredReply();
        default:
            return std::nullopt;
    }
}

/// One request and its answer.
class Exchange {
  public:
    Exchange(const ServerContext& context, Stream& stream, UniqueFd& socket, RequestReader& reader,
             const Request& request)
        : context_(context), stream_(stream), socket_(socket), reader_(reader), request_(request) {
        journalled_ = !isControl(request);
        if (journalled_) seq_ = context.service.journal.arrived(request);
    }

    /// Whether another request may follow.
    bool run() {
        const auto fault =
            journalled_ ? context_.service.faults.take(request_.verb, request_.path()) : std::nullopt;
        if (!fault) return answer(work());
        if (auto reply = replacement(*fault)) return answer(*reply);
        switch (fault->kind) {
            case FaultKind::reset:
                return reset();
            case FaultKind::garbage:
                return sendGarbage();
            case FaultKind::truncate:
                return spoil({.cutAfter = fault->bytes});
            case FaultKind::trickle:
                return spoil({.bytesPerSecond = fault->bytesPerSecond});
            default:
                break;
        }
        context_.service.faults.wait(std::chrono::duration<double>(fault->seconds));
        return answer(work());
    }

    /// Of the answer; 0 where none was sent.
    int status() const { return status_; }

  private:
    Reply work() {
        Call call{context_.service, request_, reader_, origin()};
        return dispatch(call);
    }

    std::string origin() const {
        const auto* host = request_.header("Host");
        const auto& authority = host && isAuthority(*host) ? *host : context_.address;
        return (context_.tls ? "https://" : "http://") + authority;
    }

    bool answer(const Reply& reply) {
        reader_.drainBody();
        note(reply.status);
        const bool keepAlive = reader_.keepAlive() && !reply.closes;
        writeReply(stream_, reply, context_.service.blobs, keepAlive, request_.verb == "HEAD");
        note(reply.status);
        return keepAlive;
    }

    bool spoil(const Spoiling& spoiling) {
        const auto reply = work();
        reader_.drainBody();
        note(reply.status);
        writeSpoilt(stream_, reply, context_.service.blobs, request_.verb == "HEAD", spoiling);
        note(reply.status);
        return false;
    }

    bool reset() {
        note(0);
        resetConnection(socket_);
        return false;
    }

    bool sendGarbage() {
        reader_.drainBody();
        note(0);
        stream_.write("\x16\x03\x7f\xff this is no HTTP\r\n\r\n");
        return false;
    }

    /// Before an answer leaves, so that whoever has it finds it in the journal, and once more for its
    /// duration.
    void note(int status) {
        status_ = status;
        if (!journalled_) return;
        const std::chrono::duration<double, std::milli> taken = Clock::now() - start_;
        context_.service.journal.answered(seq_, status, reader_.bodyLength(), reader_.bodySha256(),
                                          taken.count());
    }

    const ServerContext& context_;
    Stream& stream_;
    UniqueFd& socket_;
    RequestReader& reader_;
    const Request& request_;
    bool journalled_ = false;
    std::int64_t seq_ = 0;
    int status_ = 0;
    Clock::time_point start_ = Clock::now();
};

void print(const Request& request, int status, Clock::time_point start) {
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    std::fprintf(stderr, "%s %s %d %.1f ms\n", request.verb.c_str(), Journal::maskedTarget(request).c_str(),
                 status, taken.count());
}

void serveRequests(const ServerContext& context, Stream& stream, UniqueFd& socket) {
    RequestReader reader(stream);
    try {
        while (const auto request = reader.readHead()) {
            const auto start = Clock::now();
            Exchange exchange(context, stream, socket, reader, *request);
            const bool more = exchange.run();
            if (context.verbose) print(*request, exchange.status(), start);
            if (!more) break;
        }
    } catch (const ApiError& error) {
        writeReply(stream, errorReply(error), context.service.blobs, false, false);
    }
    if (socket) stream.finish();
}

}  // namespace

void serveConnection(const ServerContext& context, UniqueFd& socket) {
    try {
        const auto stream = context.tls ? context.tls->accept(socket.get()) : plainStream(socket.get());
        serveRequests(context, *stream, socket);
    } catch (const std::exception& error) {
        if (context.verbose) std::fprintf(stderr, "connection lost: %s\n", error.what());
    }
}

}  // namespace quillboxd
