#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/json/codec.h"
#include "baseapi/net/network_result.h"
#include "tests/support/event.h"
#include "tests/support/scripted_server.h"
#include "tests/support/test_platform.h"

namespace baseapi {

/// A request on the wire; an absent body is none at all.
struct Sent {
    std::string verb;
    std::string target;
    std::optional<std::string> body;
    /// The header "x-backup-lock-id".
    std::optional<std::string> lockId = std::nullopt;

    bool operator==(const Sent&) const = default;
};

inline void PrintTo(const Sent& sent, std::ostream* out) {
    *out << sent.verb << " " << sent.target << " " << sent.body.value_or("(no body)") << " "
         << sent.lockId.value_or("(no lock id)");
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
    /// What stands beside the record or in its place.
    std::optional<std::string> lockId = std::nullopt;
    std::int64_t deviceId = 0;
    /// The service's answer, as the response record writes it.
    std::string answer = "{}";
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

/// Waits for the answer of a call that `begin` begins with the callback it is given.
template <class Response>
CallOutcome awaitAnswer(const std::function<void(NetworkCallback<Response>)>& begin) {
    CallOutcome outcome;
    test_support::Event arrived;
    std::atomic<bool> returned{false};
    const auto caller = std::this_thread::get_id();
    begin([&](const NetworkResult<Response>& result) {
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

// What a row gives to a parameter of an operation, by the parameter's type.

template <class Parameter>
struct ArgumentOf;
template <Record Bean>
struct ArgumentOf<std::optional<Bean>> {
    static std::optional<Bean> in(const OperationRow& row) {
        if (!row.record) return std::nullopt;
        auto text = *row.record;
        auto bean = emptyRecord<Bean>();
        const auto error = decode(text, bean, DecodingMode::overlay);
        EXPECT_FALSE(error) << error->description();
        return bean;
    }
};
template <>
struct ArgumentOf<std::optional<std::string>> {
    static std::optional<std::string> in(const OperationRow& row) { return row.lockId; }
};
template <>
struct ArgumentOf<std::int64_t> {
    static std::int64_t in(const OperationRow& row) { return row.deviceId; }
};

template <class Interface, class Response>
CallOutcome callMember(Interface& service, void (Interface::*operation)(NetworkCallback<Response>),
                       const OperationRow&) {
    return awaitAnswer<Response>([&](auto callback) { (service.*operation)(std::move(callback)); });
}
template <class Interface, class First, class Response>
CallOutcome callMember(Interface& service, void (Interface::*operation)(First, NetworkCallback<Response>),
                       const OperationRow& row) {
    return awaitAnswer<Response>(
        [&](auto callback) { (service.*operation)(ArgumentOf<First>::in(row), std::move(callback)); });
}
template <class Interface, class First, class Second, class Response>
CallOutcome callMember(Interface& service,
                       void (Interface::*operation)(First, Second, NetworkCallback<Response>),
                       const OperationRow& row) {
    return awaitAnswer<Response>([&](auto callback) {
        (service.*operation)(ArgumentOf<First>::in(row), ArgumentOf<Second>::in(row), std::move(callback));
    });
}

/// Makes the row's call.
template <class Interface>
CallOutcome callRow(Interface& service, const OperationRow& row) {
    std::optional<CallOutcome> outcome;
    Interface::operations([&](std::string_view each, auto operation) {
        if (each == row.operation) outcome = callMember(service, operation, row);
    });
    EXPECT_TRUE(outcome) << "no operation " << row.operation;
    return outcome.value_or(CallOutcome{});
}

/// In the order of the interface.
template <class Interface>
std::vector<std::string> operationNames() {
    std::vector<std::string> names;
    Interface::operations([&](std::string_view name, auto) { names.emplace_back(name); });
    return names;
}

/// Calls the operation of this name.
template <class Interface>
CallOutcome callOperation(Interface& service, std::string name, std::optional<std::string> record) {
    return callRow(service, {std::move(name), "", std::move(record), std::nullopt});
}

/// A service that gives one answer to everything.
class ServiceTest : public testing::Test {
  protected:
    void SetUp() override { CloudInstance::shared().host = server_.url(); }
    void TearDown() override { EXPECT_TRUE(test_support::transfersEnd()); }

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
        if (!request.body.empty()) seen.body = request.body;
        seen.lockId = request.header("x-backup-lock-id");
        return seen;
    }

    template <class Interface>
    void expectRow(Interface& service, const OperationRow& row) {
        answer_ = row.answer;
        const auto outcome = callRow(service, row);
        EXPECT_EQ(sent(), row.sent);
        EXPECT_EQ(outcome.onCallersThread, !row.sent);
        if (row.sent) {
            EXPECT_EQ(std::get<std::string>(outcome.result), row.answer);
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
