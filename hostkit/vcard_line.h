#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// One line of a vCard, unfolded: [group.]name;parameter=value,"value":value.
struct VCardLine {
    struct Parameter {
        /// In upper case.
        std::string name;
        std::vector<std::string> values;
    };

    /// In upper case, without the group.
    std::string name;
    std::vector<Parameter> parameters;
    /// Still escaped.
    std::string value;

    /// All values of all parameters of that name, in their order.
    std::vector<std::string_view> valuesOf(std::string_view parameter) const;
};

/// The lines of a text, a line that begins with a blank or a tab joined to the one before; empty ones are
/// left out. Lines end in CR LF or LF.
std::vector<std::string> unfoldedLines(std::string_view text);

/// Takes an unfolded line apart; nothing where it is no line of a vCard.
std::optional<VCardLine> parseVCardLine(std::string_view line);

/// The text that an escaped value stands for.
std::string unescaped(std::string_view value);

/// An escaped value cut at its unescaped semicolons; each component unescaped.
std::vector<std::string> unescapedComponents(std::string_view value);

/// The value that stands for a text in a vCard.
std::string escaped(std::string_view text);

/// Appends a line with its CR LF, folded after at most 75 bytes and never within a letter.
void appendFolded(std::string_view line, std::string& card);

/// The text with the letters of ASCII in upper case.
std::string asciiUpperCased(std::string_view text);

}  // namespace hostkit
