// The other side of the comparisons: bench_server --port-file FILE

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "bench/sink_server.h"

int main(int count, char** arguments) {
    if (count != 3 || std::string_view(arguments[1]) != "--port-file") {
        std::fputs("usage: bench_server --port-file FILE\n", stderr);
        return 2;
    }
    bench::SinkServer server;
    const std::filesystem::path file = arguments[2];
    auto unfinished = file;
    unfinished += ".new";
    std::ofstream(unfinished) << server.port() << '\n';
    std::filesystem::rename(unfinished, file);
    server.run();
}
