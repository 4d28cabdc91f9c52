#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "baseapi/json/record.h"
#include "baseapi/net/network_result.h"
#include "baseapi/testkit/call_log.h"

namespace baseapi::inline v1::testkit {

/// An argument as it is recorded: a copy of its own; nothing of a callback.
template <class Argument>
using Recorded = std::conditional_t<
    Callback<Argument>, std::tuple<>,
    std::tuple<std::conditional_t<std::is_same_v<Argument, std::string_view>, std::string, Argument>>>;

/// The arguments of a call as one value: a tuple of them.
template <class... Arguments>
struct CallOf {
    /// The value's type.
    using type = std::tuple<Arguments...>;
};
/// Where there is one alone, it is the value.
template <class Argument>
struct CallOf<Argument> {
    /// The value's type.
    using type = Argument;
};
/// The same for the arguments that a tuple has.
template <class Tuple>
struct CallOfTuple;
/// As `CallOf`.
template <class... Arguments>
struct CallOfTuple<std::tuple<Arguments...>> : CallOf<Arguments...> {};

/// The response record of an operation of a service.
template <class... Arguments>
struct ResponseOf {};
/// What a callback takes it in.
template <class Response>
struct ResponseOf<NetworkCallback<Response>> {
    /// The record's type.
    using type = Response;
};
/// The callback is the last parameter.
template <class First, class... Rest>
requires(sizeof...(Rest) > 0) struct ResponseOf<First, Rest...> : ResponseOf<Rest...> {
};

/// By the pointer to the operation, as below.
template <class Member>
class OperationDouble;

/// One operation of a double: the answers that a test queues for it, and the calls that came. Callable from
/// any thread, as long as the double lives.
template <class Interface, class Return, class... Parameters>
class OperationDouble<Return (Interface::*)(Parameters...)> {
  public:
    /// What is recorded of a call: the one argument that is no callback, such as the optional record of a
    /// request; a tuple where there are more of them, or none.
    using Call = typename CallOfTuple<decltype(std::tuple_cat(
        std::declval<Recorded<std::decay_t<Parameters>>>()...))>::type;
    /// The response record; only an operation of a service has one.
    using Response = ResponseOf<std::decay_t<Parameters>...>;

    explicit OperationDouble(std::shared_ptr<CallLog> log) : log_(std::move(log)) {}

    /// Queues a success with the record; without one an empty record.
    template <class Its = Response, class Record = typename Its::type>
    void succeed(Record record = emptyRecord<Record>()) {
        report(NetworkResult<Record>{typename NetworkResult<Record>::success{std::move(record)}});
    }

    /// Queues a failure: the service's code and message, or -1 and a message of the library's own.
    template <class Its = Response, class Record = typename Its::type>
    void fail(std::int64_t code, std::string message) {
        report(NetworkResult<Record>{NetworkFailure{code, std::move(message)}});
    }

    /// Queues an answer of these events, one after the other: the progress and the end of a transfer, or of
    /// a run.
    template <class... Events>
    void report(Events... events) {
        static_assert((isTaken<Events>() && ...), "no callback of this operation takes such an event");
        log_->enqueue({nullptr, {eventOf(std::move(events))...}});
    }

    /// Queues what the operation returns, and no event: false for a run that is refused.
    template <class Result = Return>
    void give(Result result) {
        log_->enqueue({keep<Return>(std::move(result)), {}});
    }

    /// The calls so far, in their order.
    std::vector<Call> calls() const {
        std::vector<Call> all;
        for (const auto& call : log_->calls()) all.push_back(*static_cast<const Call*>(call.get()));
        return all;
    }

    /// The answers that no call has taken yet.
    std::size_t queued() const { return log_->queued(); }

    /// How often a handle that this operation returned was cancelled.
    std::size_t cancels() const { return log_->cancels(); }

  private:
    template <class Its>
    static constexpr bool isTaken() {
        return (takes<std::decay_t<Parameters>, Its> || ...);
    }

    template <class Its>
    static Event eventOf(Its event) {
        return {&eventKey<Its>, [event = std::move(event)](const void* function) {
                    (*static_cast<const std::function<void(Its)>*>(function))(event);
                }};
    }

    std::shared_ptr<CallLog> log_;
};

}  // namespace baseapi::inline v1::testkit
