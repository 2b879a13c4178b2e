#include "Host/Drawing/Handles.h"
#include "Host/Drawing/PathData.h"

#include <cmath>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace host {
namespace {

/// What cairo has made of path data, coordinates rounded to hundredths: "M 1 2 L 3 4 C … Z"; "!" if it is malformed.
std::string added(const char* data) {
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const CairoHandle cairo(cairo_create(surface.get()));
    // Large enough for arcs to be exact.
    cairo_scale(cairo.get(), 1000, 1000);
    if (!addPathData(cairo.get(), data)) {
        return "!";
    }
    cairo_path_t* const path = cairo_copy_path(cairo.get());
    std::string out;
    for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
        const auto type = path->data[i].header.type;
        // Closing moves to the start.
        if (type == CAIRO_PATH_MOVE_TO && out.ends_with('Z')) {
            continue;
        }
        std::ostringstream segment;
        segment << (out.empty() ? "" : " ") << "MLCZ"[type];
        for (int point = 1; point < path->data[i].header.length; ++point) {
            const auto& at = path->data[i + point].point;
            // Adding zero makes no -0.
            segment << ' ' << std::round(at.x * 100) / 100 + 0.0 << ' ' << std::round(at.y * 100) / 100 + 0.0;
        }
        out += segment.str();
    }
    cairo_path_destroy(path);
    return out;
}

TEST(PathData, ReadsTheCommandsInUse) {
    struct Case {
        const char* data;
        const char* path;
    };
    const std::vector<Case> cases{
        {"", ""},
        {" M 1 2 L 3 -4.5\n", "M 1 2 L 3 -4.5"},
        {"M 1 2 H 5 V 9", "M 1 2 L 5 2 L 5 9"},
        {"M 1 1 C 1 2 3 4 5 6", "M 1 1 C 1 2 3 4 5 6"},
        {"M 0 0 L 1 0 L 1 1 Z", "M 0 0 L 1 0 L 1 1 Z"},
        // A smooth curve mirrors the handle of the curve before it, and of nothing else.
        {"M 0 0 C 0 1 1 2 2 2 S 4 3 4 4", "M 0 0 C 0 1 1 2 2 2 C 3 2 4 3 4 4"},
        {"M 0 0 S 1 1 2 0", "M 0 0 C 0 0 1 1 2 0"},
        {"M 0 0 Q 3 3 6 0", "M 0 0 C 2 2 4 2 6 0"},
        {"M 0 0 Q 3 3 6 0 S 8 8 9 0", "M 0 0 C 2 2 4 2 6 0 C 6 0 8 8 9 0"},
        {"M 2 2 L 3 2 Z L 7 7", "M 2 2 L 3 2 Z L 7 7"},
        // Arcs the shorter and the longer way, either way round; radii that are too short grow.
        {"M 1 0 A 1 1 0 0 0 1 0", "M 1 0 L 1 0"},
        {"L 1 1", "!"},
        {"M 1", "!"},
        {"M 1 1 X 2 2", "!"},
        {"M 1 1 L 2 nan", "!"},
        {"M 1 1 L2 2", "!"},
        {"M 1 1 A 1 1 0 0 1 3", "!"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(added(c.data), c.path) << c.data;
    }
}

TEST(PathData, ArcsGoTheWayThatTheyAreTold) {
    struct Case {
        const char* data;
        std::array<double, 4> extents;
    };
    const std::vector<Case> cases{
        {"M 1 0 A 1 1 0 0 1 0 1", {0, 0, 1, 1}},
        {"M 1 0 A 1 1 0 0 0 0 1", {0, 0, 1, 1}},
        {"M 1 0 A 1 1 0 1 0 0 1", {-1, -1, 1, 1}},
        {"M 1 0 A 1 1 0 1 1 0 1", {0, 0, 2, 2}},
        {"M -1 0 A 1 1 0 0 1 1 0", {-1, -1, 1, 0}},
        {"M -1 0 A 1 1 0 0 0 1 0", {-1, 0, 1, 1}},
        {"M 2 0 A 2 1 0 0 1 0 1", {0, 0, 2, 1}},
        // Radii that cannot span the distance grow until they do.
        {"M -1 0 A .1 .1 0 0 1 1 0", {-1, -1, 1, 0}},
    };
    for (const Case& c : cases) {
        const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
        const CairoHandle cairo(cairo_create(surface.get()));
        cairo_scale(cairo.get(), 1000, 1000);
        ASSERT_TRUE(addPathData(cairo.get(), c.data));
        std::array<double, 4> found{};
        cairo_path_extents(cairo.get(), &found[0], &found[1], &found[2], &found[3]);
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_NEAR(found.at(i), c.extents.at(i), 0.01) << c.data;
        }
    }
}

} // namespace
} // namespace host
