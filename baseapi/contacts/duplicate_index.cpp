#include "baseapi/contacts/duplicate_index.h"

#include <boost/unordered/unordered_flat_set.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory_resource>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "baseapi/contacts/unicode_text.h"
#include "baseapi/platform/sha256.h"

namespace baseapi::inline v1 {
namespace {

std::string fallbackName(const PackedContact& contact) {
    std::string name;
    for (const auto part : {contact.givenName(), contact.middleName(), contact.familyName()}) {
        if (part.empty()) continue;
        if (!name.empty()) name += ' ';
        name += part;
    }
    if (!name.empty()) return name;
    return std::string(contact.organizationName().empty() ? "未知联系人" : contact.organizationName());
}

std::string comparisonName(const PackedContact& contact, AddressBook& names) {
    const bool hasName =
        !contact.givenName().empty() || !contact.familyName().empty() || !contact.middleName().empty();
    if (hasName)
        if (auto name = names.fullName(contact)) return *std::move(name);
    return fallbackName(contact);
}

/// A longer name would take much memory beside each of its numbers; its hash stands for it then.
constexpr std::size_t longestName = 256;

/// The name as it counts; no name begins with a line end, so that one marks a hash.
void putNameKey(const PackedContact& contact, AddressBook& names, std::string& key) {
    key.clear();
    appendLowerCased(withoutWhitespaceAround(comparisonName(contact, names)), key);
    if (key.size() > longestName) key = '\n' + sha256Hex(key);
}

/// Calls `take` with the digits of each phone number that has some, behind the contact's name, until it gives
/// true. Equal names and an equal number are thus one equal key: digits hold no line end, so the two parts
/// cannot be confused. `key` lends its room.
template <class Function>
void forEachKey(const PackedContact& contact, AddressBook& names, std::string& key, Function take) {
    if (contact.phoneNumbers().empty()) return;
    putNameKey(contact, names, key);
    if (key.empty()) return;
    key += '\n';
    const auto nameLength = key.size();
    for (const auto& phone : contact.phoneNumbers()) {
        key.resize(nameLength);
        appendDecimalDigits(phone.value, key);
        if (key.size() > nameLength && take(std::string_view(key))) return;
    }
}

}  // namespace

class DuplicateIndex::Keys {
  public:
    Keys() = default;
    Keys(const Keys&) = delete;
    Keys& operator=(const Keys&) = delete;

    bool empty() const { return keys_.empty(); }
    void add(std::string_view text) {
        if (keys_.size() == std::numeric_limits<Number>::max()) throw std::bad_alloc();
        auto* const place = static_cast<char*>(memory_.allocate(text.size(), 1));
        keys_.emplace_back(std::string_view(place, text.copy(place, text.size())));
    }
    /// All at once and as late as can be: the processor then waits for the memory of several keys together.
    void indexAll() {
        if (indexed_ == keys_.size()) return;
        numbers_.reserve(keys_.size());
        for (; indexed_ < keys_.size(); ++indexed_) numbers_.insert(static_cast<Number>(indexed_));
    }
    bool contains(std::string_view text) {
        indexAll();
        return numbers_.contains(Key(text));
    }

    /// For a key in the making.
    std::string scratch;

  private:
    /// Knows its hash, so that a look at the set is seldom one at the texts.
    struct Key {
        explicit Key(std::string_view of) : hash(std::hash<std::string_view>()(of)), text(of) {}
        bool operator==(const Key&) const = default;

        std::size_t hash;
        std::string_view text;
    };
    /// The set holds the keys' places, so that more of it is in the processor's cache.
    using Number = std::uint32_t;
    struct HashOf {
        using is_transparent = void;
        std::size_t operator()(const Key& key) const { return key.hash; }
        std::size_t operator()(Number number) const { return (*keys)[number].hash; }
        const std::vector<Key>* keys;
    };
    struct AreEqual {
        using is_transparent = void;
        bool operator()(Number one, Number other) const { return (*keys)[one] == (*keys)[other]; }
        bool operator()(const Key& key, Number number) const { return key == (*keys)[number]; }
        bool operator()(Number number, const Key& key) const { return key == (*keys)[number]; }
        const std::vector<Key>* keys;
    };

    // The bytes of the keys, one behind the other.
    std::pmr::monotonic_buffer_resource memory_{64 * 1024};
    std::vector<Key> keys_;
    std::size_t indexed_ = 0;
    boost::unordered_flat_set<Number, HashOf, AreEqual> numbers_{0, HashOf{&keys_}, AreEqual{&keys_}};
};

DuplicateIndex::DuplicateIndex(AddressBook& names) : names_(names), keys_(std::make_unique<Keys>()) {}

DuplicateIndex::~DuplicateIndex() = default;

void DuplicateIndex::add(const PackedContact& contact) {
    forEachKey(contact, names_, keys_->scratch, [&](std::string_view key) {
        keys_->add(key);
        return false;
    });
}

void DuplicateIndex::prepare() {
    keys_->indexAll();
}

bool DuplicateIndex::knows(const PackedContact& contact) {
    if (keys_->empty()) return false;
    bool known = false;
    forEachKey(contact, names_, keys_->scratch,
               [&](std::string_view key) { return known = keys_->contains(key); });
    return known;
}

}  // namespace baseapi::inline v1
