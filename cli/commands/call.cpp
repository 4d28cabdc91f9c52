#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <utility>

#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/operations.h"
#include "cli/options.h"

namespace quillbox {
namespace {

std::string readAll(std::istream& stream, const std::string& name) {
    std::ostringstream text;
    // An empty stream sets the fail bit, an error while reading the bad bit.
    text << stream.rdbuf();
    if (!stream || text.bad()) throw UsageError{name + " cannot be read; RECORD is JSON text, @FILE or -"};
    return std::move(text).str();
}

std::string readFile(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return readAll(stream, "the file " + name);
}

bool isNull(const std::string& text) {
    constexpr const char* blanks = " \t\r\n";
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string::npos) return false;
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1) == "null";
}

/// The JSON text of the record, absent where the record is.
std::optional<std::string> recordText(const std::optional<std::string>& argument) {
    if (!argument) return std::nullopt;
    std::string text = *argument == "-"             ? readAll(std::cin, "standard input")
                       : argument->starts_with('@') ? readFile(argument->substr(1))
                                                    : *argument;
    if (isNull(text)) return std::nullopt;
    return text;
}

class Call : public Command {
  public:
    std::string name() const override { return "call"; }
    std::string description() const override {
        return "Call one service operation of the library by its name";
    }

    void addOptions(Options& options) override {
        options.text("OPERATION", operation_, "", "Its name, such as filesList");
        options.text(
            "RECORD", record_, "",
            "The request record: JSON text, @FILE, or - for standard input; left out or null: absent");
        options.flag("--list", list_, "Name every operation and its records");
        options.text("--lock-id", lockId_, "TEXT", "The lock id, for an operation that takes one");
        options.integer("--device-id", deviceId_, "N", "The device id, for an operation that takes one");
        options.seconds("--wait", wait_, "SECONDS", "How long the answer is waited for; 90 without it");
    }

    ExitStatus run(Host& host) override {
        if (list_) return list(host.output());
        return call(host, operationNamed(named()));
    }

  private:
    ExitStatus list(Output& output) const {
        for (const auto& operation : operations()) {
            JsonLine line;
            line.add("interface", operation.interface)
                .add("operation", operation.name)
                .add("request", operation.request)
                .add("response", operation.response);
            std::string text = std::string(operation.interface) + "." + std::string(operation.name) + "(" +
                               std::string(operation.request.value_or("")) + ") -> " +
                               std::string(operation.response);
            output.event(line, {text});
        }
        return ExitStatus::success;
    }

    const std::string& named() const {
        if (!operation_)
            throw UsageError{"call needs the name of an operation; quillbox call --list names them all"};
        return *operation_;
    }

    ExitStatus call(Host& host, const Operation& operation) const {
        const std::string name(operation.name);
        OperationArguments arguments{recordText(record_), lockId_, deviceId_};

        host.interrupt().setWork({[] {}, [name] { return "the answer to " + name; }});
        // The record may have been read from standard input for a while.
        if (host.monitor().interrupted()) throw Interrupted{};
        const auto result = std::make_shared<std::optional<OperationResult>>();
        const auto limit = Monitor::after(wait_);
        operation.call(std::move(arguments), [result, &monitor = host.monitor()](OperationResult answer) {
            monitor.change([&] { result->emplace(std::move(answer)); });
        });
        if (!host.monitor().wait([&] { return result->has_value(); }, limit)) {
            if (host.monitor().interrupted()) throw Interrupted{};
            throw NoAnswer{name};
        }
        return tell(host.output(), name, **result);
    }

    static ExitStatus tell(Output& output, const std::string& name, const OperationResult& result) {
        if (const auto* text = std::get_if<std::string>(&result)) {
            const JsonLine::Json record{*text};
            output.record(JsonLine("success").add("record", record), record);
            return ExitStatus::success;
        }
        const auto& failure = std::get<baseapi::NetworkFailure>(result);
        JsonLine event("failure");
        event.add("code", failure.code).add("message", failure.message);
        output.event(event,
                     {name + ": " + std::to_string(failure.code) + " " + failure.message, Line::Mark::bad});
        return ExitStatus::failure;
    }

    std::optional<std::string> operation_;
    std::optional<std::string> record_;
    std::optional<std::string> lockId_;
    std::optional<std::int64_t> deviceId_;
    double wait_ = 90;
    bool list_ = false;
};

}  // namespace

std::unique_ptr<Command> makeCall() {
    return std::make_unique<Call>();
}

}  // namespace quillbox
