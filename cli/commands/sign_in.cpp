#include <memory>
#include <optional>

#include "baseapi/api/user/i_user.h"
#include "baseapi/core/cloud_instance.h"
#include "cli/commands/commands.h"
#include "cli/host.h"
#include "cli/options.h"
#include "cli/private_file.h"

namespace quillbox {
namespace {

class SignIn : public Command {
  public:
    std::string name() const override { return "sign-in"; }
    std::string description() const override {
        return "Exchange an authorisation code for a token and keep it in a file";
    }

    void addOptions(Options& options) override {
        options.requiredText("--code", code_, "CODE", "The authorisation code");
        options.text("--save", save_, "FILE",
                     "The file that gets the token; by default \"token\" in the state folder");
    }

    ExitStatus run(Host& host) override {
        const auto answer =
            host.ask("the sign-in", baseapi::CloudInstance::shared().getUserImpl(), &baseapi::IUser::getToken,
                     std::optional(baseapi::AuthCodeBean{.authCode = code_}));
        if (answer.accessToken.value_or("").empty())
            throw ServiceFailure{"the sign-in", -1, "the answer holds no token"};
        return keep(host, *answer.accessToken);
    }

  private:
    ExitStatus keep(const Host& host, const std::string& token) const {
        const auto file = save_ ? std::filesystem::path(*save_) : host.stateFolder() / "token";
        try {
            writePrivateFile(file, token + "\n");
        } catch (const std::filesystem::filesystem_error& error) {
            const auto why = "the token cannot be kept in " + file.string() + ": " + error.code().message();
            host.output().event(JsonLine("failure").add("code", -1).add("message", why));
            host.output().note("quillbox: " + why + "; name another file with --save");
            return ExitStatus::failure;
        }
        host.output().event(JsonLine("success").add("tokenFile", file.string()),
                            {"signed in; the token is in " + file.string(), Line::Mark::good});
        host.output().summary("use it with --token-file " + file.string() +
                              ", or QUILLBOX_TOKEN_FILE=" + file.string());
        return ExitStatus::success;
    }

    std::string code_;
    std::optional<std::string> save_;
};

}  // namespace

std::unique_ptr<Command> makeSignIn() {
    return std::make_unique<SignIn>();
}

}  // namespace quillbox
