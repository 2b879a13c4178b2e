#include "Extension/ReadingList/ReadingListItem.h"

#include "Extension/Shared/DisplayableItem.h"

#include <gtest/gtest.h>

#include <tuple>

namespace foliovault {
namespace {

static_assert(DisplayableItem<ReadingListItem>);

constexpr auto none = std::nullopt;

ReadingListItem item(std::string address, bool isUnread = true, std::int64_t type = 12) {
    return {std::move(address), "title", isUnread, {}, type, none};
}

TEST(ReadingListItem, SaysWhatItIsAndWhereOnTheWeb) {
    const std::tuple<const char*, std::optional<std::string>, const char*> rows[]{
        {"https://www.museum.example/a", "museum.example", "PDF · museum.example"},
        {"HTTP://museum.example", "museum.example", "PDF · museum.example"},
        {"https://WWW.Museum.example/", "WWW.Museum.example", "PDF · WWW.Museum.example"},
        {"https://www.www.example", "www.example", "PDF · www.example"},
        {"https://wwwmuseum.example", "wwwmuseum.example", "PDF · wwwmuseum.example"},
        {"https://www./", "", "PDF · "},
        {"https://user@museum.example:8080/", "museum.example", "PDF · museum.example"},
        {"https://b\u00FCcher.example/", "xn--bcher-kva.example", "PDF · xn--bcher-kva.example"},
        {"https://museum.example/a b", "museum.example", "PDF · museum.example"},
        {"https://[::1]/", "::1", "PDF · ::1"},
        {"https:///a", none, "PDF"},
        {"https://user@/", none, "PDF"},
        {"https:museum.example", none, "PDF"},
        {"//www.museum.example", none, "PDF"},
        {"ftp://museum.example", none, "PDF"},
        {"x-foliovault-item://museum.example", none, "PDF"},
        {"https://a b.example", none, "PDF"},
        {"", none, "PDF"},
    };
    for (const auto& [address, host, subtitle] : rows) {
        EXPECT_EQ(item(address).sourceHost(), host) << address;
        EXPECT_EQ(item(address).displaySubtitle(), subtitle) << address;
    }
    EXPECT_EQ(item("x:", true, 999).subtitle(), "Document");
}

TEST(ReadingListItem, OpensItsAddressThroughTheApplication) {
    const std::pair<const char*, std::optional<std::string>> rows[]{
        {"https://museum.example/a?b=c&d#e",
         "x-foliovault://open-url?location=https://museum.example/a?b%3Dc%26d%23e&widget=readinglist"},
        {"x-foliovault-item://A", "x-foliovault-item://A?widget=readinglist"},
        {"ftp://museum.example", "ftp://museum.example"},
        {"", none},
        {"https://a b.example", none},
    };
    for (const auto& [address, expected] : rows) {
        const auto url = item(address).displayURL();
        EXPECT_EQ(url ? std::optional(url->absoluteString()) : none, expected) << address;
    }
}

TEST(ReadingListItem, HasADotWhileUnread) {
    EXPECT_EQ(item("x:", true).dotColor(), platform::Color::blue);
    EXPECT_EQ(item("x:", false).dotColor(), none);
}

TEST(ReadingListItem, IsKnownByItsAddressAlone) {
    const ReadingListItem other("x:", "another", false, {7}, 1, none);
    EXPECT_EQ(item("x:"), other);
    EXPECT_EQ(std::hash<ReadingListItem>{}(item("x:")), std::hash<ReadingListItem>{}(other));
    EXPECT_FALSE(item("x:") == item("X:"));
}

} // namespace
} // namespace foliovault
