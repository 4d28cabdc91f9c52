#include <future>
#include <iostream>

#include "baseapi/baseapi.h"

// download URL FILE
int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::promise<int> ended;
    auto handle = baseapi::CloudInstance::shared().getTransferImpl().downloadFile(
        baseapi::URL(argv[1]), "", baseapi::URL::file(argv[2]),
        [](double fraction) { std::cerr << static_cast<int>(fraction * 100) << " %\n"; },
        [&](const baseapi::DownloadResult& result) {
            result.visit([&](const baseapi::DownloadResult::success&) { ended.set_value(0); },
                         [&](const baseapi::DownloadResult::failure& it) {
                             std::cerr << it.message << '\n';
                             ended.set_value(1);
                         });
        });
    // handle->cancel() would stop it; dropping the handle would not.
    return ended.get_future().get();
}
