#include "Extension/Tips/TipItem.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace foliovault {
namespace {

const TipItem tip{
    .title = "Title", .description = "Text", .link = "https://a.example/b?c=d&e=ä", .pubDate = {1}, .guid = "g"};

TEST(TipItem, LinksToItsArticleThroughTheApplication) {
    const std::pair<const char*, const char*> rows[]{
        {"https://a.example/b c?d=e&f",
         "x-foliovault://open-url?location=https://a.example/b%20c?d%3De%26f&widget=tips"},
        {"x-foliovault-item://A", "x-foliovault-item://A?widget=tips"},
        {"", "none"},
    };
    for (const auto& [link, expected] : rows) {
        const auto url = TipItem{.link = link}.url();
        EXPECT_EQ(url ? url->absoluteString() : "none", expected);
    }
}

TEST(TipItem, IsItsFieldsAndIsKnownByItsGuid) {
    EXPECT_EQ(tip.id(), tip.guid);
    std::unordered_set<TipItem> items{tip, TipItem(tip)};
    EXPECT_EQ(items.size(), 1U);
    for (std::string TipItem::*field : {&TipItem::title, &TipItem::description, &TipItem::link, &TipItem::guid}) {
        TipItem other = tip;
        other.*field += "x";
        items.insert(other);
    }
    TipItem later = tip;
    later.pubDate = {2};
    items.insert(later);
    EXPECT_EQ(items.size(), 6U);
}

TEST(TipItem, HasSamplesOfTheLastDays) {
    const auto& samples = TipItem::sampleItems();
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples[0].pubDate.addingSeconds(-172800), samples[2].pubDate);
    EXPECT_EQ(samples[2].guid, "sample3");
    for (const TipItem& sample : samples) {
        EXPECT_TRUE(sample.link.starts_with("https://") && sample.link.ends_with("/blog/" + sample.guid))
            << sample.link;
        EXPECT_TRUE(sample.url().has_value());
    }
}

} // namespace
} // namespace foliovault
