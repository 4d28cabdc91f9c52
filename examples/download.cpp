#include <future>
#include <iostream>

#include "baseapi/baseapi.h"

using namespace baseapi;

namespace {

/// The signed address of the file's content; empty where the service gives none.
std::string contentOf(const GetFileDetailResponse& detail) {
    for (const auto& link : detail.downloadLinks.value_or(std::vector<DownloadLink>{}))
        if (link.usage == "content") return link.downloadLink.value_or("");
    return "";
}

std::string addressOf(const std::string& fileId) {
    std::promise<std::string> address;
    CloudInstance::shared().getFileImpl().getFileDetail(
        GetFileDetailBean{.fileId = fileId}, [&](const NetworkResult<GetFileDetailResponse>& result) {
            result.visit(
                [&](const NetworkResult<GetFileDetailResponse>::success& it) {
                    address.set_value(contentOf(it.record));
                },
                [&](const NetworkFailure& it) {
                    std::cerr << it.code << ": " << it.message << '\n';
                    address.set_value("");
                });
        });
    return address.get_future().get();
}

bool download(const std::string& address, const std::string& file) {
    std::promise<bool> ended;
    const auto handle = CloudInstance::shared().getTransferImpl().downloadFile(
        URL(address), "", URL::file(file),
        [](double fraction) { std::cerr << static_cast<int>(fraction * 100) << " %\n"; },
        [&](const DownloadResult& result) {
            result.visit([&](const DownloadResult::success&) { ended.set_value(true); },
                         [&](const DownloadResult::failure& it) {
                             std::cerr << it.message << '\n';
                             ended.set_value(false);
                         });
        });
    // handle->cancel() would stop it; dropping the handle does not.
    return ended.get_future().get();
}

}  // namespace

// download HOST TOKEN FILE_ID FILE
int main(int argc, char** argv) {
    if (argc != 5) return 2;
    auto& cloud = CloudInstance::shared();
    cloud.host = argv[1];
    cloud.token = argv[2];
    const auto address = addressOf(argv[3]);
    return !address.empty() && download(address, argv[4]) ? 0 : 1;
}
