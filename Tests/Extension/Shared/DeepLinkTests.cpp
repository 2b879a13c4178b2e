#include "Extension/Shared/DeepLink.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

std::string tagged(const char* text) {
    const auto url = platform::URL::parse(text);
    return url ? taggedForWidget(*url, "favorites").absoluteString() : "no URL";
}

TEST(DeepLink, TagsTheApplicationsOwnSchemesAlone) {
    const std::pair<const char*, const char*> rows[]{
        {"x-foliovault-item://ABC", "x-foliovault-item://ABC?widget=favorites"},
        {"x-foliovault://open-workspace?name=Writing", "x-foliovault://open-workspace?name=Writing&widget=favorites"},
        {"X-FolioVault-Item://ABC", "X-FolioVault-Item://ABC?widget=favorites"},
        {"x-foliovault-item://ABC?widget=favorites", "x-foliovault-item://ABC?widget=favorites&widget=favorites"},
        {"x-foliovault-item://ABC?page=2#end", "x-foliovault-item://ABC?page=2&widget=favorites#end"},
        {"x-foliovault-item://ABC?q=a%2Bb&empty", "x-foliovault-item://ABC?q=a+b&empty&widget=favorites"},
        {"x-foliovault-items://ABC", "x-foliovault-items://ABC"},
        {"https://h/p?a=1", "https://h/p?a=1"},
        {"//ABC", "//ABC"},
        {"ABC", "ABC"},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(tagged(text), expected);
    }
}

TEST(DeepLink, WrapsWebAddresses) {
    const std::pair<const char*, const char*> rows[]{
        {"https://h/p?a=1&b=2", "x-foliovault://open-url?location=https://h/p?a%3D1%26b%3D2&widget=readinglist"},
        {"HTTP://h", "x-foliovault://open-url?location=HTTP://h&widget=readinglist"},
        {"http://h/a+b%20c d#e", "x-foliovault://open-url?location=http://h/a%2Bb%2520c%20d%23e&widget=readinglist"},
        {"http://bücher.de", "x-foliovault://open-url?location=http://b%C3%BCcher.de&widget=readinglist"},
        {"http://h/-._~!$'()*,;:@/?", "x-foliovault://open-url?location=http://h/-._~!$'()*,;:@/?&widget=readinglist"},
        {"x-foliovault-item://A", "x-foliovault-item://A?widget=readinglist"},
        {"mailto:a@b", "mailto:a@b"},
        {"just text", "just%20text"},
        {"", nullptr},
        {"1a:b", nullptr},
        {"http://a b.com", nullptr},
    };
    for (const auto& [text, expected] : rows) {
        const auto url = foliovaultOpenURL(text, "readinglist");
        ASSERT_EQ(url.has_value(), expected != nullptr) << text;
        if (url) {
            EXPECT_EQ(url->absoluteString(), expected);
        }
    }
}

} // namespace
} // namespace foliovault
