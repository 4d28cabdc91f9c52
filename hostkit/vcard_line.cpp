#include "hostkit/vcard_line.h"

#include <algorithm>

namespace hostkit {
namespace {

bool isNameByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
}

/// Reads a line from its beginning.
class LineParser {
  public:
    explicit LineParser(std::string_view line) : rest_(line) {}

    std::optional<VCardLine> parse() {
        VCardLine line;
        line.name = takeName();
        if (!line.name.empty() && takeOne('.')) line.name = takeName();
        if (line.name.empty()) return std::nullopt;
        while (takeOne(';')) {
            auto parameter = takeParameter();
            if (!parameter) return std::nullopt;
            line.parameters.push_back(*std::move(parameter));
        }
        if (!takeOne(':')) return std::nullopt;
        line.value = rest_;
        return line;
    }

  private:
    bool takeOne(char c) {
        if (!rest_.starts_with(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::string_view takeUntil(std::size_t end) {
        const auto taken = rest_.substr(0, end);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string takeName() {
        const auto end = std::ranges::find_if_not(rest_, isNameByte);
        return asciiUpperCased(takeUntil(static_cast<std::size_t>(end - rest_.begin())));
    }

    std::optional<VCardLine::Parameter> takeParameter() {
        VCardLine::Parameter parameter{.name = takeName()};
        if (parameter.name.empty() || !takeOne('=')) return std::nullopt;
        do {
            auto value = takeParameterValue();
            if (!value) return std::nullopt;
            parameter.values.push_back(*std::move(value));
        } while (takeOne(','));
        return parameter;
    }

    std::optional<std::string> takeParameterValue() {
        if (!takeOne('"')) return std::string(takeUntil(rest_.find_first_of("\",;:")));
        const auto end = rest_.find('"');
        if (end == rest_.npos) return std::nullopt;
        std::string value(takeUntil(end));
        takeOne('"');
        return value;
    }

    std::string_view rest_;
};

/// Where a value ends that goes on until an unescaped semicolon.
std::size_t componentLength(std::string_view value) {
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] == ';') return at;
        if (value[at] == '\\') ++at;
    }
    return value.size();
}

}  // namespace

std::vector<std::string_view> VCardLine::valuesOf(std::string_view parameter) const {
    std::vector<std::string_view> values;
    for (const auto& it : parameters)
        if (it.name == parameter) values.insert(values.end(), it.values.begin(), it.values.end());
    return values;
}

std::vector<std::string> unfoldedLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        const bool continues = line.starts_with(' ') || line.starts_with('\t');
        if (continues && !lines.empty()) {
            lines.back() += line.substr(1);
        } else if (!line.empty()) {
            lines.emplace_back(line);
        }
    }
    return lines;
}

std::optional<VCardLine> parseVCardLine(std::string_view line) {
    return LineParser(line).parse();
}

std::string unescaped(std::string_view value) {
    std::string text;
    text.reserve(value.size());
    for (std::size_t at = 0; at < value.size(); ++at) {
        const bool escape = value[at] == '\\' && at + 1 < value.size();
        const char c = escape ? value[++at] : value[at];
        text += escape && (c == 'n' || c == 'N') ? '\n' : c;
    }
    return text;
}

std::vector<std::string> unescapedComponents(std::string_view value) {
    std::vector<std::string> components;
    while (true) {
        const auto length = componentLength(value);
        components.push_back(unescaped(value.substr(0, length)));
        if (length == value.size()) return components;
        value.remove_prefix(length + 1);
    }
}

std::string escaped(std::string_view text) {
    std::string value;
    value.reserve(text.size());
    for (const char c : text) {
        if (c == '\\' || c == ',' || c == ';' || c == '\n') value += '\\';
        value += c == '\n' ? 'n' : c;
    }
    return value;
}

void appendFolded(std::string_view line, std::string& card) {
    constexpr std::size_t most = 75;
    std::size_t room = most;
    while (line.size() > room) {
        auto end = room;
        while (end > 1 && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80) --end;
        card.append(line.substr(0, end)).append("\r\n ");
        line.remove_prefix(end);
        room = most - 1;
    }
    card.append(line).append("\r\n");
}

std::string asciiUpperCased(std::string_view text) {
    std::string upper(text);
    for (auto& c : upper)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

}  // namespace hostkit
