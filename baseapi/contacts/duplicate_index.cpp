#include "baseapi/contacts/duplicate_index.h"

#include <boost/unordered/unordered_flat_set.hpp>
#include <cstring>
#include <functional>
#include <memory_resource>
#include <string>
#include <string_view>

#include "baseapi/contacts/unicode_text.h"

namespace baseapi {
namespace {

std::string fallbackName(const AddressBookContact& contact) {
    std::string name;
    for (const auto* part : {&contact.givenName, &contact.middleName, &contact.familyName}) {
        if (part->empty()) continue;
        if (!name.empty()) name += ' ';
        name += *part;
    }
    if (!name.empty()) return name;
    return contact.organizationName.empty() ? "未知联系人" : contact.organizationName;
}

std::string comparisonName(const AddressBookContact& contact, AddressBook& names) {
    const bool hasName =
        !contact.givenName.empty() || !contact.familyName.empty() || !contact.middleName.empty();
    if (hasName)
        if (auto name = names.fullName(contact)) return *std::move(name);
    return fallbackName(contact);
}

/// Calls `take` with the digits of each phone number that has some, behind the contact's name. Equal names
/// and an equal number are thus one equal key: digits hold no line end, so the two parts cannot be confused.
template <class Function>
void forEachKey(const AddressBookContact& contact, AddressBook& names, Function take) {
    if (contact.phoneNumbers.empty()) return;
    std::string key = lowerCased(withoutWhitespaceAround(comparisonName(contact, names)));
    if (key.empty()) return;
    key += '\n';
    const auto nameLength = key.size();
    for (const auto& phone : contact.phoneNumbers) {
        key.resize(nameLength);
        appendDecimalDigits(phone.value.stringValue, key);
        if (key.size() > nameLength && take(std::string_view(key))) return;
    }
}

}  // namespace

class DuplicateIndex::Keys {
  public:
    explicit Keys(std::size_t expected) { keys_.reserve(expected); }

    bool empty() const { return keys_.empty(); }
    bool contains(std::string_view key) const { return keys_.contains(key); }
    void add(std::string_view key) {
        auto* const place = static_cast<char*>(memory_.allocate(key.size(), 1));
        std::memcpy(place, key.data(), key.size());
        keys_.emplace(place, key.size());
    }

  private:
    // The bytes of the keys, one behind the other.
    std::pmr::monotonic_buffer_resource memory_{64 * 1024};
    boost::unordered_flat_set<std::string_view, std::hash<std::string_view>> keys_;
};

DuplicateIndex::DuplicateIndex(AddressBook& names, std::size_t expected)
    : names_(names), keys_(std::make_unique<Keys>(expected)) {}

DuplicateIndex::~DuplicateIndex() = default;

bool DuplicateIndex::empty() const {
    return keys_->empty();
}

void DuplicateIndex::add(const AddressBookContact& contact) {
    forEachKey(contact, names_, [&](std::string_view key) {
        keys_->add(key);
        return false;
    });
}

bool DuplicateIndex::knows(const AddressBookContact& contact) const {
    bool known = false;
    forEachKey(contact, names_, [&](std::string_view key) { return known = keys_->contains(key); });
    return known;
}

}  // namespace baseapi
