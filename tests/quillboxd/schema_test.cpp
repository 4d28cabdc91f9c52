#include "quillboxd/store/schema.h"

#include <filesystem>
#include <numeric>

#include "quillboxd/store/database.h"
#include "tests/quillboxd/service_fixture.h"

namespace quillboxd_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// A person with a folder and a file of six bytes, in the tables of the first version.
constexpr const char* earlierFiles = R"sql(
INSERT INTO accounts (id, auth_code, container) VALUES (7, 'someone', '8'), (9, 'anna', '10');
INSERT INTO contents (id, sha256, length) VALUES (1, 'f00', 6);
INSERT INTO nodes (id, account, parent, name, is_file, live, file_type, mime_type, created_time, edited_time,
    content) VALUES (11, 7, 0, 'folder', 0, 1, '10', '', '', '', NULL), (12, 7, 11, 'file', 1, 1, '45', '', '', '', 1);
)sql";

class EarlierSchema : public testing::TestWithParam<int> {
  protected:
    EarlierSchema() {
        process_.kill();
        for (const auto& file : std::filesystem::directory_iterator(process_.dataFolder()))
            std::filesystem::remove_all(file.path());
    }
    std::string database() const { return process_.dataFolder() / "quillboxd.sqlite"; }

    QuillboxdProcess process_;
};

TEST_P(EarlierSchema, IsBroughtUpToDateWithAllThatItHolds) {
    {
        quillboxd::Database database(this->database());
        quillboxd::prepareSchema(database, 1);
        database.script(earlierFiles);
        quillboxd::prepareSchema(database, GetParam());
    }
    process_.start();
    const Client client(process_.url());
    EXPECT_EQ(client.container(), "8");
    EXPECT_THAT(client.names("11"), ElementsAre("file"));
    EXPECT_EQ(client.get("/space/?type=").object().at("data").at("spaceUsed").as_int64(), 6);
    EXPECT_FALSE(client.makeFolder("another").empty());
    // Who was there under a name of the organisation keeps what is theirs.
    EXPECT_EQ(textOf(client.get("/users/9").object().at("data").as_object(), "name"), "Anna Arden");
}

std::vector<int> earlierVersions() {
    std::vector<int> versions(static_cast<std::size_t>(quillboxd::schemaVersion()));
    std::iota(versions.begin(), versions.end(), 1);
    return versions;
}

INSTANTIATE_TEST_SUITE_P(OfEachVersion, EarlierSchema, testing::ValuesIn(earlierVersions()));

TEST(SchemaTest, ALaterVersionIsNotTouched) {
    quillboxd::Database database(":memory:");
    database.script("PRAGMA user_version = 1000");
    try {
        quillboxd::prepareSchema(database);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("another version"));
    }
}

}  // namespace
}  // namespace quillboxd_test
