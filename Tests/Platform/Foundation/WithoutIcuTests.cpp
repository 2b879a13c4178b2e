// How this folder gets along on a machine without ICU.

#include "Platform/Foundation/CaseInsensitiveSearch.h"
#include "Platform/Foundation/Icu.h"
#include "Platform/Foundation/LazyLibrary.h"
#include "Platform/Foundation/URL.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {
int loads = 0;
}

/// Takes the dynamic linker's place: no library can be loaded.
extern "C" void* dlopen(const char* /*fileName*/, int /*mode*/) {
    ++loads;
    return nullptr;
}

namespace platform {
namespace {

TEST(WithoutIcu, HostsOutsideAsciiAreNone) {
    EXPECT_FALSE(URL::parse("http://bücher.de"));
    EXPECT_TRUE(URL::parse("http://h/bücher"));
}

TEST(WithoutIcu, SearchIgnoresTheCaseOfAsciiAlone) {
    EXPECT_TRUE(caseInsensitiveContains("Große GRUPPE", "große gruppe", CaseFolding::standard));
    EXPECT_FALSE(caseInsensitiveContains("ÄPFEL", "äpfel", CaseFolding::standard));
}

TEST(WithoutIcu, LoadingIsTriedOnce) {
    EXPECT_EQ(Icu::shared(), nullptr);
    LazyLibrary library("libabsent.so.1");
    loads = 0;
    std::vector<std::thread> threads(8);
    for (std::thread& thread : threads) {
        thread = std::thread([&library] {
            int (*function)(int) = [](int number) { return number; };
            EXPECT_FALSE(library.find("function", function));
            EXPECT_EQ(function, nullptr);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(loads, 1);
}

} // namespace
} // namespace platform
