#include "baseapi/net/base_req.h"

#include <exception>
#include <utility>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/log.h"
#include "baseapi/net/http_helper.h"
#include "baseapi/net/trace_id.h"
#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace {

const RequestCore::Headers& fixedHeaders() {
    static const auto& headers = *new RequestCore::Headers{
        {"Accept", "*/*"},
        {"Content-Type", "application/json; charset=utf-8"},
        {"User-Agent", "DSDK"},
        {"x-zq-agentname", "standard"},
    };
    return headers;
}

}  // namespace

int RequestCore::buildParams() {
    fatalStop("baseapi/BaseReq: Subclasses of BaseReq must implement buildParams()");
}

void RequestCore::callRequest() {
    const int result = buildParams();
    setFixedHeaders();
    if (result == refused) return deliverFailure(-1, "params build faild");
    platform().delegateQueue->post(
        [self = shared_from_this(), request = httpRequest()]() mutable { self->send(std::move(request)); });
}

void RequestCore::call(std::unique_ptr<RequestCore> request) {
    std::shared_ptr<RequestCore>(std::move(request))->callRequest();
}

void RequestCore::setAddress(std::string path, std::string query) {
    url = std::move(path);
    params = std::move(query);
}

void RequestCore::setHeader(const std::string& name, std::optional<std::string> value) {
    if (!heads) heads.emplace();
    if (value) {
        (*heads)[name] = *std::move(value);
    } else {
        heads->erase(name);
    }
}

std::optional<EncodingError> RequestCore::encodeBody(const RecordCodec& codec, const void* record) {
    return encode(codec, record, body.emplace());
}

void RequestCore::logRefusal(const EncodingError& error) {
    logLine("JSON encoding failed: ", error.description());
}

void RequestCore::setFixedHeaders() {
    // Of two headers of one name the fixed one stays.
    auto extra = std::exchange(heads, fixedHeaders());
    if (extra) heads->merge(*extra);
    heads->insert_or_assign("X-Traceid", makeTraceId());
    if (auto token = CloudInstance::shared().token.get())
        heads->insert_or_assign("Authorization", *std::move(token));
}

HTTPRequest RequestCore::httpRequest() {
    HTTPRequest request;
    request.baseURL = CloudInstance::shared().host.get().value_or("");
    request.path = std::move(url).value_or("");
    if (params && !params->empty()) request.path.append("?").append(*params);
    request.method = method;
    request.headers = std::move(heads);
    request.body = std::move(body);
    return request;
}

void RequestCore::send(HTTPRequest request) {
    try {
        HttpHelper::shared().request(std::move(request), shared_from_this());
    } catch (const std::exception& error) {
        const std::string text = std::string("callRequest error: ") + error.what();
        logLine(text);
        deliverFailure(-1, text);
    }
}

}  // namespace baseapi::inline v1
