#include "cli/run.h"

#include <signal.h>

#include <clocale>
#include <exception>
#include <memory>
#include <string>

#include "cli/command.h"
#include "cli/command_line.h"
#include "cli/host.h"
#include "cli/upload_cause.h"

namespace quillbox {
namespace {

/// What the process has one of. It is never taken down: threads of the library run until the process ends.
struct Process {
    CommandLine line;
    Monitor monitor;
    Interrupt interrupt{monitor};
    TokenMask mask;
    std::unique_ptr<Output> output;
    std::unique_ptr<Host> host;
};

ExitStatus runCommand(Process& process) {
    const auto& line = process.line;
    const auto options = withEnvironment(line.options(), processEnvironment);
    process.host = std::make_unique<Host>(
        options, Host::Parts{*process.output, process.monitor, process.interrupt, process.mask},
        line.command());
    const auto status = line.command().run(*process.host);
    process.host->settle();
    return status;
}

void tellFailure(Output& output, const ServiceFailure& failure) {
    JsonLine event("failure");
    event.add("code", failure.code).add("message", failure.message);
    output.event(event);
    output.note("quillbox: " + failureText(failure.what, failure.code, failure.message));
}

/// The one place that turns what ends a command into an exit status.
ExitStatus statusOf(Process& process, const std::function<ExitStatus()>& work) try {
    const auto status = work();
    if (const auto error = process.output->writeError(); !error.empty()) {
        process.output->note("quillbox: standard output cannot be written: " + error);
        return ExitStatus::failure;
    }
    return status;
} catch (const UsageError& error) {
    process.output->note("quillbox: " + error.text);
    return ExitStatus::unusable;
} catch (const ServiceFailure& failure) {
    tellFailure(*process.output, failure);
    if (process.host) process.host->settle();
    return ExitStatus::failure;
} catch (const NoAnswer& error) {
    process.output->note("quillbox: no answer to " + error.what + " in time");
    return ExitStatus::noAnswer;
} catch (const Interrupted&) {
    if (process.host) process.host->settle();
    return ExitStatus::interrupted;
} catch (const std::exception& error) {
    process.output->note(std::string("quillbox: ") + error.what());
    return ExitStatus::failure;
}

}  // namespace

int run(int argc, char** argv) {
    // The width of characters is told by the locale; the user's language plays no part.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    ::signal(SIGPIPE, SIG_IGN);
    auto& process = *new Process;
    process.output = makeOutput(false, process.mask);
    const auto status = statusOf(process, [&] {
        if (!process.line.parse(argc, argv)) return ExitStatus::success;
        process.output = makeOutput(process.line.options().json, process.mask);
        process.interrupt.setTell(
            [&](const std::string& text) { process.output->note("quillbox: " + text); });
        return runCommand(process);
    });
    return static_cast<int>(process.interrupt.happened() ? ExitStatus::interrupted : status);
}

}  // namespace quillbox
