#include "baseapi/net/http_helper.h"

#include <string_view>
#include <utility>

#include "baseapi/core/log.h"
#include "baseapi/json/utf8.h"
#include "baseapi/net/network_error.h"
#include "baseapi/net/url_check.h"
#include "baseapi/platform/platform.h"

namespace baseapi::inline v1 {
namespace {

std::string joinURL(HTTPRequest& request) {
    std::string url;
    url.reserve(request.baseURL.size() + request.path.size());
    url.append(request.baseURL).append(request.path);
    if (!isURL(url)) throw NetworkError(NetworkError::invalidURL{});
    logLine("Request url = ", url);
    if (request.queryParameters) url = withQueryItems(url, *request.queryParameters);
    return url;
}

void addHeaders(DataRequest& data, HTTPRequest& request) {
    if (!request.headers) return;
    data.headers.reserve(request.headers->size());
    for (auto& [name, value] : *request.headers) {
        logLine("Request head = ", name, " : ", value);
        data.headers.push_back({name, std::move(value)});
    }
}

void logBody(const std::optional<std::string>& body) {
    if (!body) return logLine("Request Body: 空");
    logLine("Request Body: ", isValidUTF8(*body) ? std::string_view(*body) : "无法解码的二进制数据");
}

void logAnswer(const std::string& body) {
    if (isValidUTF8(body)) logLine("响应数据: ", body);
}

void logDecodingError(const DecodingError& error) {
    const std::string context = error.path.empty() ? error.detail : error.path + ": " + error.detail;
    switch (error.kind) {
        case DecodingError::Kind::keyNotFound:
            return logLine("键未找到: ", error.subject, " 上下文: ", context);
        case DecodingError::Kind::valueNotFound:
            return logLine("值未找到: ", error.subject, " 上下文: ", context);
        case DecodingError::Kind::typeMismatch:
            return logLine("类型不匹配: ", error.subject, " 上下文: ", context);
        case DecodingError::Kind::dataCorrupted:
            return logLine("数据损坏: ", context);
    }
    logLine("其他错误: ", error.description());
}

std::optional<BaseResponse> decodeErrorBody(std::string& body) {
    BaseResponse response;
    if (const auto error = decode(body, response)) {
        logDecodingError(*error);
        return std::nullopt;
    }
    return response;
}

}  // namespace

HttpHelper& HttpHelper::shared() {
    static auto* helper = new HttpHelper;
    return *helper;
}

HttpHelper::HttpHelper() : session_(*platform().http) {}

void HttpHelper::request(HTTPRequest httpRequest, std::shared_ptr<RequestCore> receiver) {
    DataRequest data;
    data.url = joinURL(httpRequest);
    data.verb = text(httpRequest.method);
    if (httpRequest.method != HTTPMethod::get) data.body = std::move(httpRequest.body);
    addHeaders(data, httpRequest);
    logBody(data.body);
    const auto task = session_.dataTask(std::move(data), [receiver = std::move(receiver)](DataAnswer answer) {
        complete(answer, *receiver);
    });
    logLine("request httpResponse session.data after");
    task->resume();
}

void HttpHelper::complete(DataAnswer& answer, RequestCore& receiver) {
    if (answer.error) {
        logLine("请求失败: ", answer.error->text);
        return receiver.deliverFailure(-1, "request error " + answer.error->text);
    }
    if (!answer.status) {
        logLine("响应不是 HTTPURLResponse 类型");
        return receiver.deliverFailure(-1, "response not HTTPURLResponse");
    }
    if (*answer.status >= 200 && *answer.status <= 299) return deliverRecord(answer.body, receiver);
    deliverErrorAnswer(*answer.status, answer.body, receiver);
}

void HttpHelper::deliverRecord(std::string& body, RequestCore& receiver) {
    if (const auto error = receiver.deliverDecoded(body)) {
        receiver.deliverFailure(-1, "str to bean error " + error->description());
    }
    logAnswer(body);
}

void HttpHelper::deliverErrorAnswer(int status, std::string& body, RequestCore& receiver) {
    logLine("服务器返回错误 status code: ", status);
    if (auto response = decodeErrorBody(body)) {
        return receiver.deliverFailure(response->code.value_or(-1),
                                       std::move(response->msg).value_or("未知错误"));
    }
    logLine("转换失败");
    logAnswer(body);
    receiver.deliverFailure(-1, "response status code = " + std::to_string(status));
}

}  // namespace baseapi::inline v1
