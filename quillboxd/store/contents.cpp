#include "quillboxd/store/contents.h"

#include <algorithm>

#include "quillboxd/store/content_reader.h"
#include "quillboxd/store/database.h"

namespace quillboxd {

std::optional<std::int64_t> Contents::find(std::string_view sha256, std::int64_t length) {
    auto found = database_.query("SELECT id FROM contents WHERE sha256 = ? AND length = ?", sha256, length);
    if (!found.next()) return std::nullopt;
    return found.integer(0);
}

std::int64_t Contents::add(std::string_view sha256, std::int64_t length, const std::vector<Piece>& pieces) {
    database_.run("INSERT INTO contents (sha256, length) VALUES (?, ?)", sha256, length);
    const auto content = find(sha256, length).value();
    std::int64_t start = 0;
    for (const auto& piece : pieces) {
        database_.run("INSERT INTO segments (content, start, size, blob) VALUES (?, ?, ?, ?)", content, start,
                      piece.length, piece.blob);
        start += piece.length;
    }
    return content;
}

void Contents::removeUnused(Database& database) {
    database.script(
        "DELETE FROM segments WHERE content NOT IN (SELECT content FROM used_contents);"
        "DELETE FROM contents WHERE id NOT IN (SELECT content FROM used_contents);");
}

std::vector<Piece> Contents::pieces(std::int64_t content, std::int64_t offset, std::int64_t length) {
    const auto end = offset + length;
    auto rows = database_.query(
        "SELECT blob, start, size FROM segments WHERE content = ?1 AND start < ?3 AND start >= "
        "(SELECT coalesce(max(start), 0) FROM segments WHERE content = ?1 AND start <= ?2) ORDER BY start",
        content, offset, end);
    std::vector<Piece> pieces;
    while (rows.next()) {
        const auto start = rows.integer(1);
        const auto from = std::max(offset, start);
        pieces.push_back({rows.text(0), from - start, std::min(end, start + rows.integer(2)) - from});
    }
    return pieces;
}

std::string Contents::read(std::int64_t content, std::int64_t offset, std::int64_t length) {
    std::string bytes(static_cast<std::size_t>(length), '\0');
    ContentReader reader(blobs_, pieces(content, offset, length));
    bytes.resize(reader.read(0, bytes.data(), bytes.size()));
    return bytes;
}

}  // namespace quillboxd
