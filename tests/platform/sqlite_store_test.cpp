#include "baseapi/platform/sqlite_store.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <random>
#include <thread>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace baseapi {

bool operator==(const KeyValueStore::Json& left, const KeyValueStore::Json& right) {
    return left.text == right.text;
}
bool operator==(const KeyValueStore::Bytes& left, const KeyValueStore::Bytes& right) {
    return left.bytes == right.bytes;
}

namespace {

using test_support::TemporaryFolder;
using Value = KeyValueStore::Value;
using namespace std::string_literals;

class Store : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder / "state" / "preferences.sqlite";
};

/// Runs the work in a process of its own and gives its number.
pid_t inAnotherProcess(const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

int exitStatus(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

TEST_F(Store, GivesBackEachKindOfValueAsItWasPut) {
    const std::vector<Value> values{
        "text"s,
        ""s,
        "with\0nul"s,
        "Grüße 你好"s,
        "broken \xff utf-8"s,
        std::string(3'000'000, 'x'),
        std::int64_t{0},
        std::numeric_limits<std::int64_t>::min(),
        std::numeric_limits<std::int64_t>::max(),
        true,
        false,
        0.1,
        -0.0,
        5e-324,
        std::numeric_limits<double>::infinity(),
        KeyValueStore::Json{R"({"a":[1,2]})"},
        KeyValueStore::Bytes{"\0\1\xfe\xff"s},
        KeyValueStore::Bytes{},
    };
    SqliteStore store(file);
    for (std::size_t i = 0; i < values.size(); ++i) store.put("key " + std::to_string(i), values[i]);
    SqliteStore later(file);
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_TRUE(later.get("key " + std::to_string(i)) == values[i]) << i;
    }
    EXPECT_TRUE(std::signbit(std::get<double>(*later.get("key 12"))));
    store.put("nan", std::nan(""));
    EXPECT_TRUE(std::isnan(std::get<double>(store.get("nan").value())));
}

TEST_F(Store, HasNothingUnderAKeyThatWasNotPut) {
    SqliteStore store(file);
    EXPECT_FALSE(store.get("missing"));
    store.remove("missing");
    store.clear();
    EXPECT_FALSE(store.get(""));
}

TEST_F(Store, ReplacesRemovesAndClears) {
    SqliteStore store(file);
    store.put("a", "one"s);
    store.put("a", std::int64_t{2});
    store.put("b", true);
    store.put("", "empty key"s);
    store.put("a\0b"s, "key with nul"s);
    EXPECT_EQ(store.get("a"), Value(std::int64_t{2}));
    EXPECT_EQ(store.get(""), Value("empty key"s));
    EXPECT_EQ(store.get("a\0b"s), Value("key with nul"s));
    store.remove("a");
    EXPECT_FALSE(store.get("a"));
    EXPECT_EQ(store.get("b"), Value(true));
    store.sync();
    store.clear();
    EXPECT_FALSE(store.get("b"));
}

TEST_F(Store, MakesItsFileOnFirstUseAndForItsOwnerAlone) {
    SqliteStore store(file);
    EXPECT_FALSE(std::filesystem::exists(file.parent_path()));
    store.put("a", true);
    struct stat status;
    ASSERT_EQ(::stat(file.parent_path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(Store, IsSharedByThreads) {
    SqliteStore store(file);
    std::vector<std::jthread> writers;
    for (int writer = 0; writer < 4; ++writer) {
        writers.emplace_back([&, writer] {
            for (std::int64_t i = 1; i <= 100; ++i) {
                store.put("key " + std::to_string(writer), i);
                EXPECT_EQ(store.get("key " + std::to_string(writer)), Value(i));
            }
        });
    }
}

TEST_F(Store, IsSharedByProcessesFromItsFirstMoment) {
    constexpr int kProcesses = 4;
    for (int round = 0; round < 5; ++round) {
        file = folder / ("round " + std::to_string(round)) / "preferences.sqlite";
        std::vector<pid_t> children;
        for (int process = 0; process < kProcesses; ++process) {
            children.push_back(inAnotherProcess([&] {
                SqliteStore store(file);
                for (std::int64_t i = 0; i < 100; ++i) {
                    store.put(std::to_string(process) + " " + std::to_string(i), i);
                    store.put("contended", i);
                }
            }));
        }
        for (const auto child : children) EXPECT_EQ(exitStatus(child), 0);
        SqliteStore store(file);
        EXPECT_EQ(store.get("contended"), Value(std::int64_t{99}));
        for (int process = 0; process < kProcesses; ++process) {
            for (std::int64_t i = 0; i < 100; ++i) {
                ASSERT_EQ(store.get(std::to_string(process) + " " + std::to_string(i)), Value(i));
            }
        }
    }
}

TEST_F(Store, HasEverythingThatWasPutBeforeAKillAtAnyMoment) {
    std::mt19937 random(7);
    std::int64_t start = 0;
    for (int round = 0; round < 30; ++round) {
        int told[2];
        ASSERT_EQ(::pipe(told), 0);
        const auto child = inAnotherProcess([&] {
            SqliteStore store(file);
            for (std::int64_t i = start + 1;; ++i) {
                store.put("counter", i);
                store.put("half", KeyValueStore::Bytes{std::string(20'000, static_cast<char>(i))});
                if (::write(told[1], &i, sizeof i) != sizeof i) ::_exit(1);
            }
        });
        ::close(told[1]);
        const auto kills = 1 + random() % 40;
        std::int64_t written = 0;
        for (unsigned i = 0; i < kills; ++i) ASSERT_EQ(::read(told[0], &written, sizeof written), 8);
        ::kill(child, SIGKILL);
        while (::read(told[0], &written, sizeof written) > 0) {
        }
        ::close(told[0]);
        exitStatus(child);

        SqliteStore store(file);
        const auto counter = store.get("counter");
        ASSERT_TRUE(counter);
        start = std::get<std::int64_t>(*counter);
        EXPECT_TRUE(start == written || start == written + 1) << start << " " << written;
        const auto bytes = std::get<KeyValueStore::Bytes>(store.get("half").value()).bytes;
        EXPECT_EQ(bytes, std::string(20'000, bytes.front()));
    }
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".broken-1"));
}

void spoil(const std::filesystem::path& file, std::streamoff from, std::size_t size) {
    std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
    bytes.seekp(from);
    bytes << std::string(size, '\x5a');
}

TEST_F(Store, PutsABrokenFileAsideAndBeginsAnew) {
    for (const int number : {1, 2}) {
        {
            SqliteStore store(file);
            store.put("a", "precious"s);
        }
        spoil(file, 0, 2'000);
        SqliteStore store(file);
        EXPECT_FALSE(store.get("a"));
        store.put("a", "new"s);
        EXPECT_EQ(SqliteStore(file).get("a"), Value("new"s));
        EXPECT_TRUE(std::filesystem::exists(file.string() + ".broken-" + std::to_string(number)));
    }
}

TEST_F(Store, PutsAFileAsideWhoseInsideIsBroken) {
    {
        SqliteStore store(file);
        for (int i = 0; i < 500; ++i) store.put("key " + std::to_string(i), std::string(200, 'v'));
    }
    const auto size = std::filesystem::file_size(file);
    spoil(file, 4096, size - 4096);
    SqliteStore store(file);
    EXPECT_FALSE(store.get("key 250"));
    store.put("key 250", true);
    EXPECT_EQ(store.get("key 250"), Value(true));
    EXPECT_EQ(std::filesystem::file_size(file.string() + ".broken-1"), size);
}

TEST_F(Store, IsPutAsideOnceByProcessesThatFindItBrokenTogether) {
    {
        SqliteStore store(file);
        store.put("a", "precious"s);
    }
    spoil(file, 0, 2'000);
    std::vector<pid_t> children;
    for (int process = 0; process < 4; ++process) {
        children.push_back(inAnotherProcess([&] {
            SqliteStore store(file);
            store.put("process " + std::to_string(process), true);
        }));
    }
    for (const auto child : children) EXPECT_EQ(exitStatus(child), 0);
    SqliteStore store(file);
    for (int process = 0; process < 4; ++process) {
        EXPECT_EQ(store.get("process " + std::to_string(process)), Value(true)) << process;
    }
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".broken-2"));
}

TEST_F(Store, TakesAnEmptyFileForANewOne) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file).flush();
    SqliteStore store(file);
    store.put("a", true);
    EXPECT_EQ(store.get("a"), Value(true));
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".broken-1"));
}

TEST_F(Store, IsEmptyWhereItsFileCannotBeAndServesAsSoonAsItCan) {
    std::ofstream(file.parent_path()) << "a file where the folder should be";
    SqliteStore store(file);
    store.put("a", true);
    EXPECT_FALSE(store.get("a"));
    store.clear();
    store.sync();
    std::filesystem::remove(file.parent_path());
    store.put("a", true);
    EXPECT_EQ(store.get("a"), Value(true));
}

TEST_F(Store, HasNoValueWhereItDoesNotKnowTheKind) {
    SqliteStore store(file);
    store.put("a", true);
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, "UPDATE preferences SET kind = 77", nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(connection);
    EXPECT_FALSE(store.get("a"));
}

}  // namespace
}  // namespace baseapi
