#include "cli/host.h"

#include <unistd.h>

#include <chrono>
#include <thread>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/platform/curl_transport.h"
#include "baseapi/platform/platform.h"
#include "baseapi/platform/worker_pool.h"
#include "cli/command.h"
#include "cli/refreshing_transport.h"

namespace quillbox {
namespace {

constexpr auto longestSettling = std::chrono::seconds(10);
constexpr auto settlingStep = std::chrono::milliseconds(2);

std::filesystem::path readable(const std::string& bundle) {
    if (::access(bundle.c_str(), R_OK) != 0)
        throw UsageError{"the certificates " + bundle +
                         " cannot be read; give a file that can, or leave --cacert out"};
    return bundle;
}

}  // namespace

Host::Host(const SessionOptions& options, Parts parts, Command& command)
    : parts_(parts),
      stateFolder_(quillbox::stateFolder(options, processEnvironment)),
      log_(options.log ? std::make_shared<HostLog>(*options.log) : std::make_shared<HostLog>()),
      queue_(std::make_shared<CountedQueue>(baseapi::sharedPool())) {
    baseapi::Platform platform;
    platform.log = log_;
    platform.delegateQueue = queue_;
    platform.stateFolder = stateFolder_;
    platform.temporaryFolder = temporaryFolder(processEnvironment);
    platform.applicationIdentifier = "quillbox";
    if (options.cacert) platform.caBundle = readable(*options.cacert);
    command.equip({platform, *log_, parts.output});
    if (options.tokenFile) refreshBetweenRequests(platform);
    baseapi::usePlatform(std::move(platform));

    auto& session = baseapi::CloudInstance::shared();
    session.host = options.host;
    session.contentId = options.contentId;
    if (options.token) setToken(*options.token);
    if (options.tokenFile)
        tokenFile_ = std::make_unique<TokenFile>(*options.tokenFile,
                                                 [this](const std::string& token) { setToken(token); });
}

/// A run sends its next request when the answer to the last one has come.
void Host::refreshBetweenRequests(baseapi::Platform& platform) const {
    if (!platform.http)
        platform.http = std::make_shared<baseapi::CurlTransport>(
            platform.delegateQueue, baseapi::CurlTransport::Options{.caBundle = platform.caBundle});
    platform.http = std::make_shared<RefreshingTransport>(platform.http, [this] { refreshToken(); });
}

void Host::setToken(const std::string& token) {
    parts_.mask.add(token);
    baseapi::CloudInstance::shared().token = token;
}

void Host::waitFor(const std::function<bool()>& done) const {
    parts_.monitor.wait(done);
    if (parts_.monitor.interrupted()) throw Interrupted{};
}

void Host::settle(const std::weak_ptr<void>& run) {
    const auto& http = *baseapi::platform().http;
    if (!settlingEnd_) settlingEnd_ = std::chrono::steady_clock::now() + longestSettling;
    // A run queues its last request before it goes, and a request is under way before it leaves the queue.
    const auto settled = [&] { return run.expired() && queue_->idle() && http.running() == 0; };
    while (!settled() && std::chrono::steady_clock::now() < *settlingEnd_)
        std::this_thread::sleep_for(settlingStep);
}

void Host::requireCodeZero(const std::string& what, const baseapi::BaseResponse& response) {
    const auto code = response.code.value_or(0);
    if (code != 0) throw ServiceFailure{what, code, response.msg.value_or("")};
}

}  // namespace quillbox
