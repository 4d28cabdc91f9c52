#include "baseapi/json/schema.h"

#include <utility>

#include "baseapi/json/codec.h"
#include "baseapi/platform/fatal_stop.h"

namespace baseapi {

RecordCodec::RecordCodec(std::string_view recordName, bool takesMissingKeys, void (*resetRecord)(void*),
                         std::vector<json::Field> recordFields)
    : name(recordName), lenient(takesMissingKeys), reset(resetRecord), fields(std::move(recordFields)) {
    if (fields.size() > maxFields) fatalStop("too many fields in a record");
    slots_.fill(static_cast<std::uint8_t>(notFound));
    for (std::size_t index = 0; index < fields.size(); ++index) {
        if (fields[index].quotedKey.size() > longestKey) fatalStop("too long a key in a record");
        std::size_t slot = hash(fields[index].key());
        while (slots_[slot % slots_.size()] != notFound) ++slot;
        slots_[slot % slots_.size()] = static_cast<std::uint8_t>(index);
    }
}

std::size_t RecordCodec::find(std::string_view key) const {
    for (std::size_t slot = hash(key);; ++slot) {
        const std::size_t index = slots_[slot % slots_.size()];
        if (index == notFound || fields[index].key() == key) return index;
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

}  // namespace baseapi
