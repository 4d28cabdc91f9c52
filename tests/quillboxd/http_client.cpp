#include "tests/quillboxd/http_client.h"

#include <arpa/inet.h>
#include <curl/curl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <memory>

namespace quillboxd_test {
namespace {

struct FreeCurl {
    void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

std::size_t takeBody(char* bytes, std::size_t size, std::size_t count, void* answer) {
    static_cast<HttpAnswer*>(answer)->body.append(bytes, size * count);
    return size * count;
}

std::size_t takeHeader(char* bytes, std::size_t size, std::size_t count, void* answer) {
    const std::string line(bytes, size * count);
    const auto colon = line.find(": ");
    if (colon == line.npos) return size * count;
    std::string name = line.substr(0, colon);
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
    static_cast<HttpAnswer*>(answer)->headers.emplace_back(name,
                                                           line.substr(colon + 2, line.size() - colon - 4));
    return size * count;
}

}  // namespace

std::string HttpAnswer::header(std::string_view name) const {
    const auto found =
        std::find_if(headers.begin(), headers.end(), [&](const auto& h) { return h.first == name; });
    return found == headers.end() ? "" : found->second;
}

HttpAnswer send(const std::string& verb, const std::string& url, const std::vector<std::string>& headers,
                const std::string& body) {
    HttpAnswer answer;
    const std::unique_ptr<CURL, FreeCurl> curl(curl_easy_init());
    std::unique_ptr<curl_slist, FreeCurl> list;
    for (const auto& header : headers) list.reset(curl_slist_append(list.release(), header.c_str()));
    curl_easy_setopt(curl.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl.get(), CURLOPT_CUSTOMREQUEST, verb.c_str());
    if (verb == "HEAD") curl_easy_setopt(curl.get(), CURLOPT_NOBODY, 1L);
    if (verb == "POST" || verb == "PUT" || !body.empty()) {
        curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDS, body.data());
        curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    }
    curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, list.get());
    curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, takeBody);
    curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, &answer);
    curl_easy_setopt(curl.get(), CURLOPT_HEADERFUNCTION, takeHeader);
    curl_easy_setopt(curl.get(), CURLOPT_HEADERDATA, &answer);
    curl_easy_setopt(curl.get(), CURLOPT_TIMEOUT, 60L);
    curl_easy_setopt(curl.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl.get(), CURLOPT_SSL_VERIFYPEER, 0L);
    curl_easy_setopt(curl.get(), CURLOPT_SSL_VERIFYHOST, 0L);
    const auto result = curl_easy_perform(curl.get());
    answer.errorNumber = result;
    answer.error = result == CURLE_OK ? "" : curl_easy_strerror(result);
    long status = 0;
    curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status);
    answer.status = result == CURLE_OK ? static_cast<int>(status) : 0;
    return answer;
}

std::string exchangeRaw(std::uint16_t port, std::string_view bytes) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    std::string answer;
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
        while (!bytes.empty()) {
            const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0) break;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        ::shutdown(socket, SHUT_WR);
        char buffer[4096];
        for (ssize_t count = 0; (count = ::recv(socket, buffer, sizeof buffer, 0)) > 0;) {
            answer.append(buffer, static_cast<std::size_t>(count));
        }
    }
    ::close(socket);
    return answer;
}

}  // namespace quillboxd_test
