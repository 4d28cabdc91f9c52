#include "quillboxd/http/stream.h"

#include <sys/sendfile.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

namespace quillboxd {
namespace {

[[noreturn]] void lost(const char* during) {
    throw ConnectionLost(std::string(during) + ": " + std::strerror(errno));
}

class PlainStream : public Stream {
  public:
    explicit PlainStream(int socket) : socket_(socket) {}

    std::size_t read(char* buffer, std::size_t capacity) override {
        while (true) {
            const auto count = ::recv(socket_, buffer, capacity, 0);
            if (count >= 0) return static_cast<std::size_t>(count);
            if (errno != EINTR) lost("receiving");
        }
    }

    void write(std::string_view bytes) override { send(bytes, 0); }

    void sendFile(std::string_view head, int file, std::int64_t offset, std::int64_t length) override {
        send(head, MSG_MORE);
        off_t position = offset;
        while (length > 0) {
            const auto count = ::sendfile(socket_, file, &position, static_cast<std::size_t>(length));
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) lost("sending a file");
            length -= count;
        }
    }

    void finish() override {
        ::shutdown(socket_, SHUT_WR);
        const timeval patience{1, 0};
        ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        char unread[16 * 1024];
        for (int reads = 0; reads < 1024 && ::recv(socket_, unread, sizeof unread, 0) > 0;) ++reads;
    }

  private:
    void send(std::string_view bytes, int flags) {
        while (!bytes.empty()) {
            const auto count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | flags);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) lost("sending");
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    int socket_;
};

}  // namespace

std::unique_ptr<Stream> plainStream(int socket) {
    return std::make_unique<PlainStream>(socket);
}

void resetConnection(UniqueFd& socket) {
    const linger now{1, 0};
    ::setsockopt(socket.get(), SOL_SOCKET, SO_LINGER, &now, sizeof now);
    socket.reset();
}

}  // namespace quillboxd
