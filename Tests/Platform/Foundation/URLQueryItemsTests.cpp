#include "Platform/Foundation/URL.h"

#include <gtest/gtest.h>

namespace platform {

void PrintTo(const URLQueryItem& item, std::ostream* out) {
    *out << item.name << " = " << item.value.value_or("(none)");
}

namespace {

using Items = std::vector<URLQueryItem>;

TEST(URLQueryItems, AreRead) {
    const std::vector<std::pair<std::string, std::optional<Items>>> queries = {
        {"x:", std::nullopt},
        {"x:#?a=b", std::nullopt},
        {"x:?", Items{}},
        {"x:?=", Items{{"", ""}}},
        {"x:?a=b=c", Items{{"a", "b=c"}}},
        {"x:?a&&b", Items{{"a", std::nullopt}, {"", std::nullopt}, {"b", std::nullopt}}},
        {"x:?&", Items{{"", std::nullopt}, {"", std::nullopt}}},
        {"x:?a+b=c+d%2B%20%26%c3%a4#a=b", Items{{"a+b", "c+d+ &ä"}}},
    };
    for (const auto& [address, items] : queries) {
        EXPECT_EQ(URL::parse(address)->queryItems(), items) << address;
    }
}

TEST(URLQueryItems, AreEncoded) {
    const std::vector<std::pair<Items, std::string>> queries = {
        {{}, "?"},
        {{{"a", std::nullopt}, {"b", ""}, {"", "c"}}, "?a&b=&=c"},
        {{{"a=b", "c=d&e"}}, "?a%3Db=c%3Dd%26e"},
        {{{"AZaz09-._~!$'()*+,;:@/?", "AZaz09-._~!$'()*+,;:@/?"}}, "?AZaz09-._~!$'()*+,;:@/?=AZaz09-._~!$'()*+,;:@/?"},
        {{{"q", " %#[]\"<>\\^`{|}\x7Fä\xFF\n"}}, "?q=%20%25%23%5B%5D%22%3C%3E%5C%5E%60%7B%7C%7D%7F%C3%A4%FF%0A"},
        // What was read is normalized when it is set.
        {*URL::parse("x:?a=%2B&b=%2F&a=b=c&%7e")->queryItems(), "?a=+&b=/&a=b%3Dc&~"},
    };
    for (const auto& [items, query] : queries) {
        const URL url = URL::parse("x:/p?old#f")->withQueryItems(items);
        EXPECT_EQ(url.absoluteString(), "x:/p" + query + "#f");
        EXPECT_EQ("?" + std::string(url.encodedQuery().value()), query);
    }
}

TEST(URLQueryItems, LeaveEverythingElse) {
    const std::vector<std::pair<std::string, std::string>> addresses = {
        {"x-foliovault-item://ABC", "x-foliovault-item://ABC?widget=favorites"},
        {"x-foliovault-item:", "x-foliovault-item:?widget=favorites"},
        {"HTTP://u:p%3a@H%41:080/%7e/;a?x=1#f%41", "HTTP://u:p%3a@H%41:080/%7e/;a?widget=favorites#f%41"},
        {"http://@:/", "http://@:/?widget=favorites"},
        {"http://[::1%25a]:8//", "http://[::1%25a]:8//?widget=favorites"},
        {"a@b:c", "a@b:c?widget=favorites"},
        {"#f", "?widget=favorites#f"},
    };
    for (const auto& [address, tagged] : addresses) {
        EXPECT_EQ(URL::parse(address)->withQueryItems({{"widget", "favorites"}}).absoluteString(), tagged);
    }
}

} // namespace
} // namespace platform
