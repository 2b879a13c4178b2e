// What a list widget shows in each family, counted off the view tree.

#include "Extension/Shared/ListWidgetBody.h"

#include "Tests/Support/ViewText.h"

#include <gtest/gtest.h>

#include <regex>

namespace foliovault {
namespace {

using namespace platform;

struct Note {
    std::string id;
    bool marked = false;
    bool illustrated = false;

    std::string displayTitle() const { return "Title " + id; }
    std::string_view displayIcon() const { return "doc"; }
    std::optional<EncodedData> displayIconData() const {
        return illustrated ? std::optional(EncodedData(Data::owning("png"), EncodedData::Encoding::raw)) : std::nullopt;
    }
    std::optional<URL> displayURL() const { return URL::parse(id.empty() ? "" : "note:" + id); }
    std::optional<std::string> displaySubtitle() const {
        return marked ? std::optional<std::string>("sub") : std::nullopt;
    }
    std::optional<Color> dotColor() const { return marked ? std::optional(Color::red) : std::nullopt; }
    [[maybe_unused]] friend bool operator==(const Note&, const Note&) = default;
};

int occurrences(const std::string& text, const std::string& what) {
    int count = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        ++count;
    }
    return count;
}

/// Counts of what a tree holds.
struct Census {
    int detail = 0;
    int links = 0;
    int images = 0;
    int horizontalDividers = 0;
    int verticalDividers = 0;
    std::string more;
    std::vector<std::string> titles;
};

Census censusOf(WidgetFamily family, const std::vector<Note>& notes, std::int64_t displayCount,
                RenderingMode mode = RenderingMode::fullColor) {
    const View view = ListWidgetBody<Note>{
        .items = notes,
        .displayCount = displayCount,
        .title = "Notes",
        .subtitle = "all",
        .smallHeader = [] { return text("small"); },
        .detailRow =
            [](const Note& note) {
                return hStack({}, {text("detail"), text(note.displayTitle())});
            },
    }
                          .body({.family = family, .renderingMode = mode});
    const std::string tree = json(view);
    Census census{.detail = occurrences(tree, R"("detail")"),
                  .links = occurrences(tree, R"("type":"link")"),
                  .images = occurrences(tree, R"("type":"image")"),
                  .horizontalDividers =
                      occurrences(tree, R"({"type":"padding","leading":30,"child":{"type":"divider"}})")};
    census.verticalDividers = occurrences(tree, R"("type":"divider")") - census.horizontalDividers;
    static const std::regex text(R"re("(?:Title (\w*)|(\+\d+ more))")re");
    for (std::sregex_iterator match(tree.begin(), tree.end(), text), end; match != end; ++match) {
        if ((*match)[2].matched) {
            census.more = (*match)[2];
        } else {
            census.titles.push_back((*match)[1]);
        }
    }
    return census;
}

std::vector<Note> notes(int count) {
    std::vector<Note> all;
    for (int i = 1; i <= count; ++i) {
        all.push_back({.id = std::to_string(i)});
    }
    return all;
}

TEST(ListWidgetBody, ShowsAsManyRowsAsTheFamilyHas) {
    struct Row {
        WidgetFamily family;
        int items;
        std::int64_t displayCount;
        int shown;
        const char* more;
        int horizontalDividers;
        int verticalDividers;
    };
    using enum WidgetFamily;
    const Row rows[]{
        {small, 4, 4, 4, "", 0, 0},
        {small, 4, 5, 4, "+1 more", 0, 0},
        {medium, 5, 5, 5, "", 0, 0},
        {medium, 16, 20, 5, "+15 more", 0, 0},
        {unknown, 16, 20, 5, "+15 more", 0, 0},
        {large, 3, 3, 3, "", 2, 0},
        {large, 16, 16, 7, "+9 more", 6, 0},
        {extraLarge, 1, 1, 1, "", 0, 0},
        {extraLarge, 2, 2, 2, "", 0, 1},
        {extraLarge, 5, 5, 5, "", 3, 1},
        {extraLarge, 16, 4000, 16, "", 14, 1},
    };
    for (const Row& row : rows) {
        const Census census = censusOf(row.family, notes(row.items), row.displayCount);
        const std::string what = std::string(familyName(row.family)) + " with " + std::to_string(row.items);
        EXPECT_EQ(census.titles.size(), static_cast<std::size_t>(row.shown)) << what;
        EXPECT_EQ(census.links, row.shown) << what;
        EXPECT_EQ(census.more, row.more) << what;
        EXPECT_EQ(census.horizontalDividers, row.horizontalDividers) << what;
        EXPECT_EQ(census.verticalDividers, row.verticalDividers) << what;
        const bool usesDetailRows = row.family == large || row.family == extraLarge;
        EXPECT_EQ(census.detail, usesDetailRows ? row.shown : 0) << what;
    }
}

TEST(ListWidgetBody, KeepsTheOrderAndKnowsTheLastRowByItsIdentifier) {
    EXPECT_EQ(censusOf(WidgetFamily::extraLarge, notes(5), 5).titles,
              (std::vector<std::string>{"1", "2", "3", "4", "5"}));
    EXPECT_EQ(censusOf(WidgetFamily::large, {{.id = "a"}, {.id = "b"}, {.id = "a"}}, 3).horizontalDividers, 1);
}

TEST(ListWidgetBody, LeavesOutPicturesAndLinksThatAreNotThere) {
    const std::vector<Note> mixed{{.id = "1", .illustrated = true}, {.id = ""}, {.id = "3", .marked = true}};
    const Census census = censusOf(WidgetFamily::medium, mixed, 3);
    EXPECT_EQ(census.images, 1);
    EXPECT_EQ(census.links, 2);
    EXPECT_EQ(census.titles.size(), 3U);
    EXPECT_EQ(censusOf(WidgetFamily::medium, mixed, 3, RenderingMode::tinted).images, 0);
}

TEST(ItemRows, MarkTheDotForTheAccentGroupOutsideFullColor) {
    const View full = AccentDot{.color = Color::red, .size = 6}.body({});
    const View tinted = AccentDot{.color = Color::red, .size = 6}.body({.renderingMode = RenderingMode::tinted});
    EXPECT_EQ(tinted, full.accentable());
    const View none = AccentDot{.color = std::nullopt, .size = 6}.body({.renderingMode = RenderingMode::tinted});
    EXPECT_EQ(none, clear().frame({.width = 6, .height = 6}));
}

} // namespace
} // namespace foliovault
