#include "bench/hand_written_vcards.h"

#include <algorithm>

namespace bench {
namespace {

void appendIfAny(std::string& text, const std::optional<std::string>& value) {
    if (value) text += *value;
}

/// A value and its TYPE.
std::pair<std::string_view, std::string_view> typedValue(std::string_view line) {
    const auto colon = line.find(':');
    const auto type = line.find("TYPE=");
    if (colon == line.npos || type == line.npos || type > colon) return {};
    return {line.substr(type + 5, colon - type - 5), line.substr(colon + 1)};
}

void takeNames(std::string_view names, ViewedContact& contact) {
    for (auto* name : {&contact.familyName, &contact.givenName, &contact.middleName}) {
        *name = names.substr(0, names.find(';'));
        names.remove_prefix(std::min(name->size() + 1, names.size()));
    }
}

void takeLine(std::string_view line, ViewedContact& contact) {
    if (line.starts_with("N:")) {
        takeNames(line.substr(2), contact);
    } else if (line.starts_with("FN:")) {
        if (contact.familyName.empty() && contact.givenName.empty()) contact.givenName = line.substr(3);
    } else if (line.starts_with("TEL;")) {
        contact.phones.push_back(typedValue(line));
    } else if (line.starts_with("EMAIL;")) {
        contact.emails.push_back(typedValue(line));
    } else if (line.starts_with("ORG:")) {
        contact.organizationName = line.substr(4);
    } else if (line.starts_with("TITLE:")) {
        contact.jobTitle = line.substr(6);
    } else if (line.starts_with("NOTE:")) {
        contact.note = line.substr(5);
    }
}

}  // namespace

std::string appendByHand(const std::vector<baseapi::ContactBean>& contacts) {
    std::string text;
    for (const auto& contact : contacts) {
        text += "BEGIN:VCARD\r\nVERSION:3.0\r\nN:";
        appendIfAny(text, contact.familyName);
        text += ';';
        appendIfAny(text, contact.givenName);
        text += ';';
        appendIfAny(text, contact.middleName);
        text += ";;\r\nFN:";
        text += *contact._displayName;
        text += "\r\n";
        for (const auto& phone : contact.phoneNumbers) {
            text += "TEL;TYPE=";
            text += phone.typeString();
            text += ':';
            text += phone.number;
            text += "\r\n";
        }
        for (const auto& email : contact.emails) {
            text += "EMAIL;TYPE=";
            text += email.typeString();
            text += ':';
            text += email.address;
            text += "\r\n";
        }
        if (contact.organization) {
            text += "ORG:";
            text += *contact.organization->company;
            text += "\r\n";
        }
        text += "END:VCARD\r\n";
    }
    return text;
}

std::vector<ViewedContact> parseByHand(std::string_view text) {
    std::vector<ViewedContact> contacts;
    while (!text.empty()) {
        auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line == "BEGIN:VCARD") {
            contacts.emplace_back();
        } else if (!contacts.empty()) {
            takeLine(line, contacts.back());
        }
    }
    return contacts;
}

}  // namespace bench
