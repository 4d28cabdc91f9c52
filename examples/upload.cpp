#include <future>
#include <iostream>

#include "baseapi/baseapi.h"
#include "hostkit/slice_file.h"

// upload HOST TOKEN FILE
int main(int argc, char** argv) {
    if (argc != 4) return 2;
    auto& cloud = baseapi::CloudInstance::shared();
    cloud.host = argv[1];
    cloud.token = argv[2];

    std::promise<bool> ended;
    cloud.getTransferImpl().uploadFile(
        std::nullopt, baseapi::URL::file(argv[3]), "", 0, std::make_shared<hostkit::SliceFile>(),
        [&](const baseapi::UploadProcessResult& event) {
            using Event = baseapi::UploadProcessResult;
            event.visit([&](const Event::onSuccess&) { ended.set_value(true); },
                        [&](const Event::onFailure&) { ended.set_value(false); },
                        [](const auto&) {});  // progress, and the parts as they end
        });
    const bool succeeded = ended.get_future().get();
    std::cerr << (succeeded ? "uploaded\n" : "failed; the log lines above say why\n");
    return succeeded ? 0 : 1;
}
