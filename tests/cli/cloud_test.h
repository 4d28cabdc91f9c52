#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/cli/quillbox_process.h"
#include "tests/quillboxd/http_client.h"
#include "tests/support/file_content.h"
#include "tests/support/quillboxd_process.h"
#include "tests/support/temporary_folder.h"

namespace quillbox_test {

/// Tests of the built program against the built local service, signed in.
class CloudTest : public testing::Test {
  protected:
    using Storage = test_support::QuillboxdProcess::Storage;

    explicit CloudTest(Storage storage = Storage::memory) : service_(storage) {
        std::filesystem::create_directories(temporaryFolder());
        const auto signedIn = run({"sign-in", "--code", "someone", "--save", tokenFile()}, settings());
        EXPECT_EQ(signedIn.status, 0) << signedIn.error;
    }

    /// The library names files in it by the second, which tests side by side would share.
    std::filesystem::path temporaryFolder() const { return home_ / "tmp"; }
    std::string tokenFile() const { return (home_ / "token").string(); }
    std::string token() const {
        std::ifstream stream(tokenFile());
        std::string line;
        std::getline(stream, line);
        return line;
    }
    RunSettings settings() const {
        RunSettings settings;
        settings.environment = {{"QUILLBOX_HOST", service_.url()},
                                {"QUILLBOX_STATE", (home_ / "state").string()},
                                {"TMPDIR", temporaryFolder().string()}};
        settings.folder = home_.path().string();
        return settings;
    }
    RunSettings signedIn() const {
        auto all = settings();
        all.environment["QUILLBOX_TOKEN_FILE"] = tokenFile();
        return all;
    }
    /// A run with JSON output, signed in.
    Outcome json(std::vector<std::string> arguments) const {
        arguments.push_back("--json");
        return run(std::move(arguments), signedIn());
    }
    Outcome text(std::vector<std::string> arguments) const { return run(std::move(arguments), signedIn()); }

    /// Plans a fault of the service.
    void plan(const std::string& fault) const {
        EXPECT_EQ(quillboxd_test::send("POST", service_.url() + "/_dev/faults", {}, fault).status, 200);
    }
    /// Path and query of each request that has come after the sign-in.
    std::vector<std::string> journal() const {
        std::vector<std::string> targets;
        const auto answer = quillboxd_test::send("GET", service_.url() + "/_dev/requests").object();
        for (const auto& entry : answer.at("requests").as_array()) {
            const auto text = [&](const char* key) { return std::string(entry.at(key).as_string()); };
            targets.push_back(text("verb") + " " + text("path") +
                              (text("query").empty() ? "" : "?" + text("query")));
        }
        targets.erase(targets.begin());
        return targets;
    }

    std::filesystem::path make(const std::string& name, std::string_view content) const {
        const auto file = home_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }
    static std::string contentOf(const std::filesystem::path& file) { return test_support::contentOf(file); }
    /// The id of the item of this name in the root folder, or in the folder of this id.
    std::string idOf(const std::string& name, const std::string& folder = {}) const {
        const auto listed = folder.empty() ? json({"ls"}) : json({"ls", folder});
        for (const auto& line : listed.lines)
            if (line.find("\"name\":\"" + name + "\"") != std::string::npos) return valueOf(line, "id");
        return {};
    }
    /// The text under a key of a JSON line.
    static std::string valueOf(const std::string& line, const std::string& key) {
        const auto mark = "\"" + key + "\":\"";
        const auto begin = line.find(mark);
        if (begin == std::string::npos) return {};
        const auto value = begin + mark.size();
        return line.substr(value, line.find('"', value) - value);
    }

    test_support::TemporaryFolder home_;
    test_support::QuillboxdProcess service_;
};

}  // namespace quillbox_test
