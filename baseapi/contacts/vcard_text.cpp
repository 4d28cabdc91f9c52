#include "baseapi/contacts/vcard_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "baseapi/json/text_buffer.h"

namespace baseapi::inline v1 {
namespace {

/// What is written for a byte; empty for one that stands for itself.
std::string_view escapeOf(char byte) {
    switch (byte) {
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case ',':
            return "\\,";
        case ';':
            return "\\;";
        default:
            return {};
    }
}

/// Not 0 where one of eight bytes is `byte`: only one that becomes 0 borrows from its highest bit.
constexpr std::uint64_t marksOf(std::uint64_t eight, char byte) {
    constexpr std::uint64_t ones = 0x0101010101010101;
    const auto zeros = eight ^ (ones * static_cast<unsigned char>(byte));
    return (zeros - ones) & ~zeros & (ones << 7);
}

bool standsForItself(std::uint64_t eight) {
    return (marksOf(eight, '\\') | marksOf(eight, '\n') | marksOf(eight, ',') | marksOf(eight, ';')) == 0;
}

/// Looks at eight bytes at a time, since nearly no value has one to escape.
bool standsForItself(std::string_view value) {
    std::uint64_t eight = 0;
    if (value.size() < sizeof eight)
        return std::ranges::all_of(value, [](char byte) { return escapeOf(byte).empty(); });
    for (std::size_t at = 0; at + sizeof eight <= value.size(); at += sizeof eight) {
        std::memcpy(&eight, value.data() + at, sizeof eight);
        if (!standsForItself(eight)) return false;
    }
    std::memcpy(&eight, value.data() + value.size() - sizeof eight, sizeof eight);
    return standsForItself(eight);
}

constexpr std::size_t usualCardLength = 256;

/// Writes cards to the end of a text, which is complete when this is gone.
class CardWriter {
  public:
    explicit CardWriter(std::string& text) : text_(text) {}
    CardWriter(const CardWriter&) = delete;
    CardWriter& operator=(const CardWriter&) = delete;
    ~CardWriter() { text_.flush(); }

    void putCard(const ContactBean& contact) {
        text_.put("BEGIN:VCARD\r\nVERSION:3.0\r\nN:");
        putNames(contact);
        if (const auto name = contact.displayName(); !name.empty()) putLine("\r\nFN:", name);
        if (contact.notes && !contact.notes->empty()) putLine("\r\nNOTE:", *contact.notes);
        for (const auto& phone : contact.phoneNumbers)
            putLine("\r\nTEL;TYPE=", phone.typeString(), phone.number);
        for (const auto& email : contact.emails)
            putLine("\r\nEMAIL;TYPE=", email.typeString(), email.address);
        if (contact.organization) putOrganization(*contact.organization);
        text_.put("\r\nEND:VCARD\r\n");
    }

  private:
    void putNames(const ContactBean& contact) {
        if (contact.familyName) putEscaped(*contact.familyName);
        for (const auto* name :
             {&contact.givenName, &contact.middleName, &contact.namePrefix, &contact.nameSuffix}) {
            text_.put(';');
            if (*name) putEscaped(**name);
        }
    }

    void putOrganization(const ContactBean::OrganizationInfo& organization) {
        if (organization.company) putLine("\r\nORG:", *organization.company);
        if (organization.title) putLine("\r\nTITLE:", *organization.title);
        if (organization.department) putLine("\r\nX-DEPARTMENT:", *organization.department);
    }

    /// The property comes with the line end before it, so that the two are one piece.
    void putLine(std::string_view property, std::string_view value) {
        text_.put(property);
        putEscaped(value);
    }

    /// The kind is not escaped: the comma of "WORK,FAX" separates two kinds.
    void putLine(std::string_view property, std::string_view kind, std::string_view value) {
        text_.put(property);
        text_.put(kind);
        putLine(":", value);
    }

    void putEscaped(std::string_view value) {
        if (standsForItself(value)) return text_.put(value);
        for (const char byte : value) {
            const auto escape = escapeOf(byte);
            if (escape.empty()) {
                text_.put(byte);
            } else {
                text_.put(escape);
            }
        }
    }

    json::TextBuffer text_;
};

}  // namespace

std::string vCardText(std::span<const ContactBean> contacts) {
    std::string text;
    text.reserve(contacts.size() * usualCardLength);
    {
        // The text is whole when its writer has ended.
        CardWriter writer(text);
        for (const auto& contact : contacts) writer.putCard(contact);
    }
    return text;
}

}  // namespace baseapi::inline v1
