// The files of Tests/Fixtures/Layout: views, and how they are to be laid out. "== NAME" begins a case, its view follows
// in the protocol's JSON, and then, for each of some sizes, a line with the size and the dump of the layout:
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
#include "Platform/Views/ViewReader.h"
#include "Tests/Host/Layout/FakeMeasurers.h"
#include "Tests/Host/Layout/LayoutDump.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace host {
namespace {

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

std::string laidOut(const std::string& json, std::string_view what, Size size) {
    simdjson::dom::parser parser;
    const simdjson::padded_string padded(json);
    const auto view = platform::readView(parser.parse(padded).value());
    if (!view) {
        return view.error();
    }
    FakeTexts texts;
    FakeImages images;
    const bool isProposal = what == "proposal";
    const double margins = isProposal ? 2 * contentMargin : 0;
    WidgetLayout layout = layOut(*view, {size.width + margins, size.height + margins}, texts, images);
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

class LayoutFixtures : public testing::TestWithParam<const char*> {};

TEST_P(LayoutFixtures, AreLaidOutAsWrittenDown) {
    std::ifstream file(std::string(FIXTURES_FOLDER "/Layout/") + GetParam() + ".txt");
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
            actual += line + "\n" + laidOut(json, what.data(), size);
        } else if (inView) {
            json += line;
            actual += line + "\n";
        } else if (line.empty()) {
            actual += "\n";
        }
    }
    EXPECT_FALSE(json.empty());
    EXPECT_EQ(actual, expected);
}

INSTANTIATE_TEST_SUITE_P(Rules, LayoutFixtures,
                         testing::Values("sharing", "texts", "alignments", "wrappers", "dividers", "items"));
INSTANTIATE_TEST_SUITE_P(Widgets, LayoutFixtures,
                         testing::Values("small", "medium", "mediumFewRows", "large", "extraLarge", "article",
                                         "emptyState"));

} // namespace
} // namespace host
