#include "bench/transfer_baselines.h"

#include <arpa/inet.h>
#include <curl/curl.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <openssl/evp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <string_view>
#include <thread>

#include "bench/require.h"

namespace bench {

namespace {

constexpr std::size_t pieceSize = 1 * 1024 * 1024;

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {
        require(number >= 0, "cannot open a file or socket");
    }
    ~Descriptor() { close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    operator int() const { return number_; }  // NOLINT(google-explicit-constructor)

  private:
    int number_;
};

void sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        require(count > 0, "the server closed the connection");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

/// One connection and the buffer of its parts.
class PartSender {
  public:
    PartSender(int port, const std::filesystem::path& file)
        : file_(open(file.c_str(), O_RDONLY | O_CLOEXEC)),
          socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        require(connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0,
                "cannot connect");
    }

    void put(const Part& part) {
        const auto size = static_cast<std::size_t>(part.size);
        sendAll(socket_,
                "PUT /parts/1 HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/octet-stream\r\n"
                "Content-Length: " +
                    std::to_string(size) + "\r\n\r\n");
        for (std::size_t done = 0; done < size;) {
            const auto count = pread(file_, buffer_.data(), std::min(buffer_.size(), size - done),
                                     part.offset + static_cast<std::int64_t>(done));
            require(count > 0, "cannot read the file");
            sendAll(socket_, {buffer_.data(), static_cast<std::size_t>(count)});
            done += static_cast<std::size_t>(count);
        }
        std::array<char, 4096> answer;
        const auto count = recv(socket_, answer.data(), answer.size(), 0);
        require(count > 12 && std::string_view(answer.data(), 12).ends_with("200"),
                "the server refused a part");
    }

  private:
    Descriptor file_;
    Descriptor socket_;
    std::vector<char> buffer_ = std::vector<char>(pieceSize);
};

std::size_t writeOut(const char* data, std::size_t size, std::size_t count, void* descriptor) {
    return static_cast<std::size_t>(write(*static_cast<Descriptor*>(descriptor), data, size * count));
}

}  // namespace

void hashFile(const std::filesystem::path& file) {
    const Descriptor input(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr);
    std::vector<char> buffer(pieceSize);
    for (ssize_t count; (count = read(input, buffer.data(), buffer.size())) > 0;)
        EVP_DigestUpdate(context.get(), buffer.data(), static_cast<std::size_t>(count));
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
    EVP_DigestFinal_ex(context.get(), digest.data(), nullptr);
}

void putParts(int port, const std::filesystem::path& file, const std::vector<Part>& parts, int width) {
    std::atomic<std::size_t> next = 0;
    std::vector<std::jthread> threads;
    for (int i = 0; i < width; ++i)
        threads.emplace_back([&] {
            PartSender sender(port, file);
            for (std::size_t part; (part = next.fetch_add(1)) < parts.size();) sender.put(parts[part]);
        });
}

void downloadWithCurl(const std::string& url, const std::filesystem::path& target) {
    Descriptor output(open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy(curl_easy_init(), curl_easy_cleanup);
    curl_easy_setopt(easy.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy.get(), CURLOPT_BUFFERSIZE, 512L * 1024);
    curl_easy_setopt(easy.get(), CURLOPT_WRITEFUNCTION, writeOut);
    curl_easy_setopt(easy.get(), CURLOPT_WRITEDATA, &output);
    const auto result = curl_easy_perform(easy.get());
    require(result == CURLE_OK, curl_easy_strerror(result));
}

}  // namespace bench
