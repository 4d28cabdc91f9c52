#include "baseapi/contacts/vcard_parser.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "baseapi/contacts/unicode_text.h"

namespace baseapi {
namespace {

constexpr std::string_view beginOfCard = "BEGIN:VCARD";
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

/// One card on its way to a contact.
class Card {
  public:
    /// The line without blanks around it. The first prefix that fits decides.
    void take(std::string_view line) {
        if (line.starts_with("N:")) {
            takeNames(line.substr(2));
        } else if (line.starts_with("FN:")) {
            if (contact_->familyName.empty() && contact_->givenName.empty())
                contact_->givenName = line.substr(3);
        } else if (line.starts_with("TEL;")) {
            takePhone(line);
        } else if (line.starts_with("EMAIL;")) {
            takeEmail(line);
        } else if (line.starts_with("ORG:")) {
            contact_->organizationName = line.substr(4);
        } else if (line.starts_with("TITLE:")) {
            contact_->jobTitle = line.substr(6);
        } else if (line.starts_with("NOTE:")) {
            contact_->note = line.substr(5);
        }
    }

    /// Nothing where nobody could find the contact by a name.
    SharedContact finish() && {
        const auto& contact = *contact_;
        const bool usable =
            !contact.givenName.empty() || !contact.familyName.empty() || !contact.organizationName.empty();
        return usable ? std::move(contact_) : nullptr;
    }

  private:
    /// Two to four components are family and given name, five or more have the middle name too; one is none.
    void takeNames(std::string_view names) {
        const auto components = std::ranges::count(names, ';') + 1;
        if (components < 2) return;
        for (auto* name : {&contact_->familyName, &contact_->givenName, &contact_->middleName}) {
            if (name == &contact_->middleName && components < 5) return;
            const auto component = names.substr(0, names.find(';'));
            if (!component.empty()) *name = component;
            names.remove_prefix(std::min(component.size() + 1, names.size()));
        }
    }

    void takePhone(std::string_view line) {
        const auto number = lastValue(line);
        if (number.empty()) return;
        auto& phone = contact_->phoneNumbers.emplace_back();
        phone.label.emplace(labelOf(line, phoneLabels, CNLabelPhoneNumberMain));
        phone.value.stringValue = number;
    }

    void takeEmail(std::string_view line) {
        const auto address = lastValue(line);
        if (address.empty()) return;
        auto& email = contact_->emailAddresses.emplace_back();
        email.label.emplace(labelOf(line, emailLabels, CNLabelOther));
        email.value = address;
    }

    std::shared_ptr<AddressBookContact> contact_ = std::make_shared<AddressBookContact>();
};

SharedContact parseVCard(std::string_view text) {
    Card card;
    while (!text.empty()) {
        const auto line = text.substr(0, findLineEnd(text));
        card.take(withoutBlanksAround(line));
        text.remove_prefix(line.size());
        text.remove_prefix(lineEndLength(text));
    }
    return std::move(card).finish();
}

}  // namespace

std::vector<SharedContact> parseVCardText(std::string_view text) {
    std::vector<SharedContact> contacts;
    for (auto begin = text.find(beginOfCard); begin != text.npos;) {
        const auto next = text.find(beginOfCard, begin + beginOfCard.size());
        const auto card = text.substr(begin, next - begin);
        begin = next;
        // Nearly always at the very end, so it is looked for from there.
        if (card.rfind(endOfCard) == card.npos) continue;
        if (auto contact = parseVCard(card)) contacts.push_back(std::move(contact));
    }
    return contacts;
}

}  // namespace baseapi
