#include "baseapi/core/log.h"

#include <algorithm>
#include <span>

#include "baseapi/platform/platform.h"

namespace baseapi {

void logPieces(std::initializer_list<LogPiece> pieces) {
    std::array<std::string_view, logPiecesMax> views;
    std::transform(pieces.begin(), pieces.end(), views.begin(),
                   [](const LogPiece& piece) { return piece.view(); });
    platform().log->line(std::span(views).first(pieces.size()));
}

}  // namespace baseapi
