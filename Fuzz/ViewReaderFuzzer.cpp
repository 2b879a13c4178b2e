// Reads any JSON as a view tree. A valid one is the same after writing and reading.

#include "Platform/Views/ViewReader.h"
#include "Platform/Views/ViewWriter.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    simdjson::dom::parser parser;
    simdjson::dom::element json;
    if (parser.parse(reinterpret_cast<const char*>(bytes), size).get(json) != simdjson::SUCCESS) {
        return 0;
    }
    const auto view = platform::readView(json);
    if (!view) {
        return 0;
    }
    std::string text;
    platform::JsonWriter out(text);
    platform::writeView(out, *view);
    simdjson::dom::parser again;
    const auto reread = platform::readView(again.parse(text));
    if (!reread || !(*reread == *view)) {
        std::abort();
    }
    return 0;
}
