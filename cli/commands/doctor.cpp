#include <memory>

#include "cli/commands/commands.h"
#include "cli/examination.h"
#include "cli/host.h"
#include "cli/options.h"

namespace quillbox {
namespace {

class Doctor : public Command {
  public:
    std::string name() const override { return "doctor"; }
    std::string description() const override {
        return "Look at what the work needs and say how to mend what is wrong";
    }

    void addOptions(Options&) override {}

    ExitStatus run(Host& host) override {
        bool healthy = true;
        examine(host, [&](const Finding& finding) {
            healthy = healthy && finding.state != Finding::State::problem;
            tell(host.output(), finding);
        });
        return healthy ? ExitStatus::success : ExitStatus::failure;
    }

  private:
    static const char* word(Finding::State state) {
        switch (state) {
            case Finding::State::fine:
                return "ok";
            case Finding::State::warning:
                return "warning";
            case Finding::State::problem:
                return "problem";
        }
        return "";
    }

    static void tell(Output& output, const Finding& finding) {
        JsonLine event("check");
        event.add("name", finding.name).add("state", word(finding.state)).add("detail", finding.detail);
        if (!finding.remedy.empty()) event.add("remedy", finding.remedy);
        const bool fine = finding.state == Finding::State::fine;
        auto text = finding.name + ": " + finding.detail;
        if (!fine) text += " (" + std::string(word(finding.state)) + "); " + finding.remedy;
        output.event(event, {text, fine ? Line::Mark::good : Line::Mark::bad});
    }
};

}  // namespace

std::unique_ptr<Command> makeDoctor() {
    return std::make_unique<Doctor>();
}

}  // namespace quillbox
