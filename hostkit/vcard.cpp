#include "hostkit/vcard.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "baseapi/json/utf8.h"
#include "hostkit/vcard_line.h"

namespace hostkit {
namespace {

using baseapi::AddressBookContact;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Ends a reading; becomes the broken card.
[[noreturn]] void breakOff(std::string why) {
    throw BrokenCard{std::move(why)};
}

std::vector<VCardLine> linesOf(std::string_view text) {
    if (!baseapi::isValidUTF8(text)) breakOff("no UTF-8 text");
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    std::vector<VCardLine> lines;
    for (const auto& line : unfoldedLines(text)) {
        auto parsed = parseVCardLine(line);
        if (!parsed) breakOff("a line that is none of a vCard: " + line.substr(0, 40));
        lines.push_back(*std::move(parsed));
    }
    return lines;
}

bool isCardMark(const VCardLine& line, std::string_view name) {
    return line.name == name && asciiUpperCased(line.value) == "VCARD";
}

/// One BEGIN at the beginning, one END at the end, and a version between them that is known.
void requireOneCard(const std::vector<VCardLine>& lines) {
    if (lines.empty() || !isCardMark(lines.front(), "BEGIN")) breakOff("no BEGIN:VCARD");
    if (!isCardMark(lines.back(), "END")) breakOff("no END:VCARD");
    const auto isMark = [](const VCardLine& line) { return line.name == "BEGIN" || line.name == "END"; };
    if (std::ranges::count_if(lines, isMark) > 2) breakOff("more than one card");
    const auto version = std::ranges::find(lines, "VERSION", &VCardLine::name);
    if (version == lines.end()) breakOff("no VERSION");
    if (version->value != "3.0" && version->value != "4.0") breakOff("vCard version " + version->value);
}

std::optional<std::string> labelOf(const VCardLine& line) {
    std::optional<std::string> label;
    for (const auto type : line.valuesOf("TYPE")) {
        if (type.empty()) continue;
        label = (label ? *label + ',' : "") + asciiUpperCased(type);
    }
    return label;
}

/// A number may also be written as an address, "TEL;VALUE=uri:tel:+1-555".
std::string numberOf(const VCardLine& line) {
    constexpr std::string_view scheme = "TEL:";
    auto number = unescaped(line.value);
    const auto kinds = line.valuesOf("VALUE");
    const bool isAddress =
        std::ranges::any_of(kinds, [](std::string_view kind) { return asciiUpperCased(kind) == "URI"; });
    if (isAddress && asciiUpperCased(number).starts_with(scheme)) number.erase(0, scheme.size());
    return number;
}

/// Makes a contact of the lines; a property that may come once counts where it comes first.
class ContactReader {
  public:
    void take(const VCardLine& line) {
        if (line.name == "N") {
            takeOnce(hasName_, [&] { takeNames(unescapedComponents(line.value)); });
        } else if (line.name == "FN") {
            takeOnce(hasFormattedName_, [&] { formattedName_ = unescaped(line.value); });
        } else if (line.name == "ORG") {
            takeOnce(hasOrganization_,
                     [&] { contact_.organizationName = unescapedComponents(line.value).front(); });
        } else if (line.name == "TITLE") {
            takeOnce(hasTitle_, [&] { contact_.jobTitle = unescaped(line.value); });
        } else if (line.name == "NOTE") {
            takeOnce(hasNote_, [&] { contact_.note = unescaped(line.value); });
        } else if (line.name == "TEL") {
            if (auto number = numberOf(line); !number.empty())
                contact_.phoneNumbers.push_back({labelOf(line), {std::move(number)}});
        } else if (line.name == "EMAIL") {
            if (auto address = unescaped(line.value); !address.empty())
                contact_.emailAddresses.push_back({labelOf(line), std::move(address)});
        }
    }

    AddressBookContact finish() && {
        if (contact_.givenName.empty() && contact_.middleName.empty() && contact_.familyName.empty())
            contact_.givenName = std::move(formattedName_);
        return std::move(contact_);
    }

  private:
    template <class Function>
    static void takeOnce(bool& taken, Function take) {
        if (!std::exchange(taken, true)) take();
    }

    void takeNames(std::vector<std::string> components) {
        components.resize(std::max<std::size_t>(components.size(), 3));
        contact_.familyName = std::move(components[0]);
        contact_.givenName = std::move(components[1]);
        contact_.middleName = std::move(components[2]);
    }

    AddressBookContact contact_;
    std::string formattedName_;
    bool hasName_ = false;
    bool hasFormattedName_ = false;
    bool hasOrganization_ = false;
    bool hasTitle_ = false;
    bool hasNote_ = false;
};

struct LabelType {
    std::string_view label;
    std::string_view type;
};

constexpr std::array<LabelType, 9> labelTypes{{
    {baseapi::CNLabelHome, "HOME"},
    {baseapi::CNLabelWork, "WORK"},
    {baseapi::CNLabelOther, ""},
    {baseapi::CNLabelPhoneNumberMobile, "CELL"},
    {baseapi::CNLabelPhoneNumberiPhone, "CELL"},
    {baseapi::CNLabelPhoneNumberMain, ""},
    {baseapi::CNLabelPhoneNumberHomeFax, "HOME,FAX"},
    {baseapi::CNLabelPhoneNumberWorkFax, "WORK,FAX"},
    {baseapi::CNLabelPhoneNumberOtherFax, "FAX"},
}};

/// A label that says something else is kept as far as a parameter can hold it.
std::string parameterText(std::string_view label) {
    std::string text;
    for (const char c : label) {
        const bool fits =
            static_cast<unsigned char>(c) >= ' ' && c != 0x7F && c != '"' && c != ';' && c != ':';
        text += fits ? c : ' ';
    }
    return text;
}

std::string typeParameter(std::optional<std::string_view> label) {
    if (!label) return "";
    const auto* row = std::ranges::find(labelTypes, *label, &LabelType::label);
    const auto type = row == labelTypes.end() ? parameterText(*label) : std::string(row->type);
    return type.empty() ? "" : ";TYPE=" + type;
}

class CardWriter {
  public:
    void line(std::string_view text) { appendFolded(text, card_); }
    void property(const std::string& name, std::string_view value) { line(name + ":" + escaped(value)); }
    void propertyIfAny(const std::string& name, std::string_view value) {
        if (!value.empty()) property(name, value);
    }
    std::string finish() && { return std::move(card_); }

  private:
    std::string card_;
};

}  // namespace

std::variant<AddressBookContact, BrokenCard> readVCard(std::string_view text) try {
    const auto lines = linesOf(text);
    requireOneCard(lines);
    ContactReader reader;
    for (const auto& line : lines) reader.take(line);
    return std::move(reader).finish();
} catch (BrokenCard& broken) {
    return std::move(broken);
}

std::string writeVCard(const baseapi::PackedContact& contact, std::string_view uid) {
    CardWriter card;
    card.line("BEGIN:VCARD");
    card.line("VERSION:3.0");
    card.property("UID", uid);
    card.line("N:" + escaped(contact.familyName()) + ";" + escaped(contact.givenName()) + ";" +
              escaped(contact.middleName()) + ";;");
    const auto name = fullNameOf(contact);
    card.property("FN", name.empty() ? contact.organizationName() : name);
    if (!contact.organizationName().empty() || !contact.departmentName().empty())
        card.line("ORG:" + escaped(contact.organizationName()) +
                  (contact.departmentName().empty() ? "" : ";" + escaped(contact.departmentName())));
    card.propertyIfAny("TITLE", contact.jobTitle());
    for (const auto& [label, number] : contact.phoneNumbers())
        card.property("TEL" + typeParameter(label), number);
    for (const auto& [label, address] : contact.emailAddresses())
        card.property("EMAIL" + typeParameter(label), address);
    card.propertyIfAny("NOTE", contact.note());
    card.line("END:VCARD");
    return std::move(card).finish();
}

std::string fullNameOf(const baseapi::PackedContact& contact) {
    std::string name;
    for (const auto part : {contact.givenName(), contact.middleName(), contact.familyName()}) {
        if (part.empty()) continue;
        if (!name.empty()) name += ' ';
        name += part;
    }
    return name;
}

}  // namespace hostkit
