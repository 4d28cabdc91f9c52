#include "quillboxd/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <string_view>
#include <vector>

namespace quillboxd {
namespace {

constexpr int unusable = 2;

/// Ends the command line of the service where that of the command begins.
constexpr std::string_view separator = "--";

std::string oneLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

std::nullopt_t refuse(const std::string& why, int& exitStatus) {
    std::cerr << "quillboxd: " << why << '\n';
    exitStatus = unusable;
    return std::nullopt;
}

}  // namespace

std::optional<Options> readOptions(int argc, const char* const* argv, int& exitStatus) {
    CLI::App app("A cloud drive service for development and tests on one machine.", "quillboxd");
    app.set_version_flag("--version", QUILLBOXD_VERSION);
    app.footer(
        "With \"-- COMMAND [ARGUMENT...]\" at the end it runs the command beside it, with its address in\n"
        "QUILLBOX_HOST, and ends when the command ends, with its exit status.");
    Options options;
    const auto* const* own = std::find(argv, argv + argc, separator);
    if (own != argv + argc) {
        options.command.assign(own + 1, argv + argc);
        if (options.command.empty()) return refuse("-- needs a command", exitStatus);
    }
    bool memory = false;
    std::vector<std::string> tls;
    auto* place = app.add_option_group("place");
    place->add_option("--data", options.data, "Folder that keeps everything; made where it is missing")
        ->type_name("DIR");
    place->add_flag("--memory", memory, "Keep everything in memory");
    place->require_option(1);
    app.add_option("--port", options.port, "Port on 127.0.0.1; 0 takes a free one")->type_name("N");
    app.add_option("--port-file", options.portFile,
                   "File that gets the port's number once the service answers")
        ->type_name("FILE");
    app.add_option("--tls", tls, "Serve https with this certificate and key (PEM)")
        ->expected(2)
        ->type_name("CERT KEY");
    app.add_option("--quota", options.quota, "Bytes that each account may store; 10 GiB without it")
        ->type_name("BYTES")
        ->check(CLI::NonNegativeNumber);
    app.add_flag("--verbose", options.verbose, "One line for each request on standard error");
    try {
        app.parse(static_cast<int>(own - argv), argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            exitStatus = app.exit(error);
        } else {
            return refuse(oneLine(error.what()) + "; see quillboxd --help", exitStatus);
        }
        return std::nullopt;
    }
    if (!tls.empty()) {
        options.certificate = tls[0];
        options.key = tls[1];
    }
    if (!memory && options.data.empty()) {
        return refuse("--data needs the name of a folder", exitStatus);
    }
    return options;
}

}  // namespace quillboxd
