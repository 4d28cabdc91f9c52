#pragma once

#include <openssl/ssl.h>

#include <filesystem>
#include <memory>

#include "tests/support/temporary_folder.h"

namespace test_support {

/// A key and a self-signed certificate for "localhost" and 127.0.0.1, made anew for each test.
class ServerCertificate {
  public:
    ServerCertificate();

    SSL_CTX* context() const { return context_.get(); }
    /// The certificate as a PEM file, to be trusted by a client.
    std::filesystem::path pemFile() const { return folder_ / "server.pem"; }
    /// The key as a PEM file, for a server of its own.
    std::filesystem::path keyFile() const { return folder_ / "server.key"; }

  private:
    struct ContextDeleter {
        void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
    };

    TemporaryFolder folder_;
    std::unique_ptr<SSL_CTX, ContextDeleter> context_;
};

}  // namespace test_support
