#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/DocumentType.h"
#include "Extension/Shared/FOLIOvaultPaths.h"

#include "Tests/Support/FakeUserDatabase.h"

#include <gtest/gtest.h>

#include <tuple>

namespace foliovault {
namespace {

TEST(DeepLink, TagsTheApplicationsOwnSchemesAlone) {
    const std::pair<const char*, const char*> rows[]{
        {"x-foliovault-item://ABC", "x-foliovault-item://ABC?widget=favorites"},
        {"x-foliovault://open-workspace?name=Writing", "x-foliovault://open-workspace?name=Writing&widget=favorites"},
        {"X-FolioVault-SmartGroup://ABC", "X-FolioVault-SmartGroup://ABC?widget=favorites"},
        {"x-foliovault-item://ABC?widget=favorites", "x-foliovault-item://ABC?widget=favorites&widget=favorites"},
        {"x-foliovault-item://ABC?q=a%2Bb&empty#end", "x-foliovault-item://ABC?q=a+b&empty&widget=favorites#end"},
        {"x-foliovault-items://ABC", "x-foliovault-items://ABC"},
        {"//ABC", "//ABC"},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(taggedForWidget(*platform::URL::parse(text), "favorites").absoluteString(), expected);
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
        {"", "-"},
        {"http://a b.com", "-"},
    };
    for (const auto& [text, expected] : rows) {
        const auto url = foliovaultOpenURL(text, "readinglist");
        EXPECT_EQ(url ? url->absoluteString() : "-", expected);
    }
}

TEST(DocumentType, KnowsItsCodesAndNoOthers) {
    const std::tuple<std::int64_t, const char*, const char*> rows[]{
        {1, "folder", "Group"}, {4, "doc.richtext", "RTF"}, {12, "doc.text", "PDF"}, {16, "tablecells", "Sheet"},
        {111, "tag", "Tag"},    {112, "tag", "Tag Group"},  {120, "video", "Video"}, {126, "doc.text", "PDF"}};
    for (const auto& [code, symbol, label] : rows) {
        EXPECT_EQ(DocumentType::sfSymbol(code), symbol) << code;
        EXPECT_EQ(DocumentType::label(code), label) << code;
    }
    for (const std::int64_t unknown : {0, 17, 109, 113, 119, 127}) {
        EXPECT_EQ(DocumentType::sfSymbol(unknown), "doc") << unknown;
        EXPECT_EQ(DocumentType::label(unknown), "Document") << unknown;
    }
}

TEST(FOLIOvaultPaths, LieBelowTheRecordedHomeElseTheProcesses) {
    const FOLIOvaultPaths paths(platform::FakeUserDatabase("/home/Ada Ä", "/container"));
    EXPECT_EQ(paths.realHome, "/home/Ada Ä");
    EXPECT_EQ(paths.appSupportURL.absoluteString(),
              "file:///home/Ada%20%C3%84/Library/Application%20Support/FOLIOvault");
    EXPECT_EQ(FOLIOvaultPaths(platform::FakeUserDatabase(std::nullopt, "/container/")).favoritesURL.path(),
              "/container/Library/Application Support/FOLIOvault/Favorites.plist");
}

} // namespace
} // namespace foliovault
