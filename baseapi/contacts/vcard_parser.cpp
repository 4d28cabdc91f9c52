#include "baseapi/contacts/vcard_parser.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "baseapi/contacts/unicode_text.h"
#include "baseapi/platform/contact_packer.h"

namespace baseapi::inline v1 {
namespace {

constexpr std::string_view endOfCard = "END:VCARD";

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

/// The same as `ends_with`.
template <std::size_t size>
bool endsWith(std::string_view line, const char (&suffix)[size]) {
    return line.size() >= size - 1 &&
           std::memcmp(line.data() + line.size() - (size - 1), suffix, size - 1) == 0;
}

/// The label of the first kind of the table that the line names anywhere, its value included.
template <std::size_t size>
std::string_view labelOf(std::string_view line, const std::array<KindLabel, size>& table,
                         std::string_view otherwise) {
    auto best = size;
    // By its last letter, since a line has hardly another of these.
    for (auto equals = line.find('='); equals != line.npos; equals = line.find('=', equals + 1)) {
        if (!endsWith(line.substr(0, equals + 1), "TYPE=")) continue;
        const auto rest = line.substr(equals + 1);
        for (std::size_t row = 0; row < best && !rest.empty(); ++row)
            if (rest.front() == table[row].kind.front() && rest.starts_with(table[row].kind)) best = row;
    }
    return best < size ? table[best].label : otherwise;
}

/// What stands behind the line's last colon; empty where there is none.
std::string_view lastValue(std::string_view line) {
    auto colon = line.find(':');
    if (colon == line.npos) return {};
    // Nearly always the only one, so that this is quicker than from behind, letter by letter.
    for (auto next = line.find(':', colon + 1); next != line.npos; next = line.find(':', next + 1))
        colon = next;
    return withoutBlanksAround(line.substr(colon + 1));
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
        return packer_.share(texts_);
    }

    ContactPacker packer_;
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
