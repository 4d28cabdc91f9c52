#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "baseapi/core/cases.h"
#include "baseapi/core/task.h"
#include "baseapi/net/network_result.h"

namespace baseapi::inline v1 {

struct CreateDirectoryResponse;

/// What became of a cloud path.
struct CreatePathResult {
    struct onResult {
        /// Of the path's last folder; empty where it could not be made, and "root", which is no folder's id,
        /// for a path without a name in it.
        std::string id;
        /// 0 for success.
        std::int64_t code = 0;
        std::string message;

        bool operator==(const onResult&) const = default;
    };

    std::variant<onResult> value;

    /// Calls the function that takes the case at hand; one for each case must be given.
    template <class... Functions>
    decltype(auto) visit(Functions&&... functions) const {
        return std::visit(Cases{std::forward<Functions>(functions)...}, value);
    }
};

/// Receives the result once for each `submit`: inside it where no folder is to be made, otherwise on a thread
/// of the delegate queue. What it throws is logged and goes no further.
using CreatePathCallback = std::function<void(CreatePathResult)>;

/// Makes sure of a cloud path such as "/backup/102": makes its missing folders from the top down, takes the
/// ones that are there, one request for each name. To be made with `std::make_shared`; it lives as long as
/// its work goes on. Nothing is repeated and nothing is undone after a failure.
class CloudPathHelper : public std::enable_shared_from_this<CloudPathHelper> {
  public:
    /// An absent path is the root. `needHide` and `scene` go into each folder that is made.
    CloudPathHelper(std::optional<std::string> path, bool needHide, CreatePathCallback onCallback,
                    std::optional<std::string> scene);

    // To be set before `submit`.
    void path(std::optional<std::string> path) { path_ = std::move(path); }
    void needHide(bool needHide) { needHide_ = needHide; }
    void setOnCallback(CreatePathCallback onCallback) { onCallback_ = std::move(onCallback); }
    void scene(std::optional<std::string> scene) { scene_ = std::move(scene); }

    /// Starts the work and returns.
    void submit();

  private:
    static Detached walk(std::shared_ptr<CloudPathHelper> self, std::vector<std::string> names);
    void createDirectory(const std::string& name, const std::string& parent,
                         NetworkCallback<CreateDirectoryResponse> callback) const;
    void finish(std::string id, std::int64_t code, std::string message) const;

    std::optional<std::string> path_;
    bool needHide_;
    CreatePathCallback onCallback_;
    std::optional<std::string> scene_;
    std::int64_t timeStamp_;
};

/// Makes sure of a cloud path and blocks until it is known, 10 seconds at most: then the id is empty, the
/// code -1 and the message "timeout". Not for a thread of the delegate queue.
CreatePathResult::onResult fetchCloudPath(const std::string& path);

}  // namespace baseapi::inline v1
