#include "Platform/Foundation/URL.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using Text = std::optional<std::string>;

Text owned(std::optional<std::string_view> text) {
    return text ? Text(*text) : std::nullopt;
}

struct Address {
    std::string text;
    Text scheme;
    Text host;
    std::string path;
    Text query;
    /// Where it is not the text itself.
    Text absoluteString;
};

TEST(URL, ReadsAddresses) {
    const Address addresses[]{
        // Which parts there are.
        {.text = "x:", .scheme = "x"},
        {.text = "x://?a", .scheme = "x", .query = "a"},
        {.text = "x-foliovault-item://5A1B", .scheme = "x-foliovault-item", .host = "5A1B"},
        {.text = "http:///p", .scheme = "http", .path = "/p"},
        {.text = "mailto:a@b", .scheme = "mailto", .path = "a@b"},
        {.text = "http://@/", .scheme = "http", .host = "", .path = "/"},
        {.text = "http://:80/", .scheme = "http", .host = "", .path = "/"},
        {.text = "//h/p", .host = "h", .path = "/p"},
        {.text = "/p", .path = "/p"},
        {.text = "p", .path = "p"},
        {.text = "http://h?", .scheme = "http", .host = "h", .query = ""},
        {.text = "http://h?a?b/c@d:e#f?g", .scheme = "http", .host = "h", .query = "a?b/c@d:e"},
        {.text = "HtTp+.-1://HoSt/P", .scheme = "HtTp+.-1", .host = "HoSt", .path = "/P"},
        // Where ":" ends no scheme.
        {.text = "a/b:c", .path = "a/b:c"},
        {.text = "a@b:c", .path = "a@b:c"},
        {.text = "?a:b", .query = "a:b"},
        {.text = "#a:b"},
        {.text = "[a:b", .path = "[a:b", .absoluteString = "%5Ba%3Ab"},
        {.text = "a@[b:c", .path = "a@[b:c", .absoluteString = "a@%5Bb:c"},
        // Authorities.
        {.text = "http://u:p@h:80/", .scheme = "http", .host = "h", .path = "/"},
        {.text = "http://h:99999999999999999999", .scheme = "http", .host = "h"},
        {.text = "http://a@b@c/", .scheme = "http", .host = "c", .path = "/", .absoluteString = "http://a%40b@c/"},
        {.text = "http://u:p:q@h", .scheme = "http", .host = "h"},
        {.text = "http://u v:%7E w@h/%7E",
         .scheme = "http",
         .host = "h",
         .path = "/~",
         .absoluteString = "http://u%20v:%257E%20w@h/%7E"},
        {.text = "http://[::1]/", .scheme = "http", .host = "::1", .path = "/"},
        {.text = "http://u@[::1]:80", .scheme = "http", .host = "::1"},
        {.text = "http://[fe80::1%25en0]", .scheme = "http", .host = "fe80::1%en0"},
        {.text = "http://%41%2f%7Bb", .scheme = "http", .host = "A/{b"},
        {.text = "http://a_b~!$&'()*+,;=-.", .scheme = "http", .host = "a_b~!$&'()*+,;=-."},
        // Components that are encoded again as a whole, beside those that stay.
        {.text = "https://h/a%20b c",
         .scheme = "https",
         .host = "h",
         .path = "/a%20b c",
         .absoluteString = "https://h/a%2520b%20c"},
        {.text = "https://h/%C3%A4?ä&b#%C3%A4",
         .scheme = "https",
         .host = "h",
         .path = "/ä",
         .query = "%C3%A4&b",
         .absoluteString = "https://h/%C3%A4?%C3%A4&b#%C3%A4"},
        {.text = "h?%g1", .path = "h", .query = "%25g1", .absoluteString = "h?%25g1"},
        {.text = "h#a#b", .path = "h", .absoluteString = "h#a%23b"},
        {.text = "h/[x]\"<>\\^`{|}",
         .path = "h/[x]\"<>\\^`{|}",
         .absoluteString = "h/%5Bx%5D%22%3C%3E%5C%5E%60%7B%7C%7D"},
        {.text = {"a\0\x7F\xFF", 4}, .path = {"a\0\x7F\xFF", 4}, .absoluteString = "a%00%7F%FF"},
        // Hosts outside ASCII.
        {.text = "http://u@BÜCHER.de:80/ä",
         .scheme = "http",
         .host = "xn--bcher-kva.de",
         .path = "/ä",
         .absoluteString = "http://u@xn--bcher-kva.de:80/%C3%A4"},
        {.text = "http://-ä_b.", .scheme = "http", .host = "xn---_b-qla.", .absoluteString = "http://xn---_b-qla."},
        {.text = "http://b%C3%BCcher.de", .scheme = "http", .host = "bücher.de"},
    };
    for (const Address& address : addresses) {
        SCOPED_TRACE(address.text);
        const auto url = URL::parse(address.text);
        ASSERT_TRUE(url);
        EXPECT_EQ(owned(url->scheme()), address.scheme);
        EXPECT_EQ(url->host(), address.host);
        EXPECT_EQ(url->path(), address.path);
        EXPECT_EQ(owned(url->encodedQuery()), address.query);
        EXPECT_EQ(url->absoluteString(), address.absoluteString.value_or(address.text));
        EXPECT_EQ(URL::parse(url->absoluteString()), url) << "reads its own text otherwise";
    }
}

TEST(URL, RefusesWhatIsNone) {
    const std::vector<std::string> texts = {
        "",
        // Schemes.
        ":", ":x", "1a:b", " https://h", "a b:c", "ä:b", "-a:b", "a%41:b",
        // Hosts.
        "http://a b.com", "http://a{b", "http://a|b", "http://a[b]", "http://a]", "http://a%", "http://a%4",
        "http://a%zz", "http://a%zzü", "http://ü b", "http://\xFF", "http://\xC2\xAD", "http://xn--a.ü", "http://אa",
        "http://a\u200Db", "x-foliovault-item://5A 1B",
        // IP literals.
        "http://[::1", "http://[::1]x", "http://[]", "http://[a b]", "http://[[::1]]", "http://[ü]",
        // Ports.
        "http://h:8a", "http://h:80:80", "http://h:-1", "http://[::1]:x", "http://u:p@h:p"};
    for (const std::string& text : texts) {
        EXPECT_FALSE(URL::parse(text)) << text;
    }
}

TEST(URL, LooksAtNothingBehindItsText) {
    EXPECT_EQ(URL::parse(std::string_view("h/%41").substr(0, 4))->absoluteString(), "h/%254");
    EXPECT_EQ(URL::parse(std::string_view("x://h:80").substr(0, 5))->absoluteString(), "x://h");
    EXPECT_EQ(URL::filePath(std::string_view("/a/b").substr(0, 2)).appending(std::string_view("//").substr(0, 1)),
              URL::parse("file:///a/"));
}

TEST(URL, PathsOfFilesAndBack) {
    const std::tuple<std::string, std::string, std::string> files[]{
        {"/a b/ü", "file:///a%20b/%C3%BC", "/a b/ü"},
        {"/folder/", "file:///folder/", "/folder"},
        {"/folder//", "file:///folder//", "/folder"},
        {"//h/p", "file:////h/p", "//h/p"},
        {"/100%20?#[;]:@", "file:///100%2520%3F%23%5B;%5D:@", "/100%20?#[;]:@"},
        {"/\xFF\n", "file:///%FF%0A", "/\xFF\n"},
    };
    for (const auto& [path, absoluteString, pathAgain] : files) {
        const URL url = URL::filePath(path);
        EXPECT_EQ(url.absoluteString(), absoluteString);
        EXPECT_EQ(url.path(), pathAgain);
        EXPECT_EQ(url.scheme(), "file");
        EXPECT_EQ(url.host(), std::nullopt);
        EXPECT_EQ(URL::parse(url.absoluteString()), url);
    }
}

TEST(URL, AppendingJoinsWithOneSlash) {
    const std::tuple<std::string, std::string, std::string> joints[]{
        {"file:///a", "b", "file:///a/b"},
        {"file:///a//", "//b/", "file:///a/b/"},
        {"file:///", "a b/100%/ü", "file:///a%20b/100%25/%C3%BC"},
        {"file:///a", "?#", "file:///a/%3F%23"},
        {"http://h/p?q#f", "r", "http://h/p/r?q#f"},
        {"http://h?q", "r", "http://h/r?q"},
        {"x:", "a:b", "x:/a:b"},
        {"p", "", "p/"},
    };
    for (const auto& [base, component, expected] : joints) {
        const URL joined = URL::parse(base)->appending(component);
        const URL expectedURL = *URL::parse(expected);
        EXPECT_EQ(joined.absoluteString(), expected);
        EXPECT_EQ(joined.path(), expectedURL.path());
        EXPECT_EQ(joined.encodedQuery(), expectedURL.encodedQuery());
    }
}

} // namespace
} // namespace platform
