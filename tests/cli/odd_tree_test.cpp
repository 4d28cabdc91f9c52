// A backup of a tree that holds everything a file system can.

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/cli/backup_test.h"

namespace quillbox_test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A file that grows as long as the object lives.
class GrowingFile {
  public:
    explicit GrowingFile(const fs::path& file)
        : descriptor_(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)), thread_([this] {
              while (!ended_ && ::write(descriptor_, "x", 1) == 1) std::this_thread::yield();
          }) {}
    ~GrowingFile() {
        ended_ = true;
        thread_.join();
        ::close(descriptor_);
    }
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;

  private:
    const int descriptor_;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

class OddTreeTest : public BackupTest {
  protected:
    OddTreeTest() : BackupTest(Storage::folder) {}

    fs::path odd(const std::string& name) const { return home_ / "odd" / name; }

    void makeFileOf(const std::string& name, std::uintmax_t size) const {
        make("odd/" + name, "");
        fs::resize_file(odd(name), size);
    }
    void makeSocket(const std::string& name) const {
        // A socket's own path has little room.
        const int folder = ::open(odd("").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder, name.c_str());
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(socket);
        ::close(folder);
    }
    /// What goes up; the number of its files.
    int makeGoodFiles() const {
        const std::vector<std::string> names{
            "empty",   "new\nline", "\"quotes\" and \\",   "中文 😀.pdf", " ",
            ".hidden", "#?%20",     std::string(255, 'n'), "deep/er/in", "tab\tname"};
        for (const auto& name : names) make("odd/" + name, name == "empty" ? "" : "content of " + name);
        for (int number = 0; number < 2000; ++number)
            make("odd/many/" + std::to_string(number), std::to_string(number));
        // A larger one is for a run by hand: 1073741824.
        const char* bytes = std::getenv("QUILLBOX_TEST_LARGE_FILE");
        makeFileOf("large", bytes ? std::strtoull(bytes, nullptr, 10) : 32 << 20);
        fs::create_directories(odd("without files"));
        fs::create_symlink("empty", odd("link to a file"));
        fs::create_symlink("deep", odd("link to a folder"));
        return static_cast<int>(names.size()) + 2000 + 3;
    }
    /// What fails; the number of its files.
    int makeFailingFiles() const {
        EXPECT_EQ(::mkfifo(odd("fifo").c_str(), 0600), 0);
        makeSocket("socket");
        make("odd/\xff\xfe", "no UTF-8");
        make("odd/\xff folder/inside", "in a folder that cannot be made");
        make("odd/secret", "not to be read");
        fs::permissions(odd("secret"), fs::perms::none);
        return 5;
    }
    /// What is passed over and not counted.
    void makePassedOver() const {
        fs::create_symlink("nowhere", odd("dangling"));
        fs::create_symlink("self", odd("self"));
        fs::create_symlink(".", odd("round"));
        make("odd/locked/inside", "never seen");
        fs::permissions(odd("locked"), fs::perms::none);
    }
    int countOf(const Outcome& outcome, const std::string& event) const {
        return static_cast<int>(std::ranges::count_if(outcome.lines, [&](const auto& line) {
            return line.starts_with(R"({"event":")" + event + '"');
        }));
    }
};

TEST_F(OddTreeTest, ItIsBackedUpToTheEndAndExactlyWhatWasPlantedFails) {
    const int good = makeGoodFiles();
    int failing = makeFailingFiles();
    makePassedOver();
    make("odd/vanishing", "soon gone");
    makeFileOf("growing", 8 << 20);
    failing += 2;
    ASSERT_EQ(json({"scope-add", "odd", "/backup", "--device-id", "7"}).status, 0);

    auto settings = signedIn();
    settings.withoutRootRights = true;
    // The walk is over when the first folder is made.
    stall("POST", "/quillbox/ose/v1/directory");
    Outcome result;
    {
        const GrowingFile growing(odd("growing"));
        QuillboxProcess process({"backup", "dirs", "--device-id", "7", "--json"}, settings);
        ASSERT_TRUE(waitForStall());
        fs::remove(odd("vanishing"));
        release();
        result = {process.wait(), process.lines(), process.output(), process.error()};
    }
    fs::permissions(odd("locked"), fs::perms::owner_all);
    fs::permissions(odd("secret"), fs::perms::owner_all);

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.lines.back(), complete(good, failing)) << result.error;
    EXPECT_EQ(propertiesOfRecord("100"), counts(good, failing));
    const auto told = [&](const std::string& name, const std::string& why) {
        EXPECT_THAT(result.error, HasSubstr(odd(name).string() + ": " + why));
    };
    told("fifo", "no regular file\n");
    told("socket", "no regular file\n");
    told("\xEF\xBF\xBD\xEF\xBF\xBD", "the request to create it cannot be built");
    told("\xEF\xBF\xBD folder/inside", "its folder could not be made");
    told("secret", "Permission denied\n");
    told("vanishing", "No such file or directory\n");
    told("growing", "the file changed while it was read\n");
    told("locked", "the folder cannot be read whole: Permission denied\n");
    told("round", "left out, as it leads back to a folder above it\n");
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), failing + 2) << result.error;

    for (const char* name : {"fifo", "socket", "\xff\xfe", "\xff folder", "secret", "growing", "dangling",
                             "self", "round", "locked"})
        fs::remove_all(odd(name));
    const auto verified = json({"verify", "odd", "--parent", idOf("backup")});
    EXPECT_EQ(countOf(verified, "same"), good) << verified.error;
    EXPECT_EQ(countOf(verified, "differs") + countOf(verified, "missing"), 0) << verified.output;
    expectNoLock("100");
}

}  // namespace
}  // namespace quillbox_test
