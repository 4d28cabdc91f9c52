#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quillboxd/crypto/sha256.h"
#include "tests/quillboxd/http_client.h"
#include "tests/support/quillboxd_process.h"

namespace quillboxd_test {

using test_support::QuillboxdProcess;

inline std::string sha256Hex(std::string_view bytes) {
    return quillboxd::hex(quillboxd::sha256(bytes));
}

/// Bytes that look random and are the same in every run.
std::string someBytes(std::size_t count, unsigned seed = 1);

/// A signed-in person.
class Client {
  public:
    explicit Client(std::string url, const std::string& authCode = "someone");

    HttpAnswer post(const std::string& path, const std::string& body) const;
    HttpAnswer get(const std::string& pathAndQuery) const;

    /// The body of a files/create for these bytes in parts of `partSize`, with hashCtx.
    json::object createBody(const std::string& name, const std::string& bytes, std::size_t partSize) const;
    HttpAnswer create(const json::object& body) const { return post("/files/create", json::serialize(body)); }

    /// Sends each part to the address that the answer of files/create names.
    std::vector<HttpAnswer> putParts(const json::object& created, const std::string& bytes) const;
    HttpAnswer complete(const std::string& fileId, const std::string& bytes) const;

    /// All steps of a new file; returns its id.
    std::string upload(const std::string& name, const std::string& bytes, std::size_t partSize = 1 << 20,
                       const std::string& parent = "root") const;
    std::string makeFolder(const std::string& name, const std::string& parent = "root") const;

    std::string contentUrl(const std::string& fileId) const;
    std::string download(const std::string& fileId) const;
    std::vector<std::string> names(const std::string& parent = "root") const;
    std::string proofCode(const std::string& bytes) const;

    const std::string& token() const { return token_; }
    const std::string& container() const { return container_; }

  private:
    std::string url_;
    std::string token_;
    std::string container_;
};

/// A service in memory, with one person signed in.
class ServiceTest : public testing::Test {
  protected:
    QuillboxdProcess process_{QuillboxdProcess::Storage::memory};
    Client client_{process_.url()};
};

/// Checks an answer that refuses, with a reason that holds `words`.
void expectRefused(const HttpAnswer& answer, int status, const std::string& words);

inline std::string textOf(const json::object& object, std::string_view key) {
    return std::string(object.at({key.data(), key.size()}).as_string());
}

/// The text under a key of each record in a list of the answer.
std::vector<std::string> column(const HttpAnswer& answer, const char* list, const char* key);

}  // namespace quillboxd_test
