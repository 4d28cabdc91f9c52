#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "baseapi/core/callback.h"
#include "baseapi/json/codec.h"
#include "baseapi/net/base_response.h"
#include "baseapi/net/http_method.h"
#include "baseapi/net/http_request.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

/// What all requests share, written without the response's type: headers, address, sending, and the words of
/// every failure. A request serves one call.
class RequestCore : public std::enable_shared_from_this<RequestCore> {
  public:
    using Headers = std::map<std::string, std::string>;

    RequestCore(const RequestCore&) = delete;
    RequestCore& operator=(const RequestCore&) = delete;
    virtual ~RequestCore() = default;

    /// Fills `url`, `params`, `body` and extra `heads` from the caller's record. 0, or -1 where the request
    /// cannot be built.
    virtual int buildParams();

    /// Starts the request and returns. The result comes through the callback alone, exactly once.
    void callRequest();
    /// The same for a request that nobody else holds; it lives until its callback has run.
    static void call(std::unique_ptr<RequestCore> request);

    std::optional<Headers> heads;
    const HTTPMethod method;
    /// The path on the service, starting with "/".
    std::optional<std::string> url;
    /// The query text without the leading "?".
    std::optional<std::string> params;
    std::optional<std::string> body;

  protected:
    static constexpr int built = 0;
    static constexpr int refused = -1;

    explicit RequestCore(HTTPMethod verb) : method(verb) {}

    /// Sets path and query; values go in as they are.
    void setAddress(std::string path, std::string query = "");
    /// Makes the record the body: `built`, or `refused` where it has no JSON form.
    template <Record R>
    int setBody(const R& record) {
        return encodeBody(codecOf<R>(), &record) ? refused : built;
    }
    /// Likewise; one log line says why a record has no JSON form.
    template <Record R>
    int setBodyOrLog(const R& record) {
        const auto error = encodeBody(codecOf<R>(), &record);
        if (error) logRefusal(*error);
        return error ? refused : built;
    }
    /// Puts an extra header in, or takes it out where the value is absent.
    void setHeader(const std::string& name, std::optional<std::string> value);

  private:
    friend class HttpHelper;

    std::optional<EncodingError> encodeBody(const RecordCodec& codec, const void* record);
    static void logRefusal(const EncodingError& error);
    void setFixedHeaders();
    HTTPRequest httpRequest();
    void send(HTTPRequest request);

    /// Decodes the answer's body and delivers the record, or says why there is none. The text stays as it is.
    virtual std::optional<DecodingError> deliverDecoded(std::string& answer) = 0;
    virtual void deliverFailure(std::int64_t code, std::string message) = 0;
};

/// The thin typed skin of a request whose answer is a `T`.
template <class T>
class BaseReq : public RequestCore {
  public:
    BaseReq(HTTPMethod verb, NetworkCallback<T>&& callback)
        : RequestCore(verb), onCallback(std::move(callback)) {}

    NetworkCallback<T> onCallback;

  private:
    std::optional<DecodingError> deliverDecoded(std::string& answer) override {
        NetworkResult<T> result{typename NetworkResult<T>::success{}};
        if (auto error = decode(answer, std::get<0>(result.value).record)) return error;
        deliver(std::move(result));
        return std::nullopt;
    }
    void deliverFailure(std::int64_t code, std::string message) override {
        deliver({NetworkFailure{code, std::move(message)}});
    }
    void deliver(NetworkResult<T>&& result) {
        invokeCallback(std::exchange(onCallback, nullptr), std::move(result));
    }
};

/// A request made from one record of the caller.
template <class Bean, class T>
class BeanReq : public BaseReq<T> {
  public:
    BeanReq(HTTPMethod verb, std::optional<Bean>&& record, NetworkCallback<T>&& callback)
        : BaseReq<T>(verb, std::move(callback)), bean(std::move(record)) {}

    std::optional<Bean> bean;
};

/// Makes the request object and starts it. It is held as what all requests share: a holder of each type of
/// its own would be code for each operation.
template <class Request, class... Arguments>
void start(Arguments&&... arguments) {
    RequestCore::call(std::make_unique<Request>(std::forward<Arguments>(arguments)...));
}

}  // namespace baseapi::inline v1
