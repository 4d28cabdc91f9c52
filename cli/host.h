#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "baseapi/net/base_response.h"
#include "baseapi/net/network_result.h"
#include "cli/counted_queue.h"
#include "cli/host_log.h"
#include "cli/interrupt.h"
#include "cli/monitor.h"
#include "cli/output.h"
#include "cli/problems.h"
#include "cli/session_options.h"
#include "cli/token_file.h"
#include "cli/token_mask.h"

namespace baseapi::inline v1 {
struct Platform;
}

namespace quillbox {

class Command;

/// What a command works with: the library, set up as the session options say, and the ways to tell and to
/// wait. One for each process.
class Host {
  public:
    struct Parts {
        Output& output;
        Monitor& monitor;
        Interrupt& interrupt;
        TokenMask& mask;
    };

    /// `command` may put parts of its own in place. Throws `UsageError` where the options cannot be used.
    Host(const SessionOptions& options, Parts parts, Command& command);

    Output& output() const { return parts_.output; }
    Monitor& monitor() const { return parts_.monitor; }
    Interrupt& interrupt() const { return parts_.interrupt; }
    UploadCause& uploadCause() const { return log_->uploadCause(); }
    const std::filesystem::path& stateFolder() const { return stateFolder_; }

    /// To be called before a request goes out: a token file that has changed counts for it.
    void refreshToken() const {
        if (tokenFile_) tokenFile_->look();
    }

    /// Asks the service and waits for its answer; `what` names that, such as "making the folder". Throws
    /// `ServiceFailure` for a failure and for an answer whose code is not 0, and `Interrupted`.
    template <class Service, class Bean, class Response>
    Response ask(const std::string& what, Service& service,
                 void (Service::*operation)(std::optional<Bean>, baseapi::NetworkCallback<Response>),
                 std::optional<Bean> bean) const {
        auto response = askForAny(what, service, operation, std::move(bean));
        requireCodeZero(what, response);
        return response;
    }

    /// The same for an operation that takes no record.
    template <class Service, class Response>
    Response ask(const std::string& what, Service& service,
                 void (Service::*operation)(baseapi::NetworkCallback<Response>)) const {
        auto response = answerTo<Response>(what, [&](baseapi::NetworkCallback<Response> callback) {
            (service.*operation)(std::move(callback));
        });
        requireCodeZero(what, response);
        return response;
    }

    /// The same, for an answer whose code the caller reads itself.
    template <class Service, class Bean, class Response>
    Response askForAny(const std::string& what, Service& service,
                       void (Service::*operation)(std::optional<Bean>, baseapi::NetworkCallback<Response>),
                       std::optional<Bean> bean) const {
        return answerTo<Response>(what, [&](baseapi::NetworkCallback<Response> callback) {
            (service.*operation)(std::move(bean), std::move(callback));
        });
    }

    /// Throws `Interrupted` where a Ctrl-C came, once `done` or when the patience is over.
    void waitFor(const std::function<bool()>& done) const;

    /// Waits until the library has let go of `run` and no request is under way, but not for long; what one
    /// call has waited, the next one does not wait again.
    void settle(const std::weak_ptr<void>& run = {});

  private:
    /// The answer of the call that `begin` begins.
    template <class Response, class Begin>
    Response answerTo(const std::string& what, Begin&& begin) const {
        using Result = baseapi::NetworkResult<Response>;
        if (parts_.monitor.interrupted()) throw Interrupted{};
        const auto answer = std::make_shared<std::optional<Result>>();
        refreshToken();
        parts_.interrupt.setWork({[] {}, [what] { return "the answer to " + what; }});
        begin([answer, &monitor = parts_.monitor](Result result) {
            monitor.change([&] { answer->emplace(std::move(result)); });
        });
        waitFor([&] { return answer->has_value(); });
        return std::move(*answer)->visit([](typename Result::success& it) { return std::move(it.record); },
                                         [&](const typename Result::failure& it) -> Response {
                                             throw ServiceFailure{what, it.code, it.message};
                                         });
    }
    static void requireCodeZero(const std::string& what, const baseapi::BaseResponse& response);
    void setToken(const std::string& token);
    void refreshBetweenRequests(baseapi::Platform& platform) const;

    Parts parts_;
    std::filesystem::path stateFolder_;
    std::shared_ptr<HostLog> log_;
    std::shared_ptr<CountedQueue> queue_;
    std::unique_ptr<TokenFile> tokenFile_;
    std::optional<std::chrono::steady_clock::time_point> settlingEnd_;
};

}  // namespace quillbox
