#include "baseapi/contacts/vcard_text.h"

#include <array>
#include <string_view>

#include "baseapi/json/text_buffer.h"

namespace baseapi {
namespace {

/// What is written for a byte; empty for one that stands for itself.
constexpr auto escapes = [] {
    std::array<std::string_view, 256> table{};
    table['\\'] = "\\\\";
    table['\n'] = "\\n";
    table[','] = "\\,";
    table[';'] = "\\;";
    return table;
}();

constexpr std::size_t usualCardLength = 256;

/// Writes cards to the end of a text, which is complete when this is gone.
class CardWriter {
  public:
    explicit CardWriter(std::string& text) : text_(text) {}
    CardWriter(const CardWriter&) = delete;
    CardWriter& operator=(const CardWriter&) = delete;
    ~CardWriter() { text_.flush(); }

    void putCard(const ContactBean& contact) {
        text_.put("BEGIN:VCARD\r\nVERSION:3.0\r\n");
        putNames(contact);
        if (const auto name = contact.displayName(); !name.empty()) putLine("FN:", name);
        if (contact.notes && !contact.notes->empty()) putLine("NOTE:", *contact.notes);
        for (const auto& phone : contact.phoneNumbers) putLine("TEL;TYPE=", phone.typeString(), phone.number);
        for (const auto& email : contact.emails) putLine("EMAIL;TYPE=", email.typeString(), email.address);
        if (contact.organization) putOrganization(*contact.organization);
        text_.put("END:VCARD\r\n");
    }

  private:
    void putNames(const ContactBean& contact) {
        text_.put("N:");
        if (contact.familyName) putEscaped(*contact.familyName);
        for (const auto* name :
             {&contact.givenName, &contact.middleName, &contact.namePrefix, &contact.nameSuffix}) {
            text_.put(';');
            if (*name) putEscaped(**name);
        }
        text_.put("\r\n");
    }

    void putOrganization(const ContactBean::OrganizationInfo& organization) {
        if (organization.company) putLine("ORG:", *organization.company);
        if (organization.title) putLine("TITLE:", *organization.title);
        if (organization.department) putLine("X-DEPARTMENT:", *organization.department);
    }

    void putLine(std::string_view property, std::string_view value) {
        text_.put(property);
        putEscaped(value);
        text_.put("\r\n");
    }

    /// The kind is not escaped: the comma of "WORK,FAX" separates two kinds.
    void putLine(std::string_view property, std::string_view kind, std::string_view value) {
        text_.put(property);
        text_.put(kind);
        putLine(":", value);
    }

    void putEscaped(std::string_view value) {
        std::size_t done = 0;
        for (std::size_t at = 0; at < value.size(); ++at) {
            const auto escape = escapes[static_cast<unsigned char>(value[at])];
            if (escape.empty()) continue;
            text_.put(value.substr(done, at - done));
            text_.put(escape);
            done = at + 1;
        }
        text_.put(value.substr(done));
    }

    json::TextBuffer text_;
};

}  // namespace

std::string vCardText(std::span<const ContactBean> contacts) {
    std::string text;
    text.reserve(contacts.size() * usualCardLength);
    CardWriter writer(text);
    for (const auto& contact : contacts) writer.putCard(contact);
    return text;
}

}  // namespace baseapi
