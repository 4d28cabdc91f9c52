#include "baseapi/json/schema.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "baseapi/json/codec.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi::inline v1 {

json::Key::Key(std::string_view name) : length_(name.size() + 3) {
    if (name.size() > longest) fatalStop("too long a key in a record");
    text_[0] = '"';
    name.copy(text_.data() + 1, name.size());
    text_[name.size() + 1] = '"';
    text_[name.size() + 2] = ':';
    const std::size_t compared = name.size() + 1;  // the closing quote is part of the match
    wholeWords_ = compared / 8;
    const std::array<char, 8> all{'\xFF', '\xFF', '\xFF', '\xFF', '\xFF', '\xFF', '\xFF', '\xFF'};
    std::array<char, 8> mask{};
    std::copy_n(all.begin(), compared % 8, mask.begin());
    lastWord_ = load(mask.data());
}

void json::FieldList::add(const char* key, std::ptrdiff_t offset, const FieldType& type) {
    fields.push_back({Key(key), static_cast<std::size_t>(offset), type.type, type.presence});
}

const RecordCodec& json::makeCodec(std::atomic<const RecordCodec*>& codec,
                                   const RecordDescription& description) {
    auto made = std::make_unique<RecordCodec>(description);
    const RecordCodec* other = nullptr;
    return codec.compare_exchange_strong(other, made.get()) ? *made.release() : *other;
}

RecordCodec::RecordCodec(const json::RecordDescription& description)
    : name(description.name), renew(description.renew), lenient(description.lenient) {
    json::FieldList list;
    description.listFields(list);
    fields = std::move(list.fields);
    if (fields.size() > maxFields) fatalStop("too many fields in a record");
    slots_.fill(static_cast<std::uint8_t>(notFound));
    for (std::size_t index = 0; index < fields.size(); ++index) {
        std::size_t slot = hash(fields[index].key.name());
        while (slots_[slot % slots_.size()] != notFound) ++slot;
        slots_[slot % slots_.size()] = static_cast<std::uint8_t>(index);
        required[index] = !lenient && fields[index].mustBeThere();
        setFollower(index, index + 1 < fields.size() ? index + 1 : notFound);
    }
    setFollower(notFound, fields.empty() ? notFound : 0);
}

std::size_t RecordCodec::find(std::string_view key) const {
    for (std::size_t slot = hash(key);; ++slot) {
        const std::size_t index = slots_[slot % slots_.size()];
        if (index == notFound || fields[index].key.name() == key) return index;
    }
}

/// The ends and the length tell the keys of one record well enough apart.
std::size_t RecordCodec::hash(std::string_view key) {
    if (key.empty()) return 0;
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(key[at]); };
    return byte(0) + 5U * byte(key.size() / 2) + 11U * byte(key.size() - 1) + 23U * key.size();
}

std::string_view recordName(const RecordCodec& codec) {
    return codec.name;
}

}  // namespace baseapi::inline v1
