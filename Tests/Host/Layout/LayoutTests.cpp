// The fixtures of Tests/Fixtures/Layout, then properties of any tree: random ones from fixed seeds, and hostile ones.
//
// In a fixture, "== NAME" begins a case. Its view follows in the protocol's JSON, and then, for each of some sizes, a
// line with the size and what the layout is to be:
//
//     widget 364x170      a widget of this size; positions are from its corner
//     proposal 100x15     what is proposed to the view; positions are from the proposed room's corner
//     mirrored 170x80     a widget that is read from right to left
//     frames 84x67        a widget's frames as JSON
//     items 364x170       a widget's accessible items: role, name | description -> URL
#include "Host/Layout/AccessibleItems.h"
#include "Host/Layout/FramesJson.h"
#include "Host/Layout/Measures.h"
#include "Host/Layout/Mirroring.h"
#include "Host/Layout/TextMeasurer.h"
#include "Platform/Views/Node.h"
#include "Platform/Views/ViewReader.h"
#include "Tests/Support/Repeated.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>

namespace host {
namespace {

using namespace platform; // NOLINT(google-build-using-namespace): views read like the pictures they draw

// Measurers without fonts: every character is half as wide as its font is high, and an image has its size as text.

using Characters = std::vector<std::string>;

Characters charactersOf(std::string_view text) {
    Characters characters;
    for (const char byte : text) {
        const bool continues = (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
        if (!continues) {
            characters.emplace_back();
        }
        characters.back() += byte;
    }
    return characters;
}

/// Returns the end of the line that starts at `start` and holds `room` characters.
Characters::const_iterator lineEnd(Characters::const_iterator start, Characters::const_iterator end,
                                   std::ptrdiff_t room) {
    const auto newline = std::find(start, end, "\n");
    if (newline - start <= room) {
        return newline;
    }
    auto blank = start + room;
    while (blank != start && *blank != " ") {
        --blank;
    }
    return blank == start ? start + room : blank;
}

/// Breaks at blanks, and within words that are too long. A baseline lies 3 points above the lower edge of its line.
class FakeTexts final : public TextMeasurer {
  public:
    MeasuredText measure(const TextRequest& request) override {
        calls += 1;
        const TextMeasures measures = textMeasures(request.font);
        const double advance = measures.size / 2;
        const auto room =
            std::max<std::ptrdiff_t>(1, static_cast<std::ptrdiff_t>(request.width.value_or(1e9) / advance + 1e-9));
        const auto limit = static_cast<std::size_t>(request.lineLimit.value_or(std::numeric_limits<int>::max()));
        const Characters characters = charactersOf(request.text);

        MeasuredText measured{.baseline = measures.lineHeight - 3};
        auto start = characters.begin();
        for (bool more = true; more;) {
            auto end = lineEnd(start, characters.end(), room);
            more = end != characters.end();
            const auto next = more && (*end == " " || *end == "\n") ? end + 1 : end;
            std::string ending;
            if (more && measured.lines.size() + 1 == limit) {
                const auto newline = std::find(start, characters.end(), "\n");
                end = start + std::min(room - 1, newline - start);
                ending = "…";
                more = false;
            }
            TextLine line{.width = (static_cast<double>(end - start) + (ending.empty() ? 0 : 1)) * advance};
            std::for_each(start, end, [&](const std::string& character) { line.text += character; });
            line.text += ending;
            measured.lines.push_back(line);
            start = next;
        }
        return measured;
    }
    double ellipsisWidth(Font font) override { return textMeasures(font).size / 2; }

    int calls = 0;
};

/// Reads the size of an image from bytes like "40x20".
class FakeImages final : public ImageMeasurer {
  public:
    std::optional<Size> imageSize(const EncodedData& data) override {
        Size size;
        const std::string text(data.decoded().bytes());
        return std::sscanf(text.c_str(), "%lfx%lf", &size.width, &size.height) == 2 ? std::optional(size)
                                                                                    : std::nullopt;
    }
};

EncodedData imageData(const char* text) {
    return {Data::owning(text), EncodedData::Encoding::raw};
}

std::ostream& operator<<(std::ostream& out, const Rect& frame) {
    return out << frame.x << "," << frame.y << " " << frame.width << "x" << frame.height;
}

struct ContentDump {
    std::ostream& out;
    const Rect& frame;

    void operator()(const TextItem& item) const {
        out << "text " << frame << " \"";
        for (const TextLine& line : item.text.lines) {
            out << (&line == &item.text.lines.front() ? "" : "|") << line.text;
        }
        out << "\"";
        if (item.alignment != HorizontalAlignment::leading) {
            out << " " << styleName(item.alignment);
        }
    }
    void operator()(const SymbolItem& item) const { out << "symbol " << frame << " " << item.symbol; }
    void operator()(const ImageItem& item) const { out << "image " << frame << " " << item.data.decoded().bytes(); }
    void operator()(const CircleItem& item) const { out << "circle " << frame << " " << styleName(item.fill); }
    void operator()(const CapsuleItem& item) const { out << "capsule " << frame << " " << styleName(item.fill); }
    void operator()(const DividerItem& /*item*/) const { out << "divider " << frame; }
};

Rect moved(Rect frame, Point origin) {
    return {frame.x - origin.x, frame.y - origin.y, frame.width, frame.height};
}

/// Returns a line for each item, in drawing order, then the links. Positions and sizes are in points, positions from
/// `origin`. Font, foreground and alignment are left out if they are callout, primary and leading.
std::string dump(const WidgetLayout& layout, Point origin = {}) {
    std::ostringstream out;
    for (const LayoutItem& item : layout.items) {
        std::visit(ContentDump{out, moved(item.frame, origin)}, item.content);
        if (item.font != callout) {
            out << " " << styleName(item.font.style) << (item.font.weight ? "-semibold" : "");
        }
        if (item.foreground != primary) {
            std::visit([&](auto value) { out << " " << styleName(value); }, item.foreground);
        }
        out << (item.accented ? " accented" : "");
        if (item.link) {
            out << " link " << *item.link;
        }
        out << "\n";
    }
    for (const LayoutLink& link : layout.links) {
        out << "link " << moved(link.frame, origin) << " " << link.url;
        if (link.outer) {
            out << " in " << *link.outer;
        }
        out << "\n";
    }
    return out.str();
}

std::string dumpOfItems(const WidgetLayout& layout) {
    std::string lines;
    for (const AccessibleItem& item : accessibleItems(layout)) {
        constexpr std::array<const char*, 3> roles{"heading ", "text ", "link "};
        lines += roles.at(static_cast<std::size_t>(item.role)) + item.name;
        lines += item.description.empty() ? "" : " | " + item.description;
        lines += (item.url.empty() ? "" : " -> " + item.url) + "\n";
    }
    return lines;
}

WidgetLayout laidOut(const View& view, Size size) {
    FakeTexts texts;
    FakeImages images;
    return layOut(view, size, texts, images);
}

std::string dumpOf(const std::string& json, std::string_view what, Size size) {
    simdjson::dom::parser parser;
    const simdjson::padded_string padded(json);
    const auto view = readView(parser.parse(padded).value());
    if (!view) {
        return view.error();
    }
    const bool isProposal = what == "proposal";
    const double margins = isProposal ? 2 * contentMargin : 0;
    WidgetLayout layout = laidOut(*view, {size.width + margins, size.height + margins});
    if (what == "frames") {
        return framesJson(layout) + "\n";
    }
    if (what == "items") {
        return dumpOfItems(layout);
    }
    if (what == "mirrored") {
        mirror(layout);
    }
    return dump(layout, isProposal ? Point{contentMargin, contentMargin} : Point());
}

TEST(LayoutFixtures, AreLaidOutAsWrittenDown) {
    for (const auto& each : std::filesystem::directory_iterator(FIXTURES_FOLDER "/Layout")) {
        std::ifstream file(each.path());
        std::string expected;
        std::string actual;
        std::string json;
        bool inView = false;
        for (std::string line; std::getline(file, line);) {
            expected += line + "\n";
            std::array<char, 16> what{};
            Size size;
            if (line.starts_with("==")) {
                inView = true;
                json.clear();
                actual += line + "\n";
            } else if (std::sscanf(line.c_str(), "%15s %lfx%lf", what.data(), &size.width, &size.height) == 3) {
                inView = false;
                actual += line + "\n" + dumpOf(json, what.data(), size);
            } else if (inView || line.empty()) {
                json += line;
                actual += line + "\n";
            }
        }
        EXPECT_FALSE(json.empty());
        EXPECT_EQ(actual, expected) << each.path();
    }
}

enum class Wildness { tame, wild };

/// Random trees. Tame ones have no fixed frames, which may be smaller than their children, and no negative lengths.
class Trees {
  public:
    Trees(unsigned seed, Wildness wildness) : random_(seed), wildness_(wildness) {}

    View tree(int depth) {
        const int kind = depth == 0 ? upTo(7) : upTo(15);
        switch (kind) {
        case 0:
            return text("one two three four").lineLimit(upTo(3) + 1);
        case 1:
            return text("words\nthat go on for more lines than one").font(upTo(1) ? headline : caption2);
        case 2:
            return symbol("star").font(upTo(1) ? largeTitle : callout);
        case 3:
            return spacer(length(-20, 30));
        case 4:
            return divider();
        case 5:
            return image(imageData(upTo(1) ? "30x20" : "none"), symbol("photo"));
        case 6:
            return upTo(1) ? circle(Color::red) : clear();
        case 7:
            return label("star", "label");
        case 8:
            return tree(depth - 1).padding(
                {.top = length(-9, 9), .bottom = length(-9, 9), .leading = length(-9, 9), .trailing = length(-9, 9)});
        case 9:
            return wildness_ == Wildness::tame
                       ? tree(depth - 1)
                       : tree(depth - 1).frame({.width = length(-5, 90), .height = length(-5, 90)});
        case 10:
            return tree(depth - 1).capsuleBackground(Color::blue).link("x:");
        default:
            return stack(depth);
        }
    }

  private:
    int upTo(int max) { return std::uniform_int_distribution(0, max)(random_); }
    double length(int min, int max) {
        return std::uniform_int_distribution(wildness_ == Wildness::tame ? 0 : min, max)(random_) / 2.0;
    }
    View stack(int depth) {
        Views children;
        for (int count = upTo(4); count > 0; --count) {
            children.push_back(tree(depth - 1));
        }
        const auto spacing = upTo(1) ? std::optional(length(-10, 20)) : std::nullopt;
        if (upTo(1)) {
            return hStack({.alignment = static_cast<VerticalAlignment>(upTo(3)), .spacing = spacing}, children);
        }
        return vStack({.alignment = static_cast<HorizontalAlignment>(upTo(2)), .spacing = spacing}, children);
    }

    std::mt19937 random_;
    Wildness wildness_;
};

bool isSane(const Rect& frame) {
    return std::isfinite(frame.x) && std::isfinite(frame.y) && std::isfinite(frame.width) &&
           std::isfinite(frame.height) && frame.width >= 0 && frame.height >= 0;
}

bool contains(const Rect& outer, const Rect& inner) {
    constexpr double tolerance = 1e-6;
    return inner.x >= outer.x - tolerance && inner.y >= outer.y - tolerance &&
           inner.right() <= outer.right() + tolerance && inner.bottom() <= outer.bottom() + tolerance;
}

/// Returns the tree with a link and an accent around every view, which must not change the layout.
View dressed(const View& view) {
    Node node = view.node();
    if (auto* stack = std::get_if<VStack>(&node.content)) {
        std::ranges::transform(stack->children, stack->children.begin(), dressed);
    } else if (auto* stack = std::get_if<HStack>(&node.content)) {
        std::ranges::transform(stack->children, stack->children.begin(), dressed);
    }
    return View(std::move(node)).accentable().link("x:dress");
}

TEST(LayoutOfAnyTree, IsFiniteTheSameEachTimeAndNotChangedByLinksAndAccents) {
    for (unsigned seed = 0; seed < 800; ++seed) {
        const View view = Trees(seed, Wildness::wild).tree(6);
        for (const Size size : {Size{170, 170}, {364, 170}, {30, 20}, {1, 1}}) {
            const WidgetLayout layout = laidOut(view, size);
            ASSERT_EQ(dump(layout), dump(laidOut(view, size))) << "seed " << seed;
            const WidgetLayout other = laidOut(dressed(view), size);
            ASSERT_EQ(layout.items.size(), other.items.size()) << "seed " << seed;
            for (std::size_t i = 0; i < layout.items.size(); ++i) {
                ASSERT_TRUE(isSane(layout.items[i].frame)) << "seed " << seed << "\n" << dump(layout);
                ASSERT_EQ(layout.items[i].frame, other.items[i].frame) << "seed " << seed;
            }
        }
    }
}

TEST(LayoutOfAnyTree, HoldsChildrenInTheirParents) {
    for (unsigned seed = 0; seed < 800; ++seed) {
        const WidgetLayout layout = laidOut(Trees(seed, Wildness::tame).tree(6).link("x:root"), {170, 120});
        for (const LayoutItem& item : layout.items) {
            ASSERT_TRUE(contains(layout.links.at(item.link.value()).frame, item.frame)) << "seed " << seed << "\n"
                                                                                        << dump(layout);
        }
        for (const LayoutLink& link : layout.links) {
            ASSERT_TRUE(!link.outer || contains(layout.links.at(*link.outer).frame, link.frame)) << "seed " << seed;
        }
    }
}

/// Nested stacks of alternating axes, each with a text beside the inner one.
View nested(int depth, const View& innermost) {
    View view = innermost;
    for (int i = 0; i < depth; ++i) {
        const View beside = text("some words " + std::to_string(i)).padding({.leading = 0.25});
        view = i % 2 == 0 ? hStack({.spacing = 0.5}, {view, beside}) : vStack({.spacing = 0.5}, {view, beside});
    }
    return view;
}

TEST(LayoutOfHostileTrees, AsksForTextsWithinBounds) {
    Views many;
    for (int i = 0; i < 10'000; ++i) {
        many.push_back(text("row " + std::to_string(i) + " with words to break"));
    }
    struct Case {
        const char* name;
        View view;
        int texts;
    };
    const std::vector<Case> cases{
        {"60 nested stacks", nested(60, text("in the middle of it all")), 61},
        {"10,000 texts below one another", vStack({}, many), 10'000},
        {"10,000 texts side by side", hStack({}, many), 10'000},
        {"1,000 texts in 60 stacks", nested(60, hStack({}, Views(many.begin(), many.begin() + 1000))), 1060},
    };
    for (const Case& hostile : cases) {
        for (const double length : {100.0, 1000.0, 100'000.0}) {
            FakeTexts texts;
            FakeImages images;
            layOut(hostile.view, {length, length}, texts, images);
            EXPECT_LE(texts.calls, hostile.texts * 4) << hostile.name << " in " << length;
        }
    }
}

TEST(LayoutOfHostileTrees, EndsWhereTheyNestTooDeep) {
    View view = text("never seen");
    for (int i = 0; i < 2000; ++i) {
        view = vStack({}, {view, spacer()});
    }
    EXPECT_EQ(dump(laidOut(view, {170, 170})), "");
}

TEST(LayoutOfHostileTrees, CutsLongNamesBetweenCharacters) {
    const std::string umlauts = "x" + repeated("ü", maxItemText);
    const View view = vStack({}, {text(umlauts), text(umlauts), text(umlauts)}).link("x:" + umlauts);
    const auto items = accessibleItems(laidOut(view, {170, 170}));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].name, umlauts.substr(0, maxItemText - 1));
    EXPECT_EQ(items[0].description, umlauts.substr(0, maxItemText - 1));
    EXPECT_EQ(items[0].url, "x:" + umlauts);
}

} // namespace
} // namespace host
