#include "quillboxd/handlers/share_visit.h"

#include <algorithm>

#include "quillboxd/handlers/share_audience.h"
#include "quillboxd/store/users.h"

namespace quillboxd::shares {
namespace {

bool isChosen(Call& call, const Share& share) {
    Shares shares(call.service.database);
    return std::any_of(std::begin(audienceKeys), std::end(audienceKeys), [&](const AudienceKey& key) {
        const auto members = shares.audience(share.id, key.kind);
        return std::any_of(members.begin(), members.end(),
                           [&](const std::string& id) { return belongs(call, key.kind, id); });
    });
}

/// Whoever may not sign in shares nothing either.
void requireActiveOwner(Call& call, const Share& share) {
    const auto owner = Users(call.service.database).find(share.account);
    if (!owner) notFound("whoever made the link is gone");
    if (owner->status == UserStatus::suspended) forbidden("whoever made the link is suspended");
}

}  // namespace

bool isOwner(const Call& call, const Share& share) {
    return call.account.id == share.account;
}

std::string ownerName(Call& call, const Share& share) {
    const auto owner = Users(call.service.database).find(share.account);
    return owner ? owner->name : "";
}

Share requireLink(Call& call, std::string_view shortUrl) {
    const auto share = Shares(call.service.database).find(shortUrl);
    if (!share) notFound("there is no link \"" + std::string(shortUrl) + "\"");
    requireActiveOwner(call, *share);
    if (share->status() == ShareStatus::expired) forbidden("the link has expired");
    if (share->scope == ShareScope::chosen && !isOwner(call, *share) && !isChosen(call, *share))
        forbidden("the link is for chosen people, who are signed in");
    return *share;
}

bool codeFits(const Call& call, const Share& share, std::string_view code) {
    return share.extractCode.empty() || share.extractCode == code || isOwner(call, share);
}

Page listFiles(Call& call, const Share& share, std::string_view folder, std::string_view keyWord,
               const PageRequest& page) {
    Shares shares(call.service.database);
    if (folder.empty()) return shares.files(share.id, keyWord, page);
    const auto path = shares.pathInside(share, folder);
    if (path.empty()) notFound("the link holds no folder \"" + std::string(folder) + "\"");
    if (path.back().isFile) badRequest("\"" + std::string(folder) + "\" is a file, not a folder");
    return pickNodes(call.service.database, "parent = ?2 AND hidden = 0", path.back().id, keyWord, page);
}

void requireOpenFor(Call& call, const ContentAddress& address) {
    Shares shares(call.service.database);
    const auto share = shares.find(address.share);
    if (!share) notFound("the link of this address is gone");
    requireActiveOwner(call, *share);
    if (share->status() == ShareStatus::expired) forbidden("the link of this address has expired");
    if (!(address.inlineView ? share->permission.preview : share->permission.download))
        forbidden("the link no longer permits this");
    if (shares.pathInside(*share, Tree::wireId(address.file)).empty())
        notFound("the link no longer holds this file");
}

}  // namespace quillboxd::shares
