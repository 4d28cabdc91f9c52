#include "cli/examination.h"

#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>
#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/backup_thread_pool_util.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/thread_pool_util.h"
#include "baseapi/platform/platform.h"
#include "baseapi/transfer/file_info_util.h"
#include "cli/host.h"
#include "cli/private_file.h"

namespace quillbox {
namespace {

using State = Finding::State;

Finding examineMimeTypes() {
    const std::string name = "MIME types";
    if (baseapi::FileInfoUtil::mimeType("png") == "image/png")
        return {name, State::fine, "the shared MIME database is there", {}};
    return {name, State::warning,
            "the shared MIME database is missing, so every file is uploaded without its type",
            "install the package shared-mime-info"};
}

Finding examineAddress(const std::optional<std::string>& host) {
    const std::string name = "host";
    const std::string remedy = "set --host or QUILLBOX_HOST to an address like https://cloud.example.org";
    if (!host) return {name, State::problem, "no host is set", remedy};
    if (!serverName(*host)) return {name, State::problem, *host + " is no address", remedy};
    if (host->ends_with('/'))
        return {name, State::problem, *host + " ends with a slash, to which every path would add one more",
                "leave the slash at the end out"};
    return {name, State::fine, *host, {}};
}

Finding examineName(const std::string& server) {
    const std::string name = "name";
    const addrinfo hints{.ai_flags = 0, .ai_family = AF_UNSPEC, .ai_socktype = SOCK_STREAM};
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(server.c_str(), nullptr, &hints, &found);
    if (error != 0)
        return {name, State::problem, server + " has no address: " + ::gai_strerror(error),
                "look at the spelling of the host, and at the network"};
    ::freeaddrinfo(found);
    return {name, State::fine, server + " is known", {}};
}

Finding examineToken(const std::optional<std::string>& token) {
    const std::string name = "token";
    const std::string remedy = "sign in with quillbox sign-in --code CODE, then use --token-file";
    if (!token) return {name, State::problem, "no token is set", remedy};
    if (token->empty()) return {name, State::problem, "the token is empty", remedy};
    return {name, State::fine, "a token is set", {}};
}

/// One small request that every signed-in user may send; what came in place of its success.
std::optional<ServiceFailure> askFirstQuestion(const Host& host) try {
    host.ask("a first question", baseapi::CloudInstance::shared().getFileImpl(),
             &baseapi::IFile::getAccessFiles, std::optional<baseapi::GetAccessFilesBean>());
    return std::nullopt;
} catch (const ServiceFailure& failure) {
    return failure;
}

/// Why no answer came, absent where one did.
std::optional<std::string> transportError(const std::optional<ServiceFailure>& failure) {
    constexpr std::string_view prefix = "request error ";
    if (!failure || failure->code != -1 || !failure->message.starts_with(prefix)) return std::nullopt;
    return failure->message.substr(prefix.size());
}

bool concernsTls(const std::string& error) {
    return error.find("certificate") != std::string::npos || error.find("SSL") != std::string::npos ||
           error.find("TLS") != std::string::npos;
}

Finding examineAnswer(const std::optional<ServiceFailure>& failure) {
    const std::string name = "answer";
    if (!failure) return {name, State::fine, "the service answers and accepts the token", {}};
    if (const auto error = transportError(failure))
        return {
            name, State::problem, "no answer: " + *error,
            concernsTls(*error) ? "mend TLS first" : "look at host and port, and whether the service runs"};
    return {name, State::problem,
            "the service refuses: " + (failure->code == -1 ? "" : std::to_string(failure->code) + " ") +
                failure->message,
            "sign in anew with quillbox sign-in --code CODE, and see that the host is the service's"};
}

}  // namespace

Finding examineProcessors(int partsAtOnce, int filesAtOnce) {
    const auto detail = std::to_string(partsAtOnce) + " part" + (partsAtOnce == 1 ? "" : "s") +
                        " of an upload and " + std::to_string(filesAtOnce) + " file" +
                        (filesAtOnce == 1 ? "" : "s") + " of a backup at once";
    if (partsAtOnce > 0 && filesAtOnce > 0) return {"processors", State::fine, detail, {}};
    return {"processors", State::warning, detail + ": a file with content is never sent from here",
            "the work needs two active processors at least"};
}

Finding examineFolder(const std::string& name, const std::filesystem::path& folder) try {
    const auto probe = folder / (".quillbox-doctor-" + std::to_string(::getpid()));
    writePrivateFile(probe, "");
    std::filesystem::remove(probe);
    return {name, State::fine, folder.string() + " can be written", {}};
} catch (const std::filesystem::filesystem_error& error) {
    return {name, State::problem, folder.string() + " cannot be written: " + error.code().message(),
            name == "state" ? "name another folder with --state" : "name another folder in TMPDIR"};
}

Finding examineClock(std::time_t now) {
    std::tm calendar{};
    ::gmtime_r(&now, &calendar);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &calendar);
    const int year = calendar.tm_year + 1900;
    if (year >= 2025 && year < 2100) return {"clock", State::fine, text, {}};
    return {"clock", State::problem,
            std::string(text) + " cannot be the time, and certificates will not be valid",
            "set the clock, or have it set by the network"};
}

Finding examineTls(const std::string& address, const std::optional<std::string>& error) {
    const std::string name = "TLS";
    if (!address.starts_with("https://")) {
        const auto server = serverName(address).value_or("");
        if (server == "localhost" || server == "::1" || server.starts_with("127."))
            return {name, State::fine, "not needed: the host is this machine", {}};
        return {name, State::warning, "everybody on the way can read the token and the files",
                "name the host with https"};
    }
    if (!error) return {name, State::fine, "the host has shown a certificate that is trusted", {}};
    if (!concernsTls(*error))
        return {name, State::warning, "no answer, so nothing is known of it", "see below"};
    return {name, State::problem, *error,
            "name the service's certificates with --cacert, or look at the clock"};
}

std::optional<std::string> serverName(const std::string& address) {
    const auto scheme = address.find("://");
    if (scheme == std::string::npos) return std::nullopt;
    if (address.substr(0, scheme) != "http" && address.substr(0, scheme) != "https") return std::nullopt;
    auto server = address.substr(scheme + 3);
    server = server.substr(0, server.find_first_of("/?#"));
    if (const auto user = server.rfind('@'); user != std::string::npos) server.erase(0, user + 1);
    if (server.starts_with('[')) {
        const auto end = server.find(']');
        server = end == std::string::npos ? std::string() : server.substr(1, end - 1);
    } else {
        server = server.substr(0, server.find(':'));
    }
    if (server.empty()) return std::nullopt;
    return server;
}

void examine(const Host& host, const std::function<void(const Finding&)>& found) {
    const auto& session = baseapi::CloudInstance::shared();
    found(examineProcessors(baseapi::ThreadPoolUtil::queue().width(),
                            baseapi::BackupThreadPoolUtil::queue().width()));
    found(examineFolder("state", host.stateFolder()));
    found(examineFolder("temporary folder", baseapi::platform().temporaryFolder));
    found(examineMimeTypes());
    found(examineClock(std::time(nullptr)));

    const auto address = session.host.get();
    const auto addressFinding = examineAddress(address);
    found(addressFinding);
    found(examineToken(session.token.get()));
    if (addressFinding.state != State::fine) return;
    const auto nameFinding = examineName(*serverName(*address));
    found(nameFinding);
    if (nameFinding.state != State::fine) return;
    const auto failure = askFirstQuestion(host);
    found(examineTls(*address, transportError(failure)));
    found(examineAnswer(failure));
}

}  // namespace quillbox
