#include "Host/Layout/AccessibleItems.h"

#include "Platform/Views/Node.h"
#include "Tests/Host/Layout/FakeMeasurers.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using namespace platform; // NOLINT(google-build-using-namespace): views read like the pictures they draw

/// One line a part: role, name | description -> url.
std::string partsIn(const View& view, Size size = {364, 170}) {
    FakeTexts texts;
    FakeImages images;
    std::string lines;
    for (const AccessibleItem& part : accessibleItems(layOut(view, size, texts, images))) {
        constexpr std::array<const char*, 3> roles{"heading ", "text ", "link "};
        lines += roles.at(static_cast<std::size_t>(part.role)) + part.name;
        lines += part.description.empty() ? "" : " | " + part.description;
        lines += part.url.empty() ? "" : " -> " + part.url;
        lines += '\n';
    }
    return lines;
}

TEST(AccessibleItems, NameWhatIsOnAWidgetInReadingOrder) {
    struct Case {
        View view;
        const char* parts;
    };
    const View header = hStack({}, {text("Favorites").font(headline), spacer(), text("12").font(caption)});
    const View row = hStack({}, {circle(Color::red).frame({.width = 6, .height = 6}), symbol("doc"), text("Lease"),
                                 spacer(), text("Archive").font(caption2), text("2 days ago").font(caption2)})
                         .link("x:lease");
    const std::vector<Case> cases{
        {vStack({}, {header, row, text("and 3 more").font(caption)}),
         "heading Favorites | 12\nlink Lease | Archive, 2 days ago -> x:lease\ntext and 3 more\n"},
        // A text below a title is one of its own.
        {vStack({}, {text("No Favorites").font(title3), text("Add some").font(caption)}),
         "heading No Favorites\ntext Add some\n"},
        {vStack({}, {text("Big").font(largeTitle), text("Bold").font(callout.semibold())}), "heading Big\ntext Bold\n"},
        {hStack({}, {text("before"), row, text("after")}),
         "text before\nlink Lease | Archive, 2 days ago -> x:lease\ntext after\n"},
        {symbol("star").link("x:star"), "link x:star -> x:star\n"},
        {hStack({}, {text("Title").font(headline).link("x:title"), text("beside")}),
         "link Title -> x:title\ntext beside\n"},
        {vStack({}, {text("outer one"), vStack({}, {text("inner one"), text("inner two")}).link("x:inner"),
                     text("outer two")})
             .link("x:outer"),
         "link outer one | outer two -> x:outer\nlink inner one | inner two -> x:inner\n"},
        {vStack({}, {symbol("star"), text("inner").link("x:inner")}).link("x:outer"),
         "link x:outer -> x:outer\nlink inner -> x:inner\n"},
        // Nothing to draw is still something to click.
        {vStack({}, {clear().link("x:clear"), text("last")}), "text last\nlink x:clear -> x:clear\n"},
        {vStack({}, {text(""), text(" \n "), text("").link("x:empty"), symbol("star").link("")}),
         "link x:empty -> x:empty\n"},
        {label("star", "Starred").link("x:label"), "link Starred -> x:label\n"},
        {vStack({}, {}), ""},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(partsIn(each.view), each.parts);
    }
}

TEST(AccessibleItems, SayWhatHadNoRoom) {
    EXPECT_EQ(partsIn(text("words that are cut in so small a place").lineLimit(1), {80, 60}),
              "text words that are cut in so small a place\n");
    const View narrow = text("broken in\nlines").link("x:");
    EXPECT_EQ(partsIn(narrow, {60, 170}), "link broken in\nlines -> x:\n");
}

TEST(AccessibleItems, KeepWithinBoundsAndCharacters) {
    std::string umlauts = "x";
    for (std::size_t i = 0; i < maxItemText; ++i) {
        umlauts += "ü";
    }
    FakeTexts texts;
    FakeImages images;
    const View view = vStack({}, {text(umlauts), text(umlauts), text(umlauts)}).link("x:" + umlauts);
    const auto parts = accessibleItems(layOut(view, {170, 170}, texts, images));
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].name, umlauts.substr(0, maxItemText - 1));
    EXPECT_EQ(parts[0].description, umlauts.substr(0, maxItemText - 1));
    EXPECT_EQ(parts[0].url, "x:" + umlauts);
}

} // namespace
} // namespace host
