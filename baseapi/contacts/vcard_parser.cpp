#include "baseapi/contacts/vcard_parser.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "baseapi/contacts/unicode_text.h"

namespace baseapi::inline v1 {
namespace {

constexpr std::string_view endOfCard = "END:VCARD";
constexpr std::string_view typeParameter = "TYPE=";

struct KindLabel {
    std::string_view kind;
    std::string_view label;
};

/// A kind goes before those after it, wherever the two stand in the line.
constexpr std::array<KindLabel, 5> phoneLabels{{
    {"CELL", CNLabelPhoneNumberMobile},
    {"MOBILE", CNLabelPhoneNumberMobile},
    {"WORK", CNLabelWork},
    {"HOME", CNLabelHome},
    {"FAX", CNLabelPhoneNumberWorkFax},
}};
constexpr std::array<KindLabel, 2> emailLabels{{
    {"WORK", CNLabelWork},
    {"HOME", CNLabelHome},
}};

/// The same as `starts_with`; as the length is known, it becomes one comparison of a number.
template <std::size_t size>
bool beginsWith(std::string_view line, const char (&prefix)[size]) {
    return line.size() >= size - 1 && std::memcmp(line.data(), prefix, size - 1) == 0;
}

/// The label of the first kind of the table that the line names anywhere, its value included.
template <std::size_t size>
std::string_view labelOf(std::string_view line, const std::array<KindLabel, size>& table,
                         std::string_view otherwise) {
    auto best = size;
    for (auto at = line.find(typeParameter); at != line.npos; at = line.find(typeParameter, at)) {
        at += typeParameter.size();
        const auto rest = line.substr(at);
        const auto* row =
            std::ranges::find_if(table, [&](const auto& it) { return rest.starts_with(it.kind); });
        best = std::min(best, static_cast<std::size_t>(row - table.begin()));
    }
    return best < size ? table[best].label : otherwise;
}

/// What stands behind the line's last colon; empty where there is none.
std::string_view lastValue(std::string_view line) {
    const auto colon = line.rfind(':');
    return colon == line.npos ? std::string_view() : withoutBlanksAround(line.substr(colon + 1));
}

/// The text's first line, which is taken off the text with its end.
std::string_view cutAnyLine(std::string_view& text) {
    const auto line = text.substr(0, findLineEnd(text));
    text.remove_prefix(line.size());
    text.remove_prefix(lineEndLength(text));
    return line;
}

/// The same of a text whose line ends are LF and CR LF.
std::string_view cutPlainLine(std::string_view& text) {
    auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

/// Reads one card after the other. What it finds are views into the text, until a card proves usable.
class CardReader {
  public:
    /// Nothing where nobody could find the contact by a name.
    SharedContact read(std::string_view text) {
        forgetLast();
        const auto cutLine = hasPlainLineEnds(text) ? cutPlainLine : cutAnyLine;
        while (!text.empty()) take(withoutBlanksAround(cutLine(text)));
        const bool usable =
            !texts_.givenName.empty() || !texts_.familyName.empty() || !texts_.organizationName.empty();
        return usable ? contact() : nullptr;
    }

  private:
    /// The lists keep their room for the next card.
    void forgetLast() {
        texts_ = {};
        phones_.clear();
        emails_.clear();
    }

    /// The line without blanks around it. The first prefix that fits decides.
    void take(std::string_view line) {
        if (beginsWith(line, "N:")) {
            takeNames(line.substr(2));
        } else if (beginsWith(line, "FN:")) {
            if (texts_.familyName.empty() && texts_.givenName.empty()) texts_.givenName = line.substr(3);
        } else if (beginsWith(line, "TEL;")) {
            takeValue(line, phoneLabels, CNLabelPhoneNumberMain, phones_);
        } else if (beginsWith(line, "EMAIL;")) {
            takeValue(line, emailLabels, CNLabelOther, emails_);
        } else if (beginsWith(line, "ORG:")) {
            texts_.organizationName = line.substr(4);
        } else if (beginsWith(line, "TITLE:")) {
            texts_.jobTitle = line.substr(6);
        } else if (beginsWith(line, "NOTE:")) {
            texts_.note = line.substr(5);
        }
    }

    /// Two to four components are family and given name, five or more have the middle name too; one is none.
    void takeNames(std::string_view names) {
        const auto components = std::ranges::count(names, ';') + 1;
        if (components < 2) return;
        for (auto* name : {&texts_.familyName, &texts_.givenName, &texts_.middleName}) {
            if (name == &texts_.middleName && components < 5) return;
            const auto component = names.substr(0, names.find(';'));
            if (!component.empty()) *name = component;
            names.remove_prefix(std::min(component.size() + 1, names.size()));
        }
    }

    template <std::size_t size>
    static void takeValue(std::string_view line, const std::array<KindLabel, size>& table,
                          std::string_view otherwise, std::vector<LabeledText>& values) {
        if (const auto value = lastValue(line); !value.empty())
            values.push_back({labelOf(line, table, otherwise), value});
    }

    SharedContact contact() {
        texts_.phoneNumbers = phones_;
        texts_.emailAddresses = emails_;
        return shareContact(texts_);
    }

    ContactTexts texts_;
    std::vector<LabeledText> phones_;
    std::vector<LabeledText> emails_;
};

}  // namespace

void parseVCardText(std::string_view text, const FoundContact& found) {
    CardReader reader;
    for (auto begin = text.find(beginOfCard); begin != text.npos;) {
        const auto next = text.find(beginOfCard, begin + beginOfCard.size());
        const auto card = text.substr(begin, next - begin);
        begin = next;
        // Nearly always at the very end, so it is looked for from there.
        if (card.rfind(endOfCard) == card.npos) continue;
        if (auto contact = reader.read(card)) found(std::move(contact));
    }
}

}  // namespace baseapi::inline v1
