#pragma once

#include "baseapi/testkit/calls.h"
#include "baseapi/testkit/operation_double.h"

namespace baseapi::inline v1::testkit {

/// Its address stands for an operation.
template <auto operation>
inline char operationKey = 0;

/// Never called: its type is that of the operation's record.
template <class Interface, class Record, class Answered>
Record recordOf(void (Interface::*)(Record, Answered));
/// Never called: its type is that of the operation's callback.
template <class Interface, class Record, class Answered>
Answered callbackOf(void (Interface::*)(Record, Answered));

/// An interface of the library without the library behind it: a test queues the answers of each operation,
/// and looks at the calls afterwards. An answer is delivered on the caller's thread before the call returns,
/// unless the test holds the answers. Callable from any thread; must outlive the calls.
///
/// A call for which no answer is queued fails with code -1 and a message that names the operation. What a
/// callback throws goes to whoever called or delivers.
template <class Interface>
class InterfaceDouble : public Interface, public Calls {
  public:
    /// The answers and the calls of an operation: `files.at<&IFile::filesList>()`.
    template <auto operation>
    OperationDouble<decltype(operation)> at() {
        return OperationDouble<decltype(operation)>(log(&operationKey<operation>));
    }

  protected:
    /// What a call returns: what the test gave for it, or else what is usual.
    template <class Result>
    static Result given(const Kept& result, Result usual) {
        return result ? *static_cast<const Result*>(result.get()) : std::move(usual);
    }
};

}  // namespace baseapi::inline v1::testkit

// The override of an operation that takes a record and a callback, as nearly all do; and of a list of them.
#define BASEAPI_DOUBLE_OPERATION(Type, name)                                                            \
    void name(decltype(::baseapi::testkit::recordOf(&Type::name)) record,                               \
              decltype(::baseapi::testkit::callbackOf(&Type::name)) callback) override {                \
        called(&::baseapi::testkit::operationKey<&Type::name>, #name, ::baseapi::testkit::keep(record), \
               ::baseapi::testkit::handlersIn(callback));                                               \
    }
#define BASEAPI_DOUBLE_OPERATIONS(Type, ...) \
    BASEAPI_FOR_EACH(BASEAPI_DOUBLE_OPERATION, Type __VA_OPT__(, ) __VA_ARGS__)
