// What a list widget shows in each family.

#include "Extension/Shared/ListWidgetBody.h"

#include "Platform/Views/Node.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

using namespace platform;

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

/// Returns the texts of a tree, "(…)" for links, "|" for dividers, "_" for those under a row, "#" for images and "*" for
/// dots.
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
