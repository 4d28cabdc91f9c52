#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace quillbox {

/// Where a command declares its options: names with "--" are options, others are arguments by their place. An
/// empty text is a value; an option that is given twice counts as it is given last. The variables must
/// outlive the parsing.
class Options {
  public:
    explicit Options(CLI::App& app, std::string group = {}) : app_(app), group_(std::move(group)) {}

    void flag(const std::string& name, bool& value, const std::string& help);
    /// Stays absent where it is not given. `kind` stands for the value in the help, such as "ID".
    void text(const std::string& name, std::optional<std::string>& value, const std::string& kind,
              const std::string& help);
    void requiredText(const std::string& name, std::string& value, const std::string& kind,
                      const std::string& help);
    /// All arguments that are left, one at least.
    void requiredTexts(const std::string& name, std::vector<std::string>& values, const std::string& help);
    void integer(const std::string& name, std::optional<std::int64_t>& value, const std::string& kind,
                 const std::string& help);
    void requiredInteger(const std::string& name, std::int64_t& value, const std::string& kind,
                         const std::string& help);
    /// A whole number that is not negative.
    void count(const std::string& name, int& value, const std::string& kind, const std::string& help);
    /// A number that is not negative, with or without decimals.
    void seconds(const std::string& name, double& value, const std::string& kind, const std::string& help);
    /// The same; stays absent where it is not given.
    void seconds(const std::string& name, std::optional<double>& value, const std::string& kind,
                 const std::string& help);

  private:
    CLI::Option& decorated(CLI::Option& option, const std::string& kind) const;

    CLI::App& app_;
    const std::string group_;
};

}  // namespace quillbox
