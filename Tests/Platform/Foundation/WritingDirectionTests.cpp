#include "Platform/Foundation/WritingDirection.h"

#include <gtest/gtest.h>
#include <unicode/uloc.h>

#include <algorithm>

namespace platform {
namespace {

void expectAsIcuHasIt(std::string locale) {
    const bool expected = uloc_isRightToLeft(locale.c_str()) != 0;
    std::replace(locale.begin(), locale.end(), '_', '-');
    EXPECT_EQ(isRightToLeft(std::string_view(locale)), expected) << locale;
}

TEST(WritingDirection, IsAsIcuHasItForEveryLocale) {
    int count = 0;
    for (; count < uloc_countAvailable(); ++count) {
        expectAsIcuHasIt(uloc_getAvailable(count));
    }
    EXPECT_GT(count, 700);
}

TEST(WritingDirection, IsAsIcuHasItForEveryLanguageInEveryCountry) {
    for (const char* const* language = uloc_getISOLanguages(); *language != nullptr; ++language) {
        // "und" is any language.
        if (std::string_view(*language) == "und") {
            continue;
        }
        expectAsIcuHasIt(*language);
        for (const char* const* country = uloc_getISOCountries(); *country != nullptr; ++country) {
            expectAsIcuHasIt(std::string(*language) + "_" + *country);
        }
    }
}

TEST(WritingDirection, GoesByTheFirstLanguage) {
    using Languages = std::vector<std::string>;
    EXPECT_TRUE(isRightToLeft(Languages{"ar-EG", "en"}));
    EXPECT_TRUE(isRightToLeft(Languages{"IW-il"}));
    EXPECT_TRUE(isRightToLeft(Languages{"az-Arab-RU"}));
    EXPECT_FALSE(isRightToLeft(Languages{"ar-Latn-EG"}));
    EXPECT_FALSE(isRightToLeft(Languages{"de", "he"}));
    EXPECT_FALSE(isRightToLeft(Languages{}));
    for (const char* odd : {"", "-", "--", "ar1", "a", "-ar", "arabic"}) {
        EXPECT_FALSE(isRightToLeft(Languages{odd})) << odd;
    }
}

} // namespace
} // namespace platform
