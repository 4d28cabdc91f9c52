#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "cli/job_progress.h"
#include "cli/json_line.h"
#include "cli/token_mask.h"

namespace quillbox {

/// A line for people and the sign before it.
struct Line {
    enum class Mark { none, good, bad };

    std::string text;
    Mark mark = Mark::none;
};

/// All that the program prints goes through here: events to standard output, as text for people or as JSON
/// for programs, and words beside them to standard error. Nothing printed holds a token. Callable from any
/// thread; lines stay whole.
class Output {
  public:
    virtual ~Output() = default;

    /// One event: the object for programs, the line for people.
    virtual void event(const JsonLine& object, const Line& line) = 0;
    /// An event that holds a record as JSON text, which people get over several lines.
    virtual void record(const JsonLine& object, const JsonLine::Json& json) = 0;
    /// An event that people are not told of in words.
    virtual void event(const JsonLine& object) = 0;
    /// The state of long work; shown where standard output is a terminal, and at intervals that an eye can
    /// follow.
    virtual void progress(JobProgress& job) = 0;
    /// The long work is over.
    virtual void endProgress() = 0;
    /// Words that are good to know, for people only; to standard error.
    virtual void summary(const std::string& text) = 0;
    /// A warning or the cause of a failure, in one line on standard error.
    virtual void note(const std::string& text) = 0;

    /// Standard output is a terminal and what it gets is for people.
    virtual bool isTerminal() const = 0;
    /// Standard output is gone because its reader is: nothing that would be printed is of use.
    virtual bool unread() const = 0;
    /// Why standard output could not be written, empty where it could.
    virtual std::string writeError() const = 0;
};

/// `json`: output for programs. The mask must outlive the object.
std::unique_ptr<Output> makeOutput(bool json, const TokenMask& mask);

}  // namespace quillbox
