// Returns from main in the middle of uploads, downloads and calls. Its arguments: the address of the service,
// a folder with the file "content", and how many microseconds to wait before.

#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/platform/platform.h"
#include "baseapi/transfer/i_transfer.h"

namespace baseapi {
namespace {

class FourParts : public ISliceFile {
  public:
    std::optional<std::string> calcSha256(const URL& /*of*/) override {
        return R"({"mimeType":"text/plain","size":4194304,"hash":"ab","parts":[)"
               R"({"partNumber":1,"partOffset":0,"partSize":1048576},)"
               R"({"partNumber":2,"partOffset":1048576,"partSize":1048576},)"
               R"({"partNumber":3,"partOffset":2097152,"partSize":1048576},)"
               R"({"partNumber":4,"partOffset":3145728,"partSize":1048576}]})";
    }
};

void listAgainAndAgain() {
    FilesListBean bean;
    bean.type = "all";
    CloudInstance::shared().getFileImpl().filesList(
        bean, [](const NetworkResult<FilesListResponse>&) { listAgainAndAgain(); });
}

void work(const std::string& service, const std::filesystem::path& folder) {
    usePlatform({.stateFolder = folder, .temporaryFolder = folder});
    auto& cloud = CloudInstance::shared();
    cloud.host = service;
    cloud.token = "token";
    cloud.contentId = "container";
    for (int i = 0; i < 4; ++i) {
        listAgainAndAgain();
        cloud.getTransferImpl().uploadFile("folder", URL::file(folder / "content"), "", 0,
                                           std::make_shared<FourParts>(), nullptr);
        cloud.getTransferImpl().downloadFile(URL(service + "/endless"), "",
                                             URL::file(folder / std::to_string(i)), nullptr, nullptr);
    }
}

}  // namespace
}  // namespace baseapi

int main(int count, char** arguments) {
    if (count != 4) return 2;
    baseapi::work(arguments[1], arguments[2]);
    std::this_thread::sleep_for(std::chrono::microseconds(std::stol(arguments[3])));
    return 0;
}
