#include "bench/curl_uploader.h"

#include <fstream>
#include <iterator>

#include "bench/require.h"

namespace bench {

namespace {

// As long as the library's of a file of 4 KiB.
constexpr std::string_view createBody =
    R"({"autoRename":4,"containerId":"container","fileName":"file 0000.dat","fileType":"45","length":4096,)"
    R"("mimeType":"application/octet-stream","multiParts":[{"partNumber":1,"partOffset":0,"partSize":4096,)"
    R"("hashCtx":[1779033703,3144134277,1013904242,2773480762,1359893119,2600822924,528734635,1541459225]}],)"
    R"("parentFolder":["folder"],"proofCode":"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855",)"
    R"("sha256":"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855","uploadMode":"multipart"})";
constexpr std::string_view completeBody =
    R"({"fileId":"f3","sha256":"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"})";

std::size_t append(const char* data, std::size_t size, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(data, size * count);
    return size * count;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream input(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(input), {}};
}

}  // namespace

CurlUploader::CurlUploader(const std::string& host)
    : create_(host + "/quillbox/ose/v1/files/create"),
      content_(host + "/parts/1"),
      complete_(host + "/quillbox/ose/v1/files/complete") {
    curl_easy_setopt(easy_.get(), CURLOPT_HTTPHEADER, headers_.get());
    curl_easy_setopt(easy_.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy_.get(), CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(easy_.get(), CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(easy_.get(), CURLOPT_WRITEDATA, &answer_);
}

void CurlUploader::upload(const std::filesystem::path& file) {
    send("POST", create_, createBody);
    send("PUT", content_, contentOf(file));
    send("POST", complete_, completeBody);
}

void CurlUploader::send(const char* verb, const std::string& url, std::string_view body) {
    curl_easy_setopt(easy_.get(), CURLOPT_CUSTOMREQUEST, verb);
    curl_easy_setopt(easy_.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy_.get(), CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    curl_easy_setopt(easy_.get(), CURLOPT_POSTFIELDS, body.data());
    answer_.clear();
    const auto result = curl_easy_perform(easy_.get());
    require(result == CURLE_OK, curl_easy_strerror(result));
}

}  // namespace bench
