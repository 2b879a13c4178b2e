#include "Extension/Shared/DeepLink.h"
#include "Extension/Shared/DocumentType.h"
#include "Extension/Shared/FOLIOvaultPaths.h"
#include "Extension/Shared/ListWidgetBody.h"
#include "Platform/Views/Node.h"

#include "Tests/Support/Fakes.h"

#include <gtest/gtest.h>

#include <tuple>

namespace foliovault {
namespace {

using namespace platform;

TEST(DeepLink, TagsTheApplicationsOwnSchemesAlone) {
    const std::pair<const char*, const char*> rows[]{
        {"x-foliovault-item://ABC", "x-foliovault-item://ABC?widget=favorites"},
        {"x-foliovault://open-workspace?name=Writing", "x-foliovault://open-workspace?name=Writing&widget=favorites"},
        {"X-FolioVault-SmartGroup://ABC", "X-FolioVault-SmartGroup://ABC?widget=favorites"},
        {"x-foliovault-item://ABC?widget=favorites", "x-foliovault-item://ABC?widget=favorites&widget=favorites"},
        {"x-foliovault-item://ABC?q=a%2Bb&empty#end", "x-foliovault-item://ABC?q=a+b&empty&widget=favorites#end"},
        {"x-foliovault-items://ABC", "x-foliovault-items://ABC"},
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
    for (std::int64_t code = -1; code < 130; ++code) {
        const bool isKnown = (code >= 1 && code <= 16) || (code >= 110 && code <= 112) || (code >= 120 && code <= 126);
        EXPECT_EQ(DocumentType::sfSymbol(code) != "doc", isKnown) << code;
        EXPECT_EQ(DocumentType::label(code) != "Document", isKnown) << code;
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

struct Note {
    std::string id;
    bool isMarked = false;
    bool isIllustrated = false;

    std::string displayTitle() const { return id; }
    std::string_view displayIcon() const { return "doc"; }
    std::optional<EncodedData> displayIconData() const {
        return isIllustrated ? std::optional(EncodedData(Data::owning("png"), EncodedData::Encoding::raw))
                             : std::nullopt;
    }
    std::optional<URL> displayURL() const { return URL::parse(id == "-" ? "" : "note:" + id); }
    std::optional<std::string> displaySubtitle() const { return isMarked ? std::optional("sub") : std::nullopt; }
    std::optional<Color> dotColor() const { return isMarked ? std::optional(Color::red) : std::nullopt; }
    [[maybe_unused]] friend bool operator==(const Note&, const Note&) = default;
};

/// Returns the texts of a tree, "(…)" for links, "|" for dividers, "_" for those under a row, "#" for images and "*"
/// for dots.
std::string sketch(const View& view) {
    const auto draw = [](const auto& content) -> std::string {
        using Content = std::decay_t<decltype(content)>;
        std::string drawn;
        if constexpr (requires { content.children; }) {
            for (const View& child : content.children) {
                drawn += sketch(child);
            }
        } else if constexpr (std::is_same_v<Content, Text>) {
            drawn = content.text;
        } else if constexpr (std::is_same_v<Content, Link>) {
            drawn = "(" + sketch(content.child) + ")";
        } else if constexpr (std::is_same_v<Content, Padding>) {
            drawn = content.child == divider() ? (content.insets == Insets{.leading = 30} ? "_" : "?")
                                               : sketch(content.child);
        } else if constexpr (requires { content.child; }) {
            drawn = sketch(content.child);
        } else {
            drawn = std::is_same_v<Content, Divider>  ? "|"
                    : std::is_same_v<Content, Image>  ? "#"
                    : std::is_same_v<Content, Circle> ? "*"
                                                      : "";
        }
        return drawn;
    };
    return std::visit(draw, view.node().content);
}

std::string sketchOf(WidgetFamily family, const std::vector<Note>& notes, std::int64_t displayCount,
                     RenderingMode mode = RenderingMode::fullColor) {
    return sketch(ListWidgetBody<Note>{
        .items = notes,
        .displayCount = displayCount,
        .title = "Notes ",
        .subtitle = "all ",
        .smallHeader = [] { return text("small "); },
        .detailRow =
            [](const Note& note) {
                return hStack({}, {text("detail "), text(note.displayTitle())});
            },
    }
                      .body({.family = family, .renderingMode = mode}));
}

std::vector<Note> notes(char first, char last) {
    std::vector<Note> all;
    for (char id = first; id <= last; ++id) {
        all.push_back({.id = std::string(1, id)});
    }
    return all;
}

TEST(ListWidgetBody, ShowsAsManyRowsAsTheFamilyHas) {
    using enum WidgetFamily;
    const std::tuple<WidgetFamily, char, std::int64_t, const char*> rows[]{
        {small, 'd', 4, "small (a)(b)(c)(d)"},
        {small, 'd', 5, "small (a)(b)(c)(d)+1 more"},
        {medium, 'e', 5, "Notes all (a)(b)(c)(d)(e)"},
        {medium, 'p', 20, "Notes all (a)(b)(c)(d)(e)+15 more"},
        {unknown, 'p', 20, "Notes all (a)(b)(c)(d)(e)+15 more"},
        {large, 'c', 3, "Notes all (detail a)_(detail b)_(detail c)"},
        {large, 'p', 16,
         "Notes all (detail a)_(detail b)_(detail c)_(detail d)_(detail e)_(detail f)_(detail g)+9 more"},
        {extraLarge, 'a', 1, "Notes all (detail a)"},
        {extraLarge, 'b', 2, "Notes all (detail a)|(detail b)"},
        {extraLarge, 'e', 5, "Notes all (detail a)_(detail b)_(detail c)|(detail d)_(detail e)"},
        {extraLarge, 'p', 4000,
         "Notes all (detail a)_(detail b)_(detail c)_(detail d)_(detail e)_(detail f)_(detail g)_(detail h)|(detail i)_"
         "(detail j)_(detail k)_(detail l)_(detail m)_(detail n)_(detail o)_(detail p)"},
    };
    for (const auto& [family, last, displayCount, expected] : rows) {
        EXPECT_EQ(sketchOf(family, notes('a', last), displayCount), expected);
    }
    // The last row is known by its identifier.
    EXPECT_EQ(sketchOf(large, {{.id = "a"}, {.id = "b"}, {.id = "a"}}, 3), "Notes all (detail a)(detail b)_(detail a)");
}

TEST(ListWidgetBody, LeavesOutMissingPicturesLinksAndDots) {
    const std::vector<Note> mixed{{.id = "a", .isIllustrated = true}, {.id = "-"}, {.id = "c", .isMarked = true}};
    EXPECT_EQ(sketchOf(WidgetFamily::medium, mixed, 3), "Notes all (#a)-(*csub)");
    EXPECT_EQ(sketchOf(WidgetFamily::medium, mixed, 3, RenderingMode::tinted), "Notes all (a)-(*csub)");
    EXPECT_EQ(sketchOf(WidgetFamily::small, mixed, 3), "small (#a)-(*c)");
    const View full = AccentDot{.color = Color::red, .size = 6}.body({});
    EXPECT_EQ((AccentDot{.color = Color::red, .size = 6}.body({.renderingMode = RenderingMode::tinted})),
              full.accentable());
    EXPECT_EQ((AccentDot{.color = std::nullopt, .size = 6}.body({.renderingMode = RenderingMode::tinted})),
              clear().frame({.width = 6, .height = 6}));
}

} // namespace
} // namespace foliovault
