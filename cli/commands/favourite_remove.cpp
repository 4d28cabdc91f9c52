#include "cli/commands/commands.h"
#include "cli/favourite_change.h"

namespace quillbox {

std::unique_ptr<Command> makeFavouriteRemove() {
    return makeFavouriteChange("favourite-remove", "Make files and folders favourites no more", false);
}

}  // namespace quillbox
