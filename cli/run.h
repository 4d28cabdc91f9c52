#pragma once

namespace quillbox {

/// The whole program. Returns its exit status.
int run(int argc, char** argv);

}  // namespace quillbox
