#include "Host/Drawing/PathData.h"

#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace host {
namespace {

/// A path as text, coordinates rounded to thousandths: "M 1 2 L 3 4 C … Z".
std::string written(const Path& path) {
    std::string out;
    const auto add = [&](const char* letter, std::initializer_list<Point> points) {
        out += out.empty() ? letter : std::string(" ") + letter;
        for (const Point& p : points) {
            // Adding zero makes no -0.
            std::ostringstream text;
            text << ' ' << std::round(p.x * 1000) / 1000 + 0.0 << ' ' << std::round(p.y * 1000) / 1000 + 0.0;
            out += text.str();
        }
    };
    for (const PathSegment& segment : path) {
        if (const auto* move = std::get_if<MoveTo>(&segment)) {
            add("M", {move->to});
        } else if (const auto* line = std::get_if<LineTo>(&segment)) {
            add("L", {line->to});
        } else if (const auto* curve = std::get_if<CurveTo>(&segment)) {
            add("C", {curve->control1, curve->control2, curve->to});
        } else {
            add("Z", {});
        }
    }
    return out;
}

struct Case {
    const char* data;
    const char* path;
};

TEST(PathData, ReadsEveryCommand) {
    const std::vector<Case> cases{
        {"", ""},
        {" \n\t", ""},
        {"M1 2", "M 1 2"},
        {"m1 2", "M 1 2"},
        {"M 1 2 3 4 5 6", "M 1 2 L 3 4 L 5 6"},
        {"m 1 2 3 4 5 6", "M 1 2 L 4 6 L 9 12"},
        {"M1 2L3 4l1-1", "M 1 2 L 3 4 L 4 3"},
        {"M1 2H5h-1V9v.5", "M 1 2 L 5 2 L 4 2 L 4 9 L 4 9.5"},
        {"M0 0H1 2 3", "M 0 0 L 1 0 L 2 0 L 3 0"},
        {"M1,1 C1,2 3,4 5,6", "M 1 1 C 1 2 3 4 5 6"},
        {"M1 1c1,2 3,4 5,6", "M 1 1 C 2 3 4 5 6 7"},
        // A smooth curve mirrors the handle of the curve before it, and of nothing else.
        {"M0 0C0 1 1 2 2 2S4 3 4 4", "M 0 0 C 0 1 1 2 2 2 C 3 2 4 3 4 4"},
        {"M0 0s1 1 2 0", "M 0 0 C 0 0 1 1 2 0"},
        {"M0 0C0 1 1 2 2 2L3 3S4 4 5 3", "M 0 0 C 0 1 1 2 2 2 L 3 3 C 3 3 4 4 5 3"},
        {"M0 0Q3 3 6 0", "M 0 0 C 2 2 4 2 6 0"},
        {"M0 0q3 3 6 0t6 0", "M 0 0 C 2 2 4 2 6 0 C 8 -2 10 -2 12 0"},
        {"M0 0C0 1 1 2 2 2T4 4", "M 0 0 C 0 1 1 2 2 2 C 2 2 2.667 2.667 4 4"},
        {"M0 0L1 0L1 1Z", "M 0 0 L 1 0 L 1 1 Z"},
        // After closing, the current point is the start again.
        {"M2 2l1 0zl5 5", "M 2 2 L 3 2 Z L 7 7"},
        {"M1 1 2 2zm1 0 1 1", "M 1 1 L 2 2 Z M 2 1 L 3 2"},
        // Numbers as they may be run together.
        {"M.5.5-.5-.5", "M 0.5 0.5 L -0.5 -0.5"},
        {"M1e1-1E-1", "M 10 -0.1"},
        {"M+1+2", "M 1 2"},
        {"M1.5.25 1.", "!"},
        {"M1.,2.", "M 1 2"},
    };
    for (const Case& c : cases) {
        const auto path = parsePathData(c.data);
        EXPECT_EQ(path ? written(*path) : "!", c.path) << c.data;
    }
}

TEST(PathData, TurnsArcsIntoCurves) {
    const std::vector<Case> cases{
        {"M1 0A1 1 0 0 1 0 1", "M 1 0 C 1 0.552 0.552 1 0 1"},
        {"M1 0A1 1 0 0 0 0 1", "M 1 0 C 0.448 0 0 0.448 0 1"},
        {"M1 0A1 1 0 010 1", "M 1 0 C 1 0.552 0.552 1 0 1"},
        {"M1 0a1,1,0,0,1,-1,1", "M 1 0 C 1 0.552 0.552 1 0 1"},
        {"M-1 0A1 1 0 0 1 1 0", "M -1 0 C -1 -0.552 -0.552 -1 0 -1 C 0.552 -1 1 -0.552 1 0"},
        {"M1 0A1 1 0 1 0 0 1", "M 1 0 C 1 -0.552 0.552 -1 0 -1 C -0.552 -1 -1 -0.552 -1 0 C -1 0.552 -0.552 1 0 1"},
        {"M2 0A2 1 0 0 1 0 1", "M 2 0 C 2 0.552 1.105 1 0 1"},
        // The ellipse's own axes turned by a right angle: as if the radii were exchanged.
        {"M2 0A1 2 90 0 1 0 1", "M 2 0 C 2 0.552 1.105 1 0 1"},
        // Radii that cannot span the distance grow until they do; their sign does not count.
        {"M-1 0A.1 .1 0 0 1 1 0", "M -1 0 C -1 -0.552 -0.552 -1 0 -1 C 0.552 -1 1 -0.552 1 0"},
        {"M1 0A-1-1 0 0 1 0 1", "M 1 0 C 1 0.552 0.552 1 0 1"},
        {"M1 0A0 1 0 0 1 0 1", "M 1 0 L 0 1"},
        {"M1 0A1 1 0 0 1 1 0L2 2", "M 1 0 L 2 2"},
    };
    for (const Case& c : cases) {
        const auto path = parsePathData(c.data);
        EXPECT_EQ(path ? written(*path) : "!", c.path) << c.data;
    }
}

TEST(PathData, RefusesWhatIsMalformed) {
    for (const char* data : {"L1 1",
                             "1 1",
                             "M",
                             "M1",
                             "M1 1 2",
                             "M1 1L",
                             "M1 1L2",
                             "M1 1X2 2",
                             "M1 1 Z 3",
                             "M1 1H",
                             "M1 1C1 2 3 4 5",
                             "M1 1Q1 2 3",
                             "M1 1A1 1 0 2 0 3 3",
                             "M1 1A1 1 0 0 0 3",
                             "M1 1A1 1 0 0",
                             "M,1 1",
                             "M1,,1",
                             "M1 1,",
                             "M1 1,L2 2",
                             "M1 1 L nan 2",
                             "M1 inf",
                             "M--1 1",
                             "M+-1 1",
                             "M- 1",
                             "M. 1",
                             "M1e999 1",
                             "M1 1L2 2;",
                             "M\xC3\xA9"}) {
        EXPECT_FALSE(parsePathData(data)) << data;
    }
}

} // namespace
} // namespace host
