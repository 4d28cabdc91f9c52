#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <string_view>

namespace test_support {

/// One accepted connection, plain or TLS. One thread reads and writes; any thread may `wakeUp`.
class Channel {
  public:
    /// Takes the socket. With a `context` the TLS handshake happens in the first `read` or `write`.
    Channel(int socket, SSL_CTX* context);
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// The number of bytes read, 0 at the end or after an error.
    std::size_t read(char* bytes, std::size_t size);
    /// False when the peer is gone.
    bool write(std::string_view bytes);
    /// Sends the end of the stream.
    void close();
    /// Breaks the connection off: the peer sees a reset.
    void reset();
    /// Makes a `read` of another thread return 0.
    void wakeUp();

  private:
    struct SslDeleter {
        void operator()(SSL* ssl) const { SSL_free(ssl); }
    };

    int socket_;
    std::unique_ptr<SSL, SslDeleter> ssl_;
    bool open_ = true;
};

}  // namespace test_support
