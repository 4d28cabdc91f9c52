#include "cli/file_backup.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

/// A service that refuses every start and says nothing.
class RefusingService : public baseapi::IPhoneBackup {
  public:
    bool backupAlbum(const std::string&, std::int64_t, baseapi::BackupCallback) override { return false; }
    bool backupDirs(const std::string&, std::int64_t, baseapi::BackupCallback) override { return false; }
    bool backupContact(const std::string&, std::int64_t, std::int64_t,
                       baseapi::BackupResultHandler) override {
        return false;
    }
    void restoreContact(const std::string&, const std::string&, std::int64_t,
                        baseapi::ContactCallback) override {}
    std::shared_ptr<baseapi::Cancelable> getBackupManager(std::string_view) override { return nullptr; }
};

class Equipped : public Command {
  public:
    explicit Equipped(FileBackup& backup) : backup_(backup) {}
    std::string name() const override { return "backup album"; }
    std::string description() const override { return {}; }
    void addOptions(Options&) override {}
    void equip(const Equipment& equipment) override { backup_.equip(equipment); }
    ExitStatus run(Host&) override { return ExitStatus::success; }

  private:
    FileBackup& backup_;
};

/// In a process of its own, as the parts that are lent to the library are there for good.
void backUpWithRefusingService() {
    SessionOptions options;
    options.state = "/dev/null/there is no state";
    Monitor monitor;
    Interrupt interrupt(monitor);
    TokenMask mask;
    const auto output = makeOutput(true, mask);
    FileBackup backup({"101", "the backup", &baseapi::IPhoneBackup::backupAlbum},
                      [](const std::string& path) {
                          return BackupSlicer::Item{path, {}, {}};
                      });
    Equipped command(backup);
    Host host(options, {*output, monitor, interrupt, mask}, command);
    RefusingService service;
    testing::internal::CaptureStdout();
    const auto status = backup.run(host, service, BackupOptions{});
    std::cerr << testing::internal::GetCapturedStdout();
    std::_Exit(static_cast<int>(status));
}

TEST(FileBackupDeathTest, AStartThatTheLibraryRefusesWithoutAResultIsToldOf) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(backUpWithRefusingService(), testing::ExitedWithCode(1), "^.\"event\":\"notStarted\".\n$");
}

}  // namespace
}  // namespace quillbox
