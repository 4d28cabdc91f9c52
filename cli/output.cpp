#include "cli/output.h"

#include <mutex>
#include <sstream>
#include <utility>

#include "cli/progress_bar.h"
#include "cli/stream.h"
#include "cli/text.h"

namespace quillbox {
namespace {

class StreamOutput : public Output {
  public:
    explicit StreamOutput(const TokenMask& mask) : mask_(mask) {}

    void note(const std::string& text) override { tellBeside(text); }
    bool unread() const override { return out_.unread(); }
    std::string writeError() const override { return out_.error(); }

  protected:
    virtual void clearBar() {}

    std::string masked(std::string text) const { return mask_(std::move(text)); }
    void tellBeside(const std::string& text) {
        std::lock_guard lock(mutex_);
        clearBar();
        error_.write(harmless(masked(text)) + '\n');
    }

    std::mutex mutex_;
    Stream out_{1};
    Stream error_{2};

  private:
    const TokenMask& mask_;
};

class JsonOutput : public StreamOutput {
  public:
    using StreamOutput::StreamOutput;

    void event(const JsonLine& object, const Line&) override { event(object); }
    void record(const JsonLine& object, const JsonLine::Json&) override { event(object); }
    void event(const JsonLine& object) override {
        const auto line = object.text([this](std::string text) { return masked(std::move(text)); }) + '\n';
        std::lock_guard lock(mutex_);
        out_.write(line);
    }
    bool isTerminal() const override { return false; }
    void progress(JobProgress&) override {}
    void endProgress() override {}
    void summary(const std::string&) override {}
};

class TextOutput : public StreamOutput {
  public:
    using StreamOutput::StreamOutput;

    void event(const JsonLine&, const Line& line) override {
        print(sign(line.mark) + harmless(masked(line.text)) + '\n');
    }
    void record(const JsonLine&, const JsonLine::Json& json) override {
        const auto text = indented(quillbox::masked(json.text, [this](auto it) { return masked(it); }));
        std::istringstream lines(text);
        std::string harmlessLines;
        for (std::string line; std::getline(lines, line);) harmlessLines += harmless(line) + '\n';
        print(harmlessLines);
    }
    void event(const JsonLine&) override {}

    bool isTerminal() const override { return out_.isTerminal(); }
    void progress(JobProgress& job) override {
        if (!out_.isTerminal()) return;
        std::lock_guard lock(mutex_);
        if (const auto bar = bar_.draw(job, out_.width()))
            out_.write(std::string("\r").append(masked(*bar)).append("\x1b[K"));
    }
    void endProgress() override {
        std::lock_guard lock(mutex_);
        clearBar();
    }
    void summary(const std::string& text) override { tellBeside(text); }

  private:
    void print(const std::string& lines) {
        std::lock_guard lock(mutex_);
        clearBar();
        out_.write(lines);
    }
    void clearBar() override {
        if (bar_.forget()) out_.write("\r\x1b[K");
    }
    std::string sign(Line::Mark mark) const {
        if (mark == Line::Mark::none) return {};
        const bool good = mark == Line::Mark::good;
        if (!out_.isTerminal()) return good ? "ok    " : "failed  ";
        if (!out_.hasColours()) return good ? "✓ " : "✗ ";
        return good ? "\x1b[32m✓\x1b[0m " : "\x1b[31m✗\x1b[0m ";
    }

    ProgressBar bar_;
};

}  // namespace

std::unique_ptr<Output> makeOutput(bool json, const TokenMask& mask) {
    if (json) return std::make_unique<JsonOutput>(mask);
    return std::make_unique<TextOutput>(mask);
}

}  // namespace quillbox
