#include <openssl/err.h>
#include <openssl/ssl.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "quillboxd/error.h"
#include "quillboxd/http/stream.h"

namespace quillboxd {
namespace {

struct FreeSsl {
    void operator()(SSL* ssl) const { SSL_free(ssl); }
};

std::string lastError() {
    const auto code = ERR_get_error();
    ERR_clear_error();
    return code ? ERR_error_string(code, nullptr) : "the connection has ended";
}

class TlsStream : public Stream {
  public:
    explicit TlsStream(std::unique_ptr<SSL, FreeSsl> ssl) : ssl_(std::move(ssl)) {}

    std::size_t read(char* buffer, std::size_t capacity) override {
        std::size_t count = 0;
        if (SSL_read_ex(ssl_.get(), buffer, capacity, &count) == 1) return count;
        if (SSL_get_error(ssl_.get(), 0) == SSL_ERROR_ZERO_RETURN) return 0;
        throw ConnectionLost("receiving: " + lastError());
    }

    void write(std::string_view bytes) override {
        std::size_t written = 0;
        if (!bytes.empty() && SSL_write_ex(ssl_.get(), bytes.data(), bytes.size(), &written) != 1) {
            throw ConnectionLost("sending: " + lastError());
        }
    }

    void sendFile(std::string_view head, int file, std::int64_t offset, std::int64_t length) override {
        write(head);
        std::vector<char> buffer(static_cast<std::size_t>(std::min<std::int64_t>(length, 256 * 1024)));
        while (length > 0) {
            const auto wanted = std::min<std::int64_t>(length, static_cast<std::int64_t>(buffer.size()));
            const auto count = ::pread(file, buffer.data(), static_cast<std::size_t>(wanted), offset);
            if (count <= 0) throw ConnectionLost("a file ends too early");
            write({buffer.data(), static_cast<std::size_t>(count)});
            offset += count;
            length -= count;
        }
    }

    void finish() override {
        SSL_shutdown(ssl_.get());
        plainStream(SSL_get_fd(ssl_.get()))->finish();
    }

  private:
    std::unique_ptr<SSL, FreeSsl> ssl_;
};

int chooseHttp(SSL*, const unsigned char** chosen, unsigned char* chosenLength, const unsigned char* offered,
               unsigned int offeredLength, void*) {
    static constexpr unsigned char http[] = "\x08http/1.1";
    unsigned char* answer = nullptr;
    if (SSL_select_next_proto(&answer, chosenLength, http, sizeof http - 1, offered, offeredLength) !=
        OPENSSL_NPN_NEGOTIATED) {
        return SSL_TLSEXT_ERR_NOACK;
    }
    *chosen = answer;
    return SSL_TLSEXT_ERR_OK;
}

}  // namespace

struct TlsContext::Handle {
    SSL_CTX* context = SSL_CTX_new(TLS_server_method());
    ~Handle() { SSL_CTX_free(context); }
};

TlsContext::TlsContext(const std::string& certificateFile, const std::string& keyFile)
    : handle_(std::make_unique<Handle>()) {
    auto* context = handle_->context;
    SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
    SSL_CTX_set_alpn_select_cb(context, chooseHttp, nullptr);
    if (SSL_CTX_use_certificate_chain_file(context, certificateFile.c_str()) != 1) {
        throw StartError("the certificate " + certificateFile + " cannot be used: " + lastError());
    }
    if (SSL_CTX_use_PrivateKey_file(context, keyFile.c_str(), SSL_FILETYPE_PEM) != 1 ||
        SSL_CTX_check_private_key(context) != 1) {
        throw StartError("the key " + keyFile + " cannot be used with the certificate: " + lastError());
    }
}

TlsContext::~TlsContext() = default;

std::unique_ptr<Stream> TlsContext::accept(int socket) const {
    std::unique_ptr<SSL, FreeSsl> ssl(SSL_new(handle_->context));
    SSL_set_fd(ssl.get(), socket);
    if (SSL_accept(ssl.get()) != 1) throw ConnectionLost("the TLS handshake: " + lastError());
    return std::make_unique<TlsStream>(std::move(ssl));
}

}  // namespace quillboxd
