// feed_benchmark FILE ROUNDS: our tips of a feed, beside expat going through the same bytes with handlers that do
// nothing.

#include "Benchmarks/Rounds.h"

#include "Extension/Tips/RSSParser.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <expat.h>

namespace {

void expectGood(bool isGood) {
    if (!isGood) {
        std::fprintf(stderr, "nothing was read\n");
        std::exit(1);
    }
}

bool passes(const std::string& document) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetElementHandler(
        parser, [](void*, const char*, const char**) {}, [](void*, const char*) {});
    XML_SetCharacterDataHandler(parser, [](void*, const char*, int) {});
    XML_SetCdataSectionHandler(
        parser, [](void*) {}, [](void*) {});
    const bool isGood = XML_Parse(parser, document.data(), static_cast<int>(document.size()), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return isGood;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: feed_benchmark FILE ROUNDS\n");
        return 64;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    benchmarks::timeByTurns(
        {
            {"tips", [&] { expectGood(!foliovault::RSSParser::parseTips(document).empty()); }},
            {"expat", [&] { expectGood(passes(document)); }},
        },
        std::atoi(argv[2]));
}
