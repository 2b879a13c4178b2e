// Prints texts in the language of its environment, one a line: the domain first, then keys. A key with a number before
// it, as in "2 %lld items", is a count. "search TEXT NEEDLE" prints whether the one contains the other.

#include "Platform/Foundation/Localization.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int count, char** arguments) {
    platform::startLocalization(arguments[1]);
    for (int index = 2; index < count; ++index) {
        char* key = nullptr;
        const long long number = std::strtoll(arguments[index], &key, 10);
        if (std::strcmp(arguments[index], "search") == 0 && index + 2 < count) {
            const bool isFound = platform::localizedCaseInsensitiveContains(arguments[index + 1], arguments[index + 2]);
            std::puts(isFound ? "found" : "not found");
            index += 2;
        } else if (key != arguments[index] && *key == ' ') {
            std::puts(platform::localizedCount(key + 1, number).c_str());
        } else {
            std::puts(platform::localized(arguments[index]).c_str());
        }
    }
}
