// A view tree as JSON, and back.

#include "Platform/Views/Node.h"
#include "Platform/Views/ViewReader.h"
#include "Tests/Support/Repeated.h"
#include "Tests/Support/ViewText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform {
namespace {

Expected<View, std::string> readBack(const std::string& text) {
    simdjson::dom::parser parser;
    simdjson::dom::element element;
    if (parser.parse(text).get(element) != simdjson::SUCCESS) {
        return Unexpected{"not JSON: " + text};
    }
    return readView(element);
}

const View star = symbol("star");

TEST(ViewJson, WritesAndReadsEveryKindOfNode) {
    const std::pair<View, const char*> rows[]{
        {vStack({}, {}), R"({"type":"vstack","children":[]})"},
        {vStack({.alignment = HorizontalAlignment::leading, .spacing = 0}, {divider(), clear()}),
         R"({"type":"vstack","alignment":"leading","spacing":0,"children":[{"type":"divider"},{"type":"clear"}]})"},
        {hStack({.alignment = VerticalAlignment::firstTextBaseline}, {spacer(), spacer(2.5)}),
         R"({"type":"hstack","alignment":"firstTextBaseline","children":[{"type":"spacer"},{"type":"spacer","minLength":2.5}]})"},
        {text("A \"quoted\"\nline").lineLimit(3).textAlignment(HorizontalAlignment::center),
         R"({"type":"text","text":"A \"quoted\"\nline","lineLimit":3,"textAlignment":"center"})"},
        {star.font(headline.semibold()).foreground(Color::blue),
         R"({"type":"symbol","symbol":"star","font":{"style":"headline","weight":"semibold"},"foreground":"blue"})"},
        {label("macwindow", "2 windows").font(caption2).foreground(secondary),
         R"({"type":"label","symbol":"macwindow","text":"2 windows","font":{"style":"caption2"},"foreground":"secondary"})"},
        {image(EncodedData(Data::owning("\x89PNG"), EncodedData::Encoding::raw), star),
         R"({"type":"image","data":"iVBORw==","fallback":{"type":"symbol","symbol":"star"}})"},
        {circle(Color::red), R"({"type":"circle","fill":"red"})"},
        {star.padding({.top = 3, .leading = -1}),
         R"({"type":"padding","top":3,"leading":-1,"child":{"type":"symbol","symbol":"star"}})"},
        {star.frame({.width = 18}), R"({"type":"frame","width":18,"child":{"type":"symbol","symbol":"star"}})"},
        {star.capsuleBackground(Color::blue),
         R"({"type":"background","shape":"capsule","fill":"blue","child":{"type":"symbol","symbol":"star"}})"},
        {star.link("x-foliovault-item://A?b=c&d", "item:A"),
         R"({"type":"link","url":"x-foliovault-item://A?b=c&d","id":"item:A","child":{"type":"symbol","symbol":"star"}})"},
        {star.accentable(), R"({"type":"accentable","child":{"type":"symbol","symbol":"star"}})"},
    };
    for (const auto& [view, text] : rows) {
        EXPECT_EQ(json(view), text);
        const auto read = readBack(text);
        ASSERT_TRUE(read) << read.error();
        EXPECT_EQ(*read, view) << text;
    }
}

TEST(ViewJson, PassesOverUnknownAndInvalidParts) {
    const std::pair<const char*, View> rows[]{
        {R"({"type":"hologram","children":[{"type":"symbol","symbol":"star"}],"depth":3})", vStack({}, {star})},
        {R"({"type":"tilted","angle":7,"child":{"type":"symbol","symbol":"star"}})", star.padding({})},
        {R"({})", vStack({}, {})},
        {R"({"type":"vstack","alignment":"diagonal","spacing":"wide"})", vStack({}, {})},
        {R"({"type":"symbol","symbol":"star","font":{"style":"tiny"},"foreground":"plaid"})", star},
        {R"({"type":"spacer","minLength":1e300})", spacer()},
        {R"({"type":"text","text":"a","lineLimit":0})", text("a")},
        {R"({"type":"text","text":"a","lineLimit":99999999999})", text("a").lineLimit(1'000'000)},
        {R"({"type":"link","child":{"type":"symbol","symbol":"star"}})", star.padding({})},
        {R"({"type":"frame","width":-1,"height":8,"child":{"type":"symbol","symbol":"star"}})",
         star.frame({.height = 8})},
    };
    for (const auto& [text, expected] : rows) {
        const auto view = readBack(text);
        ASSERT_TRUE(view) << text << view.error();
        EXPECT_EQ(*view, expected) << text;
    }
}

TEST(ViewJson, CutsLongTextsAndLeavesOutLongLinks) {
    const std::string longest = repeated("a", maxTextLength);
    const std::pair<std::string, std::string> rows[]{
        {longest, longest},
        {longest + "a", longest},
        {"a" + repeated("ä", maxTextLength / 2), "a" + repeated("ä", maxTextLength / 2 - 1)},
        {"abc" + repeated("😀", maxTextLength), "abc" + repeated("😀", maxTextLength / 4 - 1)},
        {repeated("\1", maxTextLength / 6), repeated("\1", maxTextLength / 6)},
        {repeated("\1", maxTextLength), repeated("\1", maxTextLength / 6)},
        {repeated("\xBF", 2 * maxTextLength), ""},
    };
    for (const auto& [whole, cut] : rows) {
        EXPECT_TRUE(text(whole) == View(Node{.content = Text{.text = cut}})) << whole.substr(0, 8);
        EXPECT_TRUE(label("star", whole) == View(Node{.content = Label{.symbol = "star", .text = cut}}));
    }
    EXPECT_TRUE(std::holds_alternative<Link>(star.link(longest).node().content));
    EXPECT_TRUE(star.link(longest + "a") == star);
}

TEST(ViewJson, RefusesTreesBeyondItsBounds) {
    const auto nested = [](std::size_t depth) {
        return repeated(R"({"type":"padding","child":)", depth - 1) + R"({"type":"clear"})" + repeated("}", depth - 1);
    };
    const auto wide = [](std::size_t count) {
        return R"({"type":"vstack","children":[{"type":"clear"})" + repeated(R"(,{"type":"clear"})", count - 2) + "]}";
    };
    EXPECT_TRUE(readBack(nested(maxViewDepth)));
    EXPECT_THAT(readBack(nested(maxViewDepth + 1)).error(), testing::HasSubstr("deeper than 64"));
    EXPECT_TRUE(readBack(wide(maxViewCount)));
    EXPECT_THAT(readBack(wide(maxViewCount + 1)).error(), testing::HasSubstr("more than 10000"));
    for (const char* json : {"7", R"({"type":"vstack","children":[7]})", R"({"type":"image","fallback":"none"})",
                             R"({"type":"padding","child":null})"}) {
        EXPECT_FALSE(readBack(json)) << json;
    }
}

} // namespace
} // namespace platform
