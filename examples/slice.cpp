#include <iostream>

#include "hostkit/slice_file.h"

// slice FILE: what a slicer tells the library of a file.
int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const auto text = hostkit::SliceFile().calcSha256(baseapi::URL::file(argv[1]));
    std::cout << text.value_or("it cannot be read") << '\n';
    return text ? 0 : 1;
}
