#include "baseapi/contacts/duplicate_index.h"

#include <boost/unordered/unordered_flat_set.hpp>
#include <cstring>
#include <functional>
#include <memory_resource>
#include <string>
#include <string_view>

#include "baseapi/contacts/unicode_text.h"

namespace baseapi::inline v1 {
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
/// `key` lends its room.
template <class Function>
void forEachKey(const AddressBookContact& contact, AddressBook& names, std::string& key, Function take) {
    if (contact.phoneNumbers.empty()) return;
    key.clear();
    appendLowerCased(withoutWhitespaceAround(comparisonName(contact, names)), key);
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
    bool empty() const { return keys_.empty(); }
    bool contains(std::string_view text) const { return keys_.contains(Key(text)); }
    void add(std::string_view text) {
        Key key(text);
        if (keys_.contains(key)) return;
        auto* const place = static_cast<char*>(memory_.allocate(text.size(), 1));
        std::memcpy(place, text.data(), text.size());
        key.text = {place, text.size()};
        keys_.insert(key);
    }

    /// For a key in the making.
    std::string scratch;

  private:
    /// Knows its hash, so that the set grows without a look at the texts.
    struct Key {
        explicit Key(std::string_view of) : hash(std::hash<std::string_view>()(of)), text(of) {}
        bool operator==(const Key&) const = default;

        std::size_t hash;
        std::string_view text;
    };
    struct HashOf {
        std::size_t operator()(const Key& key) const { return key.hash; }
    };

    // The bytes of the keys, one behind the other.
    std::pmr::monotonic_buffer_resource memory_{64 * 1024};
    boost::unordered_flat_set<Key, HashOf> keys_;
};

DuplicateIndex::DuplicateIndex(AddressBook& names) : names_(names), keys_(std::make_unique<Keys>()) {}

DuplicateIndex::~DuplicateIndex() = default;

void DuplicateIndex::add(const AddressBookContact& contact) {
    forEachKey(contact, names_, keys_->scratch, [&](std::string_view key) {
        keys_->add(key);
        return false;
    });
}

bool DuplicateIndex::knows(const AddressBookContact& contact) {
    if (keys_->empty()) return false;
    bool known = false;
    forEachKey(contact, names_, keys_->scratch,
               [&](std::string_view key) { return known = keys_->contains(key); });
    return known;
}

}  // namespace baseapi::inline v1
