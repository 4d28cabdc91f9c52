#include "bench/phone_backup.h"

#include <deque>
#include <memory>
#include <utility>
#include <vector>

#include "baseapi/backup/directory_traverser.h"
#include "baseapi/platform/platform.h"
#include "bench/curl_uploader.h"
#include "bench/dropped_lines.h"
#include "bench/library.h"
#include "bench/measure.h"
#include "bench/require.h"

namespace bench {

namespace {

std::vector<std::filesystem::path> filesOf(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files.push_back(entry.path());
    return files;
}

}  // namespace

void measureWalk(const std::filesystem::path& folder) {
    baseapi::usePlatform({.log = std::make_shared<DroppedLines>()});
    std::deque<baseapi::FileDetailBean> files;
    std::deque<baseapi::FileDetailBean> folders;
    printMeasured([&] {
        baseapi::DirectoryTraverser::generateFileDetailBeans(folder, "/target", [&](auto&& bean) {
            (bean.isDirectory ? folders : files).push_back(std::move(bean));
        });
    });
    require(!files.empty(), "the folder has no files");
}

void measureBackup(const std::string& host, const std::filesystem::path& folder) {
    openSession(host);
    addScope(folder);
    const auto files = filesOf(folder).size();
    printMeasured([&] { backUpWithLibrary(static_cast<std::int64_t>(files)); });
}

void measureBackupByCurl(const std::string& host, const std::filesystem::path& folder) {
    const auto files = filesOf(folder);
    CurlUploader uploader(host);
    printMeasured([&] {
        for (const auto& file : files) uploader.upload(file);
    });
}

}  // namespace bench
