#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "quillboxd/unique_fd.h"

namespace quillboxd {

/// The other side has gone, or has said nothing for too long.
struct ConnectionLost : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One accepted connection, with or without TLS. All operations block, and throw ConnectionLost.
class Stream {
  public:
    virtual ~Stream() = default;

    /// Reads what is there, at least one byte; 0 means that the other side has ended its half.
    virtual std::size_t read(char* buffer, std::size_t capacity) = 0;

    virtual void write(std::string_view bytes) = 0;

    /// Sends a run of a file; `head` goes before it.
    virtual void sendFile(std::string_view head, int file, std::int64_t offset, std::int64_t length) = 0;

    /// Says that nothing more comes, and takes in a little of what the other side still sends, so that it
    /// reads the last answer before it learns that the connection has ended.
    virtual void finish() = 0;
};

std::unique_ptr<Stream> plainStream(int socket);

/// Certificate and key of the service, for all its connections.
class TlsContext {
  public:
    /// PEM files; throws StartError where they cannot be used.
    TlsContext(const std::string& certificateFile, const std::string& keyFile);
    ~TlsContext();
    TlsContext(const TlsContext&) = delete;
    TlsContext& operator=(const TlsContext&) = delete;

    /// Shakes hands first.
    std::unique_ptr<Stream> accept(int socket) const;

  private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

/// Ends the connection with a reset in place of an orderly end.
void resetConnection(UniqueFd& socket);

}  // namespace quillboxd
