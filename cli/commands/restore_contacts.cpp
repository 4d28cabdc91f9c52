#include <memory>
#include <optional>
#include <string>

#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/platform/platform.h"
#include "cli/commands/commands.h"
#include "cli/followed_run.h"
#include "cli/host.h"
#include "cli/lent_address_book.h"
#include "cli/options.h"
#include "cli/quantity.h"

namespace quillbox {
namespace {

using baseapi::ContactResult;

constexpr const char* restoreName = "the restore of the contacts";

class RestoreContacts : public Command {
  public:
    std::string name() const override { return "restore contacts"; }
    std::string description() const override { return "Bring the contacts of a backup into an address book"; }

    void addOptions(Options& options) override {
        options.requiredText("--record", record_, "ID", "The backup, by its id in quillbox records");
        options.requiredText("--address-book", folder_, "DIR", "A folder of .vcf files, one contact each");
        options.text("--hash", hash_, "TEXT", "A text that comes back with every event");
    }

    void equip(const Equipment& equipment) override {
        book_ = std::make_shared<LentAddressBook>(folder_, equipment.output);
        equipment.platform.addressBook = book_;
    }

    ExitStatus run(Host& host) override {
        const auto end = std::make_shared<std::optional<ContactResult>>();
        host.refreshToken();
        host.interrupt().setWork(
            {[] {}, [] { return std::string(restoreName) + ", which cannot be cancelled"; }});
        baseapi::CloudInstance::shared().getPhoneBackupImpl().restoreContact(
            hash_.value_or(""), record_, 0,
            [end, &output = host.output(), &monitor = host.monitor()](const ContactResult& result) {
                tell(output, result);
                if (std::holds_alternative<ContactResult::onProgress>(result.value)) return;
                monitor.change([&] { *end = result; });
            });
        if (!host.monitor().wait([&] { return end->has_value(); })) throw Interrupted{};
        const auto* failure = std::get_if<ContactResult::onFailure>(&(*end)->value);
        if (failure == nullptr) return tellSaved(host.output());
        auto text = backupFailureText(restoreName, failure->code, failure->message);
        if (const auto cause = host.uploadCause().cause()) text += ": " + *cause;
        host.output().note("quillbox: " + text);
        return ExitStatus::failure;
    }

  private:
    /// The library counts a restore as a success however many of the contacts were saved.
    ExitStatus tellSaved(Output& output) const {
        const auto [given, saved, removed, problem] = book_->tally();
        if (given == 0)
            output.note("quillbox: warning: no contact was restored, as the backup's file holds none");
        if (saved == given) return ExitStatus::success;
        auto text = std::to_string(given - saved) + " of " + countText(given, "contact") +
                    " could not be saved: " + problem;
        if (removed > 0) text += "; " + std::to_string(removed) + " that they replace were removed before";
        output.note("quillbox: " + text);
        return ExitStatus::failure;
    }

    static void tell(Output& output, const ContactResult& result) {
        result.visit(
            [&](const ContactResult::onProgress& it) {
                output.event(JsonLine("onProgress").add("hash", it.hash).add("percent", it.percent));
            },
            [&](const ContactResult::onSuccess& it) {
                output.event(ended("onSuccess", it),
                             {std::string(restoreName) + " is complete", Line::Mark::good});
            },
            [&](const ContactResult::onFailure& it) { output.event(ended("onFailure", it)); });
    }

    template <class End>
    static JsonLine ended(std::string_view event, const End& end) {
        JsonLine line(event);
        line.add("hash", end.hash).add("code", end.code).add("message", end.message);
        return line;
    }

    std::string record_;
    std::string folder_;
    std::optional<std::string> hash_;
    std::shared_ptr<LentAddressBook> book_;
};

}  // namespace

std::unique_ptr<Command> makeRestoreContacts() {
    return std::make_unique<RestoreContacts>();
}

}  // namespace quillbox
