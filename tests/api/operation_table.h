#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <thread>
#include <variant>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/json/codec.h"
#include "baseapi/net/network_result.h"
#include "tests/support/scripted_server.h"

namespace baseapi {

/// A request on the wire; an absent body is none at all.
struct Sent {
    std::string verb;
    std::string target;
    std::optional<std::string> body;

    bool operator==(const Sent&) const = default;
};

inline void PrintTo(const Sent& sent, std::ostream* out) {
    *out << sent.verb << " " << sent.target << " " << sent.body.value_or("(no body)");
}

/// The request is refused and nothing is sent.
inline constexpr std::nullopt_t refused = std::nullopt;
/// The record is absent, or the body is.
inline constexpr std::nullopt_t absent = std::nullopt;

/// What one call of an operation sends.
struct OperationRow {
    std::string operation;
    /// What the row is about, as a part of the test's name.
    std::string when;
    /// The record's JSON text, laid over a fresh record.
    std::optional<std::string> record;
    std::optional<Sent> sent;
};

inline void PrintTo(const OperationRow& row, std::ostream* out) {
    *out << row.operation << " " << row.when;
}

/// A success as the record's JSON text, or a failure.
using CallResult = std::variant<std::string, NetworkFailure>;

/// The answer of one call, and where its callback ran.
struct CallOutcome {
    CallResult result;
    bool beforeReturn = false;
    bool onCallersThread = false;
};

template <class Interface, class Bean, class Response>
CallOutcome callOperation(Interface& service,
                          void (Interface::*operation)(std::optional<Bean>, NetworkCallback<Response>),
                          std::optional<std::string> recordText) {
    std::optional<Bean> bean;
    if (recordText) {
        const auto error = decode(*recordText, bean.emplace(), DecodingMode::overlay);
        EXPECT_FALSE(error) << error->description();
    }
    CallOutcome outcome;
    test_support::Event arrived;
    std::atomic<bool> returned{false};
    const auto caller = std::this_thread::get_id();
    (service.*operation)(std::move(bean), [&](const NetworkResult<Response>& result) {
        outcome.beforeReturn = !returned;
        outcome.onCallersThread = std::this_thread::get_id() == caller;
        outcome.result = result.visit(
            [](const typename NetworkResult<Response>::success& it) -> CallResult {
                return encode(it.record).value();
            },
            [](const NetworkFailure& it) -> CallResult { return it; });
        arrived.set();
    });
    returned = true;
    EXPECT_TRUE(arrived.wait());
    return outcome;
}

/// Calls the operation of this name.
template <class Interface>
CallOutcome callOperation(Interface& service, std::string_view name, std::optional<std::string> recordText) {
    std::optional<CallOutcome> outcome;
    Interface::operations([&](std::string_view each, auto operation) {
        if (each == name) outcome = callOperation(service, operation, recordText);
    });
    EXPECT_TRUE(outcome) << "no operation " << name;
    return outcome.value_or(CallOutcome{});
}

/// A service that gives one answer to everything.
class ServiceTest : public testing::Test {
  protected:
    void SetUp() override { CloudInstance::shared().host = server_.url(); }

    /// To be set before the first call.
    int status_ = 200;
    std::string answer_ = "{}";
    test_support::ScriptedServer server_{
        [this](test_support::Exchange& exchange) { exchange.answer(status_, answer_); }};

    std::optional<Sent> sent() const {
        const auto requests = server_.requests();
        EXPECT_LE(requests.size(), 1U);
        if (requests.empty()) return std::nullopt;
        const auto& request = requests.front();
        Sent seen{request.verb, request.target, std::nullopt};
        if (request.header("Content-Length")) seen.body = request.body;
        return seen;
    }

    template <class Interface>
    void expectRow(Interface& service, const OperationRow& row) {
        const auto outcome = callOperation(service, row.operation, row.record);
        EXPECT_EQ(sent(), row.sent);
        EXPECT_EQ(outcome.onCallersThread, !row.sent);
        if (row.sent) {
            EXPECT_EQ(std::get<std::string>(outcome.result), "{}");
        } else {
            EXPECT_TRUE(outcome.beforeReturn);
            EXPECT_EQ(std::get<NetworkFailure>(outcome.result).code, -1);
            EXPECT_EQ(std::get<NetworkFailure>(outcome.result).message, "params build faild");
        }
    }
};

class OperationTest : public ServiceTest, public testing::WithParamInterface<OperationRow> {};

inline std::string nameOf(const testing::TestParamInfo<OperationRow>& info) {
    return info.param.operation + "_" + info.param.when;
}

}  // namespace baseapi
