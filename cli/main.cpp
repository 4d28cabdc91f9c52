#include <cstdlib>

#include "cli/run.h"

int main(int argc, char** argv) {
    // Threads of the library run until the process ends: nothing that they use may be taken down before.
    std::_Exit(quillbox::run(argc, argv));
}
