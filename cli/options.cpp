#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "cli/arguments.h"

namespace quillbox {
namespace {

// The parser's own conversion takes an empty text for an absent value.
std::function<void(const std::string&)> storing(std::optional<std::string>& value) {
    return [&value](const std::string& given) { value = withoutGuard(given); };
}

std::string whyNoDuration(const std::string& text) {
    double seconds = 0;
    const bool valid = CLI::detail::lexical_cast(text, seconds) && seconds >= 0 && std::isfinite(seconds);
    return valid ? std::string()
                 : "a number of seconds that is not negative has to stand in place of " + text;
}

}  // namespace

CLI::Option& Options::decorated(CLI::Option& option, const std::string& kind) const {
    if (!group_.empty()) option.group(group_);
    option.type_name(kind);
    return option;
}

void Options::flag(const std::string& name, bool& value, const std::string& help) {
    auto* option = app_.add_flag(name, value, help);
    if (!group_.empty()) option->group(group_);
}

void Options::text(const std::string& name, std::optional<std::string>& value, const std::string& kind,
                   const std::string& help) {
    auto* option = app_.add_option_function<std::string>(name, storing(value), help);
    decorated(*option, kind).multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Options::requiredText(const std::string& name, std::string& value, const std::string& kind,
                           const std::string& help) {
    auto* option = app_.add_option_function<std::string>(
        name, [&value](const std::string& given) { value = withoutGuard(given); }, help);
    decorated(*option, kind).required()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Options::requiredTexts(const std::string& name, std::vector<std::string>& values,
                            const std::string& help) {
    auto* option = app_.add_option_function<std::vector<std::string>>(
        name,
        [&values](const std::vector<std::string>& given) {
            std::transform(given.begin(), given.end(), std::back_inserter(values), withoutGuard);
        },
        help);
    decorated(*option, "").required();
}

void Options::integer(const std::string& name, std::optional<std::int64_t>& value, const std::string& kind,
                      const std::string& help) {
    auto* option = app_.add_option_function<std::int64_t>(
        name, [&value](const std::int64_t& given) { value = given; }, help);
    decorated(*option, kind).multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Options::requiredInteger(const std::string& name, std::int64_t& value, const std::string& kind,
                              const std::string& help) {
    auto* option = app_.add_option(name, value, help);
    decorated(*option, kind).required()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Options::count(const std::string& name, int& value, const std::string& kind, const std::string& help) {
    auto* option = app_.add_option(name, value, help);
    decorated(*option, kind)
        .check(CLI::Validator(CLI::NonNegativeNumber).description(""))
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Options::seconds(const std::string& name, double& value, const std::string& kind,
                      const std::string& help) {
    auto* option = app_.add_option(name, value, help);
    decorated(*option, kind).check(whyNoDuration)->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Options::seconds(const std::string& name, std::optional<double>& value, const std::string& kind,
                      const std::string& help) {
    auto* option = app_.add_option_function<double>(
        name, [&value](const double& given) { value = given; }, help);
    decorated(*option, kind).check(whyNoDuration)->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

}  // namespace quillbox
