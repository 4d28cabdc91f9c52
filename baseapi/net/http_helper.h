#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "baseapi/core/state_queue.h"
#include "baseapi/net/base_req.h"
#include "baseapi/net/http_request.h"
#include "baseapi/net/progress_listener.h"
#include "baseapi/platform/http_transport.h"

namespace baseapi::inline v1 {

struct UploadBean;

/// The one object that all requests and all parts are sent through. One attempt for each; nothing is
/// repeated.
class HttpHelper {
  public:
    /// Made on first use, never destroyed.
    static HttpHelper& shared();

    HttpHelper(const HttpHelper&) = delete;
    HttpHelper& operator=(const HttpHelper&) = delete;

    /// Sends the request and returns; `receiver` gets the answer on a thread of the delegate queue. Throws
    /// `NetworkError`, with nothing sent and `receiver` untouched, where the address is no URL.
    void request(HTTPRequest httpRequest, std::shared_ptr<RequestCore> receiver);

    /// Sends one part to its signed address. `continuation` hears of the end on a thread of the delegate
    /// queue, or before this returns where the address is no URL. The answer's status is not read: what ends
    /// without a transport error gives code 0 "success", everything else code -1 and the reason.
    /// `progressListener` may be absent; it is called on threads of the delegate queue, under `hash`.
    void putUploadFile(const std::string& url, ByteBuffer data, const std::string& hash,
                       std::shared_ptr<ProgressListener> progressListener,
                       std::function<void(BaseResponse)> continuation);

  private:
    HttpHelper();

    static void complete(DataAnswer& answer, RequestCore& receiver);
    static void deliverRecord(std::string& body, RequestCore& receiver);
    static void deliverErrorAnswer(int status, std::string& body, RequestCore& receiver);

    void registerUpload(std::int64_t identifier, std::shared_ptr<UploadBean> bean);
    std::shared_ptr<UploadBean> findUpload(std::int64_t identifier) const;
    /// False where it is not there any more.
    bool removeUpload(std::int64_t identifier);
    void didSendBodyData(std::int64_t identifier, std::int64_t sent, std::int64_t expected) const;
    void didComplete(std::int64_t identifier, const std::optional<TransportError>& error);

    StateQueue uploadTasksQueue_{"com.quillbox.uploadTasksQueue"};
    std::map<std::int64_t, std::shared_ptr<UploadBean>> uploadTasks_;
    HttpTransport& session_;
};

}  // namespace baseapi::inline v1
