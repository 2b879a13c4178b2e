#include "Platform/Foundation/URLComponents.h"

#include <gtest/gtest.h>

namespace platform {

void PrintTo(const URLQueryItem& item, std::ostream* out) {
    *out << item.name << " = " << item.value.value_or("(none)");
}

namespace {

using Items = std::vector<URLQueryItem>;

std::optional<std::string> text(const std::optional<URL>& url) {
    return url ? std::optional(url->absoluteString()) : std::nullopt;
}

TEST(URLComponents, ReadsQueryItems) {
    const std::vector<std::pair<std::string, std::optional<Items>>> queries = {
        {"x:", std::nullopt},
        {"x:#?a=b", std::nullopt},
        {"x:?", Items{}},
        {"x:?a", Items{{"a", std::nullopt}}},
        {"x:?a=", Items{{"a", ""}}},
        {"x:?=", Items{{"", ""}}},
        {"x:?a=b=c", Items{{"a", "b=c"}}},
        {"x:?a&&b", Items{{"a", std::nullopt}, {"", std::nullopt}, {"b", std::nullopt}}},
        {"x:?&", Items{{"", std::nullopt}, {"", std::nullopt}}},
        {"x:?a+b=c+d%2B%20%26%c3%a4#a=b", Items{{"a+b", "c+d+ &ä"}}},
        {"x:?a=1&a=2", Items{{"a", "1"}, {"a", "2"}}},
    };
    for (const auto& [address, items] : queries) {
        EXPECT_EQ(URLComponents::of(*URL::parse(address))->queryItems(), items) << address;
    }
}

TEST(URLComponents, SetQueryItemsAreEncoded) {
    const std::vector<std::pair<Items, std::string>> queries = {
        {{}, "?"},
        {{{"", std::nullopt}}, "?"},
        {{{"a", std::nullopt}, {"b", ""}, {"", "c"}}, "?a&b=&=c"},
        {{{"a=b", "c=d&e"}}, "?a%3Db=c%3Dd%26e"},
        {{{"AZaz09-._~!$'()*+,;:@/?", "AZaz09-._~!$'()*+,;:@/?"}}, "?AZaz09-._~!$'()*+,;:@/?=AZaz09-._~!$'()*+,;:@/?"},
        {{{"q", " %#[]\"<>\\^`{|}\x7Fä\xFF\n"}}, "?q=%20%25%23%5B%5D%22%3C%3E%5C%5E%60%7B%7C%7D%7F%C3%A4%FF%0A"},
    };
    for (const auto& [items, query] : queries) {
        auto components = *URLComponents::of(*URL::parse("x:/p?old#f"));
        components.setQueryItems(items);
        const auto url = components.url();
        EXPECT_EQ(text(url), "x:/p" + query + "#f");
        EXPECT_EQ(URL::parse(url->absoluteString())->encodedQuery(), url->encodedQuery());
    }
}

TEST(URLComponents, SettingWhatWasReadNormalizes) {
    auto components = *URLComponents::of(*URL::parse("x:?a=%2B&b=%2F&a=b=c&%7e"));
    components.setQueryItems(*components.queryItems());
    EXPECT_EQ(text(components.url()), "x:?a=+&b=/&a=b%3Dc&~");
}

TEST(URLComponents, EverythingButTheQueryIsKept) {
    const std::vector<std::pair<std::string, std::string>> addresses = {
        {"x-foliovault-item://ABC", "x-foliovault-item://ABC?widget=favorites"},
        {"x-foliovault-item://", "x-foliovault-item://?widget=favorites"},
        {"x-foliovault-item:", "x-foliovault-item:?widget=favorites"},
        {"x:///p", "x:///p?widget=favorites"},
        {"HTTP://u:p%3a@H%41:080/%7e/;a?x=1#f%41", "HTTP://u:p%3a@H%41:080/%7e/;a?widget=favorites#f%41"},
        {"http://@:/", "http://@:/?widget=favorites"},
        {"http://[::1%25a]:8//", "http://[::1%25a]:8//?widget=favorites"},
        {"http://[v1.a]", "http://[v1.a]?widget=favorites"},
        {"//h", "//h?widget=favorites"},
        {"a@b:c", "a@b:c?widget=favorites"},
        {"#f", "?widget=favorites#f"},
    };
    for (const auto& [address, tagged] : addresses) {
        const URL url = *URL::parse(address);
        auto components = *URLComponents::of(url);
        EXPECT_EQ(components.url(), url);
        components.setQueryItems({{"widget", "favorites"}});
        EXPECT_EQ(text(components.url()), tagged);
    }
}

TEST(URLComponents, SchemeAndHostSetAnew) {
    struct Change {
        std::string address;
        std::optional<std::string> scheme;
        std::optional<std::string> host;
        /// Nothing where they make no URL.
        std::optional<std::string> expected;
    };
    const std::vector<Change> changes = {
        {"http://u@h:80/p?q#f", "https", "other", "https://u@other:80/p?q#f"},
        {"http://h/p", "http", std::nullopt, "http:/p"},
        {"http://h/p", std::nullopt, std::nullopt, "/p"},
        {"http://u@h/p", "http", std::nullopt, "http://u@/p"},
        {"x://", "y", std::nullopt, "y://"},
        {"/p", "x", "h", "x://h/p"},
        {"x:?q", "x", "h", "x://h?q"},
        {"http://h", "http", "", "http://"},
        // Hosts as an address holds them.
        {"x:", "x", "a b/c", "x://a%20b%2Fc"},
        {"x:", "x", "50%41", "x://50%2541"},
        {"http://%41", "http", "%41", "http://%2541"},
        {"x:", "x", "::1", "x://[::1]"},
        {"http://[::1]", "http", "fe80::1%en0", "http://[fe80::1%25en0]"},
        {"x:", "x", "bücher", "x://xn--bcher-kva"},
        {"x:", "x", "ü b", std::nullopt},
        // Parts that make none.
        {"x:", "", std::nullopt, std::nullopt},
        {"x:", "1x", std::nullopt, std::nullopt},
        {"x:", "a b", std::nullopt, std::nullopt},
        {"x:", std::nullopt, std::nullopt, std::nullopt},
        {"mailto:a@b", "mailto", "h", std::nullopt},
        {"x://h//p", "x", std::nullopt, std::nullopt},
        {"x:a:b", std::nullopt, std::nullopt, std::nullopt},
        {"x:a/b:c", std::nullopt, std::nullopt, "a/b:c"},
        {"x:a@b:c", std::nullopt, std::nullopt, "a@b:c"},
    };
    for (const auto& [address, scheme, host, expected] : changes) {
        SCOPED_TRACE(address + " → " + expected.value_or("(none)"));
        auto components = *URLComponents::of(*URL::parse(address));
        components.scheme = scheme;
        components.host = host;
        const auto url = components.url();
        EXPECT_EQ(text(url), expected);
        if (url) {
            const auto again = URL::parse(url->absoluteString());
            ASSERT_TRUE(again);
            EXPECT_EQ(again->scheme(), url->scheme());
            EXPECT_EQ(again->host(), url->host());
            EXPECT_EQ(again->path(), url->path());
            EXPECT_EQ(again->encodedQuery(), url->encodedQuery());
        }
    }
}

TEST(URLComponents, FromNothing) {
    URLComponents components;
    EXPECT_EQ(text(components.url()), std::nullopt);
    components.setQueryItems({{"a", std::nullopt}});
    EXPECT_EQ(text(components.url()), "?a");
    components.scheme = "x-foliovault";
    components.host = "open-path";
    components.setQueryItems({{"path", "/a b&c"}});
    EXPECT_EQ(text(components.url()), "x-foliovault://open-path?path=/a%20b%26c");
    EXPECT_EQ(components.url()->host(), "open-path");
}

} // namespace
} // namespace platform
