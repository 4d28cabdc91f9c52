#include "baseapi/platform/mime_types.h"

#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unordered_map>
#include <vector>

namespace baseapi::inline v1 {
namespace {

struct WeightedType {
    int weight;
    std::string type;
};
using TypesBySuffix = std::unordered_map<std::string, WeightedType>;

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (auto& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
}

std::string environment(const char* name, std::string otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? value : std::move(otherwise);
}

/// The folders of shared data, the most important first.
std::vector<std::filesystem::path> dataFolders() {
    std::vector<std::filesystem::path> folders{
        environment("XDG_DATA_HOME", environment("HOME", "/nonexistent") + "/.local/share")};
    const auto shared = environment("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    for (std::size_t start = 0; start <= shared.size();) {
        const auto end = std::min(shared.find(':', start), shared.size());
        if (end > start) folders.emplace_back(shared.substr(start, end - start));
        start = end + 1;
    }
    return folders;
}

/// Takes what stands before the next colon off the text.
std::string_view takeField(std::string_view& text) {
    const auto field = text.substr(0, text.find(':'));
    text.remove_prefix(std::min(field.size() + 1, text.size()));
    return field;
}

class MimeTypes {
  public:
    MimeTypes() {
        for (const auto& folder : dataFolders()) {
            std::ifstream file(folder / "mime" / "globs2");
            for (std::string line; std::getline(file, line);) add(line);
        }
    }

    std::optional<std::string> find(std::string_view suffix) const {
        if (const auto found = asSpelled_.find(std::string(suffix)); found != asSpelled_.end()) {
            return found->second.type;
        }
        const auto found = anyCase_.find(lowerCase(suffix));
        return found != anyCase_.end() ? std::optional(found->second.type) : std::nullopt;
    }

  private:
    /// A line is "weight:type:pattern" or "weight:type:pattern:flags"; the flag "cs" tells upper case from
    /// lower.
    void add(std::string_view line) {
        const auto weightText = takeField(line);
        int weight = 0;
        const auto weightEnd = weightText.data() + weightText.size();
        if (std::from_chars(weightText.data(), weightEnd, weight).ptr != weightEnd || weightText.empty())
            return;
        const auto type = takeField(line);
        auto pattern = takeField(line);
        if (!pattern.starts_with("*.")) return;
        pattern.remove_prefix(2);
        if (pattern.find_first_of("*?[") != std::string_view::npos) return;

        const bool spelled = line.find("cs") != std::string_view::npos;
        auto& types = spelled ? asSpelled_ : anyCase_;
        const auto [entry, isNew] = types.try_emplace(spelled ? std::string(pattern) : lowerCase(pattern),
                                                      WeightedType{weight, std::string(type)});
        if (!isNew && weight > entry->second.weight) entry->second = {weight, std::string(type)};
    }

    TypesBySuffix asSpelled_;
    TypesBySuffix anyCase_;
};

}  // namespace

std::optional<std::string> mimeTypeOfSuffix(std::string_view suffix) {
    // Never destroyed: threads may still ask while the process ends.
    static const auto& types = *new MimeTypes;
    return types.find(suffix);
}

}  // namespace baseapi::inline v1
