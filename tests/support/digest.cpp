#include "digest.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "fault.h"

namespace kormtest {
namespace {

int compare(const char* file, const std::string& lines) {
    std::ifstream stream(file);
    std::stringstream committed;
    committed << stream.rdbuf();
    std::istringstream expected(committed.str()), found(lines);
    int differences = 0;
    for (std::string a, b;;) {
        const bool more = static_cast<bool>(std::getline(expected, a));
        if (more != static_cast<bool>(std::getline(found, b))) {
            std::printf("%s has another number of lines\n", file);
            ++differences;
            break;
        }
        if (!more) break;
        if (a == b) continue;
        std::printf("committed %s\nfound     %s\n", a.c_str(), b.c_str());
        ++differences;
    }
    return differences == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

std::uint64_t seedOfName(const std::string& name) {
    Digest digest;
    digest.add(reinterpret_cast<const std::byte*>(name.data()), name.size());
    return digest.value();
}

std::string digestLine(const std::string& name, int width, std::uint64_t digest) {
    char line[120];
    std::snprintf(line, sizeof line, "%-*s %016llx\n", width, name.c_str(), static_cast<unsigned long long>(digest));
    return line;
}

int runDigests(int argc, char** argv, const char* program, std::string (*allDigests)(Digested)) {
    installFaultHandlers();
    const std::string command = argc > 1 ? argv[1] : "";
    if (argc == 1 || (argc == 2 && command == "everything")) {
        std::fputs(allDigests(argc == 1 ? Digested::fixedBits : Digested::everything).c_str(), stdout);
        return EXIT_SUCCESS;
    }
    if (argc == 3 && command == "check") return compare(argv[2], allDigests(Digested::fixedBits));
    std::fprintf(stderr, "usage: %s [check FILE | everything]\n", program);
    return 2;
}

}  // namespace kormtest
