#pragma once

#include <algorithm>
#include <charconv>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "baseapi/platform/address_book.h"

namespace test_support {

/// An address book in memory that refuses or fails on demand and remembers what it was asked.
class AddressBookDouble : public baseapi::AddressBook {
  public:
    /// What was asked of `execute`.
    struct Request {
        std::vector<baseapi::SharedContact> added;
        std::vector<baseapi::SharedContact> deleted;
    };

    /// All may be set while nothing is under way.
    struct Plan {
        AuthorizationStatus status = AuthorizationStatus::authorized;
        /// An enumeration visits so many contacts and then fails with this text.
        std::optional<std::string> enumerationError;
        std::size_t visitedBeforeError = 0;
        /// The request fails with the text that this gives, if any.
        std::function<std::optional<std::string>(const baseapi::ContactSaveRequest&)> refusal;
        /// The full name in place of the given, middle and family name.
        std::function<std::optional<std::string>(const baseapi::AddressBookContact&)> formatter;
    };
    Plan plan;

    AuthorizationStatus authorizationStatus() noexcept override { return plan.status; }

    std::optional<baseapi::AddressBookError> enumerateContacts(
        std::span<const baseapi::ContactKey> keys,
        const std::function<void(baseapi::SharedContact)>& visit) noexcept override {
        auto visited = noteAndCopy(keys);
        if (plan.enumerationError) visited.resize(std::min(plan.visitedBeforeError, visited.size()));
        for (auto& contact : visited) visit(withKeys(std::move(contact), keys));
        if (plan.enumerationError) return baseapi::AddressBookError{*plan.enumerationError};
        if (plan.status != AuthorizationStatus::authorized)
            return baseapi::AddressBookError{"not authorised"};
        return std::nullopt;
    }

    std::optional<baseapi::AddressBookError> execute(
        const baseapi::ContactSaveRequest& request) noexcept override {
        std::lock_guard lock(mutex_);
        if (remembers_)
            requests_.push_back({{request.added.begin(), request.added.end()},
                                 {request.deleted.begin(), request.deleted.end()}});
        if (plan.status != AuthorizationStatus::authorized)
            return baseapi::AddressBookError{"not authorised"};
        if (plan.refusal)
            if (auto why = plan.refusal(request)) return baseapi::AddressBookError{*std::move(why)};
        if (!erase(request.deleted)) return baseapi::AddressBookError{"no such contact"};
        contacts_.reserve(contacts_.size() + request.added.size());
        for (const auto& contact : request.added) contacts_.push_back({contact, ++lastNumber_});
        return std::nullopt;
    }

    std::optional<std::string> fullName(const baseapi::AddressBookContact& contact) noexcept override {
        if (plan.formatter) return plan.formatter(contact);
        std::string name;
        for (const auto* part : {&contact.givenName, &contact.middleName, &contact.familyName}) {
            if (part->empty()) continue;
            if (!name.empty()) name += ' ';
            name += *part;
        }
        if (name.empty()) return std::nullopt;
        return name;
    }

    /// Puts a contact in, past plan and memory.
    void put(const baseapi::AddressBookContact& contact) {
        std::lock_guard lock(mutex_);
        auto copy = std::make_shared<baseapi::AddressBookContact>(contact);
        identify(*copy, ++lastNumber_);
        contacts_.push_back({std::move(copy), lastNumber_, true});
    }
    std::vector<baseapi::AddressBookContact> contacts() {
        std::lock_guard lock(mutex_);
        std::vector<baseapi::AddressBookContact> contacts;
        for (auto& kept : contacts_) contacts.push_back(*identified(kept));
        return contacts;
    }
    std::size_t size() const {
        std::lock_guard lock(mutex_);
        return contacts_.size();
    }
    std::vector<Request> requests() const {
        std::lock_guard lock(mutex_);
        return requests_;
    }
    /// The keys of the last enumeration.
    std::vector<baseapi::ContactKey> keys() const {
        std::lock_guard lock(mutex_);
        return keys_;
    }
    /// Back to an empty book without a plan.
    void reset() {
        std::lock_guard lock(mutex_);
        plan = {};
        contacts_.clear();
        requests_.clear();
        keys_.clear();
        lastNumber_ = 0;
    }
    /// From now on no request is remembered.
    void forgetRequests() { remembers_ = false; }

  private:
    /// A contact that was added is kept as it was given, and gets its identifier when it is first asked for.
    struct Kept {
        baseapi::SharedContact contact;
        std::size_t number;
        bool identified = false;
    };
    static constexpr std::string_view identifierStart = "contact-";

    std::vector<baseapi::SharedContact> noteAndCopy(std::span<const baseapi::ContactKey> keys) {
        std::lock_guard lock(mutex_);
        keys_.assign(keys.begin(), keys.end());
        if (plan.status != AuthorizationStatus::authorized) return {};
        std::vector<baseapi::SharedContact> contacts;
        contacts.reserve(contacts_.size());
        for (auto& kept : contacts_) contacts.push_back(identified(kept));
        return contacts;
    }

    static baseapi::SharedContact withKeys(baseapi::SharedContact contact,
                                           std::span<const baseapi::ContactKey> keys) {
        using baseapi::ContactKey;
        const auto asked = [&](ContactKey key) { return std::ranges::find(keys, key) != keys.end(); };
        const bool whole = (contact->jobTitle.empty() || asked(ContactKey::jobTitle)) &&
                           (contact->departmentName.empty() || asked(ContactKey::departmentName)) &&
                           (contact->note.empty() || asked(ContactKey::note));
        if (whole) return contact;
        auto partial = std::make_shared<baseapi::AddressBookContact>(*contact);
        if (!asked(ContactKey::jobTitle)) partial->jobTitle.clear();
        if (!asked(ContactKey::departmentName)) partial->departmentName.clear();
        if (!asked(ContactKey::note)) partial->note.clear();
        return partial;
    }

    static void identify(baseapi::AddressBookContact& contact, std::size_t number) {
        contact.identifier = std::string(identifierStart) + std::to_string(number);
    }

    static const baseapi::SharedContact& identified(Kept& kept) {
        if (!kept.identified) {
            auto copy = std::make_shared<baseapi::AddressBookContact>(*kept.contact);
            identify(*copy, kept.number);
            kept.contact = std::move(copy);
            kept.identified = true;
        }
        return kept.contact;
    }

    /// 0 for a contact of no address book.
    static std::size_t numberOf(const baseapi::AddressBookContact& contact) {
        const std::string_view identifier = contact.identifier;
        std::size_t number = 0;
        if (identifier.starts_with(identifierStart))
            std::from_chars(identifier.data() + identifierStart.size(), identifier.data() + identifier.size(),
                            number);
        return number;
    }

    /// All of them or, where one is not there, none.
    bool erase(std::span<const baseapi::SharedContact> deleted) {
        std::vector<std::size_t> numbers;
        numbers.reserve(deleted.size());
        for (const auto& contact : deleted) numbers.push_back(numberOf(*contact));
        std::ranges::sort(numbers);
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        if (!std::ranges::includes(contacts_, numbers, {}, &Kept::number)) return false;
        std::vector<Kept> left;
        left.reserve(contacts_.size() - numbers.size());
        auto gone = numbers.begin();
        for (auto& kept : contacts_) {
            if (gone != numbers.end() && *gone == kept.number)
                ++gone;
            else
                left.push_back(std::move(kept));
        }
        contacts_ = std::move(left);
        return true;
    }

    mutable std::mutex mutex_;
    /// In the order of their numbers.
    std::vector<Kept> contacts_;
    std::vector<Request> requests_;
    std::vector<baseapi::ContactKey> keys_;
    std::size_t lastNumber_ = 0;
    bool remembers_ = true;
};

}  // namespace test_support
