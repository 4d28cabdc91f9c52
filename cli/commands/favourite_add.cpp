#include "cli/commands/commands.h"
#include "cli/favourite_change.h"

namespace quillbox {

std::unique_ptr<Command> makeFavouriteAdd() {
    return makeFavouriteChange("favourite-add", "Make files and folders favourites", true);
}

}  // namespace quillbox
