#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/algorithm/string/replace.hpp>
#include <cstddef>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/cli/cloud_test.h"

// Calls of the operations by the built quillbox at the built local service, as tables.

namespace quillbox_test {

/// One call. In the record and in the event FILE and FOLDER stand for the ids of a file "known.txt" that
/// holds "hello" and of a folder "known", CONTAINER for the container of both.
struct Row {
    std::string operation;
    std::string when;
    /// Absent: the operation is called without a record.
    std::optional<std::string> record;
    /// What the event begins with; a success has the exit status 0, a failure 1.
    std::string event;
    /// Another piece of the event.
    std::string also = {};
    /// Verb, path and query that reach the service; empty where nothing does.
    std::string sent = {};
};

inline void PrintTo(const Row& row, std::ostream* out) {
    *out << row.operation << " " << row.when;
}

inline constexpr std::nullopt_t absent = std::nullopt;
inline const std::string refused = R"({"event":"failure","code":-1,"message":"params build faild"})";
inline const std::string success = R"({"event":"success","record":{)";
inline const std::string done = R"({"event":"success","record":{"code":0,"msg":"success"}})";

/// What the service itself refuses.
inline std::string failure(int code, const std::string& message) {
    return R"({"event":"failure","code":)" + std::to_string(code) + R"(,"message":")" + message;
}
inline std::string get(const std::string& target) {
    return "GET /quillbox/ose/v1/" + target;
}
inline std::string post(const std::string& target) {
    return "POST /quillbox/ose/v1/" + target;
}

class CallServiceTest : public CloudTest {
  protected:
    CallServiceTest() {
        make("known.txt", "hello");
        EXPECT_EQ(json({"upload", "known.txt"}).status, 0);
        EXPECT_EQ(json({"mkdir", "known"}).status, 0);
        const auto file = idOf("known.txt");
        const auto detail = json({"detail", file}).output;
        const auto begin = detail.find(R"("containers":[")") + 15;
        know("FILE", file);
        know("FOLDER", idOf("known"));
        know("CONTAINER", detail.substr(begin, detail.find('"', begin) - begin));
    }
    /// From now on the word stands for the text, and what has been sent so far does not count.
    void know(const std::string& word, const std::string& text) {
        words_.emplace_back(word, text);
        before_ = journal().size();
    }
    std::string filled(std::string text) const {
        for (const auto& [word, meaning] : words_) boost::replace_all(text, word, meaning);
        return text;
    }
    void expectAnswer(const Row& row) const {
        const auto result = call(row.operation, row.record);
        EXPECT_THAT(result.lines, testing::ElementsAre(testing::AllOf(testing::StartsWith(filled(row.event)),
                                                                      testing::HasSubstr(filled(row.also)))));
        EXPECT_EQ(result.status, row.event.starts_with(success) || row.event == done ? 0 : 1);
        EXPECT_THAT(result.error, testing::IsEmpty());
        if (row.sent.empty())
            EXPECT_THAT(sent(), testing::IsEmpty());
        else
            EXPECT_THAT(sent(), testing::ElementsAre(filled(row.sent)));
    }
    std::vector<std::string> sent() const {
        const auto all = journal();
        return {all.begin() + static_cast<std::ptrdiff_t>(before_), all.end()};
    }
    Outcome call(const std::string& operation, const std::optional<std::string>& record) const {
        std::vector<std::string> arguments{"call", operation};
        if (record) arguments.push_back(filled(*record));
        return json(std::move(arguments));
    }
    /// The operations that the program lists for these interfaces.
    std::set<std::string> operationsOf(const std::set<std::string>& interfaces) const {
        std::set<std::string> operations;
        for (const auto& line : json({"call", "--list"}).lines)
            if (interfaces.contains(valueOf(line, "interface")))
                operations.insert(valueOf(line, "operation"));
        return operations;
    }

  private:
    std::vector<std::pair<std::string, std::string>> words_;
    std::size_t before_ = 0;
};

/// The operations that have a row with a full record.
inline std::set<std::string> operationsIn(const std::vector<Row>& rows) {
    std::set<std::string> operations;
    for (const auto& row : rows)
        if (row.when == "full") operations.insert(row.operation);
    return operations;
}

/// Its test stands in call_service_test.cpp; each family has its rows instantiated with `nameOf`.
class CallRow : public CallServiceTest, public testing::WithParamInterface<Row> {};

inline std::string nameOf(const testing::TestParamInfo<Row>& row) {
    return row.param.operation + "_" + row.param.when;
}

}  // namespace quillbox_test
