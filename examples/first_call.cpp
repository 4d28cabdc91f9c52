#include <future>
#include <iostream>

#include "baseapi/baseapi.h"

using namespace baseapi;

namespace {

/// Drops the log lines, which go to standard output otherwise.
struct Silence : LogSink {
    void line(std::span<const std::string_view>) noexcept override {}
};

std::string signIn(const std::string& code) {
    std::promise<std::string> token;
    CloudInstance::shared().getUserImpl().getToken(
        AuthCodeBean{.authCode = code}, [&](NetworkResult<UserAuthResp> result) {
            result.visit(
                [&](NetworkResult<UserAuthResp>::success& it) {
                    token.set_value(it.record.accessToken.value_or(""));
                },
                [&](NetworkFailure& it) {
                    std::cerr << it.code << ": " << it.message << '\n';
                    token.set_value("");
                });
        });
    return token.get_future().get();
}

void list(const std::string& folder) {
    std::promise<void> listed;
    CloudInstance::shared().getFileImpl().filesList(
        FilesListBean{.type = "list", .pageInfo = PageInfo{.pageSize = 100}, .parentFileId = folder},
        [&](NetworkResult<FilesListResponse> result) {
            result.visit(
                [](NetworkResult<FilesListResponse>::success& it) {
                    for (const auto& file : it.record.files.value_or(std::vector<FileListMetadata>{})) {
                        std::cout << file.fileName.value_or("?") << '\n';
                    }
                },
                [](NetworkFailure& it) { std::cerr << it.code << ": " << it.message << '\n'; });
            listed.set_value();
        });
    listed.get_future().wait();
}

}  // namespace

// first_call HOST CODE
int main(int argc, char** argv) {
    if (argc != 3) return 2;
    usePlatform({.log = std::make_shared<Silence>()});

    auto& cloud = CloudInstance::shared();
    cloud.host = argv[1];
    cloud.token = signIn(argv[2]);
    list("root");
    return cloud.token.get()->empty() ? 1 : 0;
}
