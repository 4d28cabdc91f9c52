#include <sys/signalfd.h>

#include <csignal>
#include <fstream>
#include <iostream>
#include <memory>

#include "quillboxd/companion.h"
#include "quillboxd/error.h"
#include "quillboxd/options.h"
#include "quillboxd/server.h"
#include "quillboxd/service.h"

namespace quillboxd {
namespace {

/// Becomes readable at SIGTERM and SIGINT, which no longer end the process by themselves, and at the end of a
/// child process.
UniqueFd stopSignals() {
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGCHLD);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return UniqueFd(signalfd(-1, &signals, SFD_CLOEXEC));
}

/// Whoever sees the file sees the whole number.
void writePortFile(const std::filesystem::path& file, std::uint16_t port) {
    auto unfinished = file;
    unfinished += ".new";
    std::ofstream(unfinished) << port << '\n';
    std::error_code error;
    std::filesystem::rename(unfinished, file, error);
    if (error) throw StartError("the port file " + file.string() + " cannot be written: " + error.message());
}

std::unique_ptr<Service> openService(const Options& options) {
    try {
        return std::make_unique<Service>(options.data, options.quota);
    } catch (const StartError&) {
        throw;
    } catch (const std::exception& error) {
        throw StartError("the data folder " + options.data.string() + " cannot be used: " + error.what());
    }
}

/// Serves until it is asked to stop or the command has ended; gives the exit status.
int serve(Server& server, const Options& options, const std::string& address, int stop) {
    if (options.command.empty()) {
        std::cout << "quillboxd listens on " << address << std::endl;
        server.run(stop);
        return 0;
    }
    Companion companion(options.command, address);
    server.run(stop);
    return companion.finish();
}

int run(const Options& options) {
    const auto stop = stopSignals();
    std::unique_ptr<TlsContext> tls;
    if (!options.certificate.empty()) tls = std::make_unique<TlsContext>(options.certificate, options.key);
    const auto service = openService(options);
    Server server(*service, options.port, tls.get(), options.verbose);
    // Connections queue from the moment the port is bound, so the number may be told now.
    if (!options.portFile.empty()) writePortFile(options.portFile, server.port());
    const auto address = (tls ? "https" : "http") + ("://127.0.0.1:" + std::to_string(server.port()));
    return serve(server, options, address, stop.get());
}

}  // namespace
}  // namespace quillboxd

int main(int argc, char** argv) {
    int exitStatus = 0;
    const auto options = quillboxd::readOptions(argc, argv, exitStatus);
    if (!options) return exitStatus;
    try {
        return quillboxd::run(*options);
    } catch (const quillboxd::StartError& error) {
        std::cerr << "quillboxd: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "quillboxd: " << error.what() << '\n';
        return 1;
    }
}
