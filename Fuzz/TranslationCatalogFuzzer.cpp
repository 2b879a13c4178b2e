// Reads any file as a catalog, whose texts are found by their keys and for every number; and as a plural rule.

#include "Platform/Foundation/PluralRule.h"
#include "Platform/Foundation/TranslationCatalog.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

/// Requires a little-endian machine.
std::size_t numberAt(const std::string& file, std::size_t offset) {
    std::uint32_t number = 0;
    std::memcpy(&number, file.data() + offset, sizeof number);
    return number;
}

std::string textAt(const std::string& file, std::size_t row) {
    return file.substr(numberAt(file, row + 4), numberAt(file, row));
}

void check(bool isRight) {
    if (!isRight) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file(reinterpret_cast<const char*>(data), size);
    platform::evaluatePluralRule(file, size);
    const auto catalog = platform::TranslationCatalog::parse(platform::Data::owning(file));
    if (!catalog) {
        return 0;
    }
    for (std::size_t i = 0; i < numberAt(file, 8); ++i) {
        const std::string key = textAt(file, numberAt(file, 12) + 8 * i).c_str();
        const std::string forms = textAt(file, numberAt(file, 16) + 8 * i);
        check(std::string(catalog->find(key).value_or("")) == forms.c_str());
        for (const unsigned long count : {0UL, 1UL, 2UL, 5UL, ~0UL}) {
            const std::string form(catalog->find(key, count).value_or(""));
            const std::string all = '\0' + forms + '\0';
            check(all.find('\0' + form + '\0') != std::string::npos || form.empty());
        }
    }
    return 0;
}
