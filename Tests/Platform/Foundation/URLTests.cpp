#include "Platform/Foundation/URL.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using Text = std::optional<std::string>;

constexpr auto no = std::nullopt;

struct Address {
    std::string text;
    Text scheme;
    Text host;
    std::string path;
    Text query;
    /// If it is not `text`.
    Text absoluteString;
};

TEST(URL, ReadsAddresses) {
    const Address addresses[]{
        {"x:", "x"},
        {"x://?a", "x", no, "", "a"},
        {"http://@/", "http", "", "/"},
        {"//h/p", no, "h", "/p"},
        {"http://h?", "http", "h", "", ""},
        {"http://h?a?b/c@d:e#f?g", "http", "h", "", "a?b/c@d:e"},
        // A ":" without a scheme.
        {"a/b:c", no, no, "a/b:c"},
        {"#a:b"},
        {"[a:b", no, no, "[a:b", no, "%5Ba%3Ab"},
        {"a@[b:c", no, no, "a@[b:c", no, "a@%5Bb:c"},
        // Authorities.
        {"http://u:p@h:80/", "http", "h", "/"},
        {"http://h:99999999999999999999", "http", "h"},
        {"http://a@b@c/", "http", "c", "/", no, "http://a%40b@c/"},
        {"http://a[@c/", "http", "c", "/", no, "http://a%5B@c/"},
        {"http://u v:%7E w@h/%7E", "http", "h", "/~", no, "http://u%20v:%257E%20w@h/%7E"},
        {"http://[fe80::1%25en0]", "http", "fe80::1%en0"},
        {"HtTp+.-1://A_b~!$&'()*+,;=-.", "HtTp+.-1", "A_b~!$&'()*+,;=-."},
        // Components that are encoded again as a whole, beside those that stay.
        {"https://h/a%20b c", "https", "h", "/a%20b c", no, "https://h/a%2520b%20c"},
        {"https://h/%C3%A4?ä&b#%C3%A4", "https", "h", "/ä", "%C3%A4&b", "https://h/%C3%A4?%C3%A4&b#%C3%A4"},
        {"h?%g1#a#b", no, no, "h", "%25g1", "h?%25g1#a%23b"},
        {{"a\0\x7F\xFF", 4}, no, no, {"a\0\x7F\xFF", 4}, no, "a%00%7F%FF"},
        // Hosts outside ASCII.
        {"http://u@BÜCHER.de:80/ä", "http", "xn--bcher-kva.de", "/ä", no, "http://u@xn--bcher-kva.de:80/%C3%A4"},
        {"http://-ä_b.", "http", "xn---_b-qla.", "", no, "http://xn---_b-qla."},
        {"http://b%C3%BCcher.de", "http", "bücher.de"},
    };
    for (const Address& address : addresses) {
        SCOPED_TRACE(address.text);
        const auto url = URL::parse(address.text);
        ASSERT_TRUE(url);
        EXPECT_EQ(url->scheme(), address.scheme);
        EXPECT_EQ(url->host(), address.host);
        EXPECT_EQ(url->path(), address.path);
        EXPECT_EQ(url->encodedQuery(), address.query);
        EXPECT_EQ(url->absoluteString(), address.absoluteString.value_or(address.text));
        EXPECT_EQ(URL::parse(url->absoluteString()), url) << "reads its own text otherwise";
    }
}

TEST(URL, RefusesOtherTexts) {
    const auto expectRefused = [](const auto&... texts) {
        for (const char* text : {texts...}) {
            EXPECT_FALSE(URL::parse(text)) << text;
        }
    };
    expectRefused("", ":", ":x", "1a:b", " https://h", "a b:c", "ä:b", "-a:b", "a%41:b", "http://a b.com", "http://a{b",
                  "http://a[b]", "http://a]", "http://a%", "http://a%4", "http://a%zz", "http://a%zzü", "http://ü b",
                  "http://\xFF", "http://\xC2\xAD", "http://xn--a.ü", "http://אa", "http://a\u200Db", "http://[::1",
                  "http://[::1]x", "http://[]", "http://[a b]", "http://[[::1]]", "http://[ü]", "http://h:8a",
                  "http://h:80:80", "http://h:-1", "http://[::1]:x", "http://u:p@h:p");
}

TEST(URL, PathsOfFilesAndBack) {
    const std::tuple<std::string, std::string, std::string> files[]{
        {"/a b/ü", "file:///a%20b/%C3%BC", "/a b/ü"},
        {"/folder//", "file:///folder//", "/folder"},
        {"//h/p", "file:////h/p", "//h/p"},
        {"/100%20?#[;]:@\xFF\n", "file:///100%2520%3F%23%5B;%5D:@%FF%0A", "/100%20?#[;]:@\xFF\n"},
    };
    for (const auto& [path, absoluteString, pathAgain] : files) {
        const URL url = URL::filePath(path);
        EXPECT_EQ(url.absoluteString(), absoluteString);
        EXPECT_EQ(url.path(), pathAgain);
        EXPECT_EQ(url.host(), std::nullopt);
        EXPECT_EQ(URL::parse(url.absoluteString()), url);
    }
}

TEST(URL, AppendingJoinsWithOneSlash) {
    const std::tuple<std::string, std::string, std::string> joints[]{
        {"file:///a", "b", "file:///a/b"},
        {"file:///a//", "//b/", "file:///a/b/"},
        {"file:///", "a b/100%/ü?#", "file:///a%20b/100%25/%C3%BC%3F%23"},
        {"http://h/p?q#f", "r", "http://h/p/r?q#f"},
        {"x:", "a:b", "x:/a:b"},
        {"p", "", "p/"},
    };
    for (const auto& [base, component, expected] : joints) {
        const URL joined = URL::parse(base)->appending(component);
        EXPECT_EQ(joined.absoluteString(), expected);
        EXPECT_EQ(joined.path(), URL::parse(expected)->path());
        EXPECT_EQ(joined.encodedQuery(), URL::parse(expected)->encodedQuery());
    }
}

using Items = std::vector<URLQueryItem>;

TEST(URLQueryItems, AreRead) {
    const std::pair<std::string, std::optional<Items>> queries[]{
        {"x:#?a=b", std::nullopt},
        {"x:?", Items{}},
        {"x:?=", Items{{"", ""}}},
        {"x:?a&&b", Items{{"a", std::nullopt}, {"", std::nullopt}, {"b", std::nullopt}}},
        {"x:?&", Items{{"", std::nullopt}, {"", std::nullopt}}},
        {"x:?a+b=c=+d%2B%20%26%c3%a4#a=b", Items{{"a+b", "c=+d+ &ä"}}},
    };
    for (const auto& [address, items] : queries) {
        EXPECT_EQ(URL::parse(address)->queryItems(), items) << address;
    }
}

TEST(URLQueryItems, AreEncodedAndLeaveEverythingElse) {
    const std::tuple<std::string, Items, std::string> rows[]{
        {"x:/p?old#f", {}, "x:/p?#f"},
        {"x:", {{"a", std::nullopt}, {"b", ""}, {"", "c"}}, "x:?a&b=&=c"},
        {"x:", {{"a=b", "c=d&e"}}, "x:?a%3Db=c%3Dd%26e"},
        {"x:", {{"AZaz09-._~!$'()*+,;:@/?", "?"}}, "x:?AZaz09-._~!$'()*+,;:@/?=?"},
        {"x:",
         {{"q", " %#[]\"<>\\^`{|}\x7Fä\xFF\n"}},
         "x:?q=%20%25%23%5B%5D%22%3C%3E%5C%5E%60%7B%7C%7D%7F%C3%A4%FF%0A"},
        {"HTTP://u:p%3a@H%41:080/%7e/;a?x=1#f%41", {{"w", "f"}}, "HTTP://u:p%3a@H%41:080/%7e/;a?w=f#f%41"},
        {"http://[::1%25a]:8//", {{"w", "f"}}, "http://[::1%25a]:8//?w=f"},
        {"#f", {{"w", "f"}}, "?w=f#f"},
    };
    for (const auto& [address, items, expected] : rows) {
        const URL url = URL::parse(address)->withQueryItems(items);
        EXPECT_EQ(url.absoluteString(), expected);
        EXPECT_EQ(url.encodedQuery(), URL::parse(expected)->encodedQuery());
    }
}

} // namespace
} // namespace platform
