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
        std::function<std::optional<std::string>(const baseapi::PackedContact&)> formatter;
    };
    Plan plan;

    AuthorizationStatus authorizationStatus() noexcept override { return plan.status; }

    std::optional<baseapi::AddressBookError> enumerateContacts(
        std::span<const baseapi::ContactKey> keys,
        const std::function<void(baseapi::SharedContact)>& visit) noexcept override {
        auto visited = noteAndGet(keys);
        auto count = visited->size();
        if (plan.enumerationError) count = std::min(plan.visitedBeforeError, count);
        for (const auto& kept : std::span(*visited).first(count)) visit(withKeys(kept.contact, keys));
        giveBack(visited);
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
        auto& contacts = own();
        for (const auto& contact : request.added) contacts.push_back({contact, ++lastNumber_});
        return std::nullopt;
    }

    std::optional<std::string> fullName(const baseapi::PackedContact& contact) noexcept override {
        if (plan.formatter) return plan.formatter(contact);
        std::string name;
        for (const auto part : {contact.givenName(), contact.middleName(), contact.familyName()}) {
            if (part.empty()) continue;
            if (!name.empty()) name += ' ';
            name += part;
        }
        if (name.empty()) return std::nullopt;
        return name;
    }

    /// Puts a contact in, past plan and memory.
    void put(const baseapi::AddressBookContact& contact) {
        std::lock_guard lock(mutex_);
        auto copy = contact;
        identify(copy, ++lastNumber_);
        own().push_back({baseapi::shareContact(copy), lastNumber_, true});
    }
    std::vector<baseapi::AddressBookContact> contacts() {
        std::lock_guard lock(mutex_);
        std::vector<baseapi::AddressBookContact> contacts;
        identifyAll();
        for (const auto& kept : *contacts_) contacts.push_back(editableContact(*kept.contact));
        return contacts;
    }
    std::size_t size() const {
        std::lock_guard lock(mutex_);
        return contacts_->size();
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
        contacts_ = std::make_shared<std::vector<Kept>>();
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

    /// What it gives stays as it is, whatever is asked of the book meanwhile.
    std::shared_ptr<const std::vector<Kept>> noteAndGet(std::span<const baseapi::ContactKey> keys) {
        std::lock_guard lock(mutex_);
        keys_.assign(keys.begin(), keys.end());
        if (plan.status != AuthorizationStatus::authorized) return std::make_shared<std::vector<Kept>>();
        identifyAll();
        return contacts_;
    }

    /// With the lock, so that who changes the list then comes after all who have read it.
    void giveBack(std::shared_ptr<const std::vector<Kept>>& visited) {
        std::lock_guard lock(mutex_);
        visited.reset();
    }

    /// The contacts to be changed; those that an enumeration visits are another list.
    std::vector<Kept>& own() {
        if (contacts_.use_count() > 1) contacts_ = std::make_shared<std::vector<Kept>>(*contacts_);
        return *contacts_;
    }

    static baseapi::SharedContact withKeys(baseapi::SharedContact contact,
                                           std::span<const baseapi::ContactKey> keys) {
        using baseapi::ContactKey;
        const auto asked = [&](ContactKey key) { return std::ranges::find(keys, key) != keys.end(); };
        const bool whole = (contact->jobTitle().empty() || asked(ContactKey::jobTitle)) &&
                           (contact->departmentName().empty() || asked(ContactKey::departmentName)) &&
                           (contact->note().empty() || asked(ContactKey::note));
        if (whole) return contact;
        auto partial = editableContact(*contact);
        if (!asked(ContactKey::jobTitle)) partial.jobTitle = {};
        if (!asked(ContactKey::departmentName)) partial.departmentName = {};
        if (!asked(ContactKey::note)) partial.note = {};
        return shareContact(partial);
    }

    static void identify(baseapi::AddressBookContact& contact, std::size_t number) {
        contact.identifier = std::string(identifierStart) + std::to_string(number);
    }

    void identifyAll() {
        if (std::ranges::all_of(*contacts_, &Kept::identified)) return;
        for (auto& kept : own()) {
            if (kept.identified) continue;
            auto contact = editableContact(*kept.contact);
            identify(contact, kept.number);
            kept = {shareContact(contact), kept.number, true};
        }
    }

    /// 0 for a contact of no address book.
    static std::size_t numberOf(const baseapi::PackedContact& contact) {
        const std::string_view identifier = contact.identifier();
        std::size_t number = 0;
        if (identifier.starts_with(identifierStart))
            std::from_chars(identifier.data() + identifierStart.size(), identifier.data() + identifier.size(),
                            number);
        return number;
    }

    /// All of them or, where one is not there, none.
    bool erase(std::span<const baseapi::SharedContact> deleted) {
        if (deleted.empty()) return true;
        std::vector<std::size_t> numbers;
        numbers.reserve(deleted.size());
        for (const auto& contact : deleted) numbers.push_back(numberOf(*contact));
        std::ranges::sort(numbers);
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        if (!std::ranges::includes(*contacts_, numbers, {}, &Kept::number)) return false;
        auto next = numbers.begin();
        std::erase_if(own(), [&](const Kept& kept) {
            const bool isNext = next != numbers.end() && *next == kept.number;
            if (isNext) ++next;
            return isNext;
        });
        return true;
    }

    mutable std::mutex mutex_;
    /// In the order of their numbers.
    std::shared_ptr<std::vector<Kept>> contacts_ = std::make_shared<std::vector<Kept>>();
    std::vector<Request> requests_;
    std::vector<baseapi::ContactKey> keys_;
    std::size_t lastNumber_ = 0;
    bool remembers_ = true;
};

}  // namespace test_support
