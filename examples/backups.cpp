#include <cstdlib>
#include <future>
#include <iostream>

#include "baseapi/baseapi.h"
#include "hostkit/folder_photo_library.h"
#include "hostkit/slice_file.h"
#include "hostkit/vcf_address_book.h"

using namespace baseapi;

namespace {

/// Drops the log lines, which go to standard output otherwise.
struct Silence : LogSink {
    void line(std::span<const std::string_view>) noexcept override {}
};

IPhoneBackup& phone() {
    return CloudInstance::shared().getPhoneBackupImpl();
}

/// Prints what happens in a run, and keeps whether it ended well.
BackupCallback printed(std::promise<bool>& ended) {
    return [&ended](const BackupResult& event) {
        event.visit(
            [](const BackupResult::onProgress& it) {
                std::cout << it.succCount << " sent, " << it.failCount << " failed\n";
            },
            [&](const BackupResult::onComplete& it) {
                std::cout << "the end: " << it.succCount << " sent, " << it.failCount << " failed, code "
                          << it.code << ": " << it.msg << '\n';
                ended.set_value(it.code == 0);
            });
    };
}

bool backUpFolders(std::int64_t device) {
    std::promise<bool> ended;
    if (!phone().backupDirs("", device, printed(ended))) return false;
    return ended.get_future().get();
}

bool backUpAlbum(std::int64_t device) {
    std::promise<bool> ended;
    if (!phone().backupAlbum("", device, printed(ended))) return false;
    return ended.get_future().get();
}

bool backUpContacts(std::int64_t device) {
    using Result = BackupContactResult;
    std::promise<bool> ended;
    const auto onComplete = [&](const Result& result) {
        result.visit(
            [&](const Result::success& it) {
                std::cout << "the end: " << it.message << '\n';
                ended.set_value(true);
            },
            [&](const Result::failure& it) {
                std::cout << "the end: " << it.errorCode << ' ' << it.errorMessage << '\n';
                ended.set_value(false);
            });
    };
    const auto onProgress = [](const BackupProgress& it) { std::cout << it.percent << " %\n"; };
    if (!phone().backupContact("", device, 0, {onComplete, onProgress})) return false;
    return ended.get_future().get();
}

bool restoreContacts(const std::string& record) {
    std::promise<bool> ended;
    phone().restoreContact("", record, 0, [&](const ContactResult& event) {
        event.visit([](const ContactResult::onProgress&) {},
                    [&](const ContactResult::onSuccess&) { ended.set_value(true); },
                    [&](const ContactResult::onFailure& it) {
                        std::cout << "the end: " << it.code << ' ' << it.message << '\n';
                        ended.set_value(false);
                    });
    });
    return ended.get_future().get();
}

bool run(const std::string& what, const std::string& argument) {
    if (what == "restore") return restoreContacts(argument);
    const auto device = std::strtoll(argument.c_str(), nullptr, 10);
    if (what == "album") return backUpAlbum(device);
    if (what == "contacts") return backUpContacts(device);
    return backUpFolders(device);
}

}  // namespace

// backups HOST TOKEN dirs|album|contacts DEVICE, or backups HOST TOKEN restore RECORD
int main(int argc, char** argv) {
    if (argc != 5) return 2;
    usePlatform({.log = std::make_shared<Silence>(),
                 .photoLibrary = std::make_shared<hostkit::FolderPhotoLibrary>("photos"),
                 .addressBook = std::make_shared<hostkit::VcfAddressBook>("contacts")});

    auto& cloud = CloudInstance::shared();
    cloud.host = argv[1];
    cloud.token = argv[2];
    cloud.sliceFile = std::make_shared<hostkit::SliceFile>();
    return run(argv[3], argv[4]) ? 0 : 1;
}
