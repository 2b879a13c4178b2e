#include "Host/Drawing/PathData.h"

#include "Host/Layout/Geometry.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>

namespace host {
namespace {

class PathReader {
  public:
    PathReader(cairo_t* cairo, std::string_view data) : cairo_(cairo), rest_(data) {}

    bool read() {
        for (std::string_view command = token(); !command.empty(); command = token()) {
            const bool isFirst = cairo_has_current_point(cairo_) == 0;
            if (command.size() != 1 || (isFirst && command != "M") || !add(command.front())) {
                return false;
            }
        }
        return true;
    }

  private:
    /// Empty at the end.
    std::string_view token() {
        constexpr std::string_view blanks = " \t\r\n";
        rest_.remove_prefix(std::min(rest_.size(), rest_.find_first_not_of(blanks)));
        const std::string_view found = rest_.substr(0, rest_.find_first_of(blanks));
        rest_.remove_prefix(found.size());
        return found;
    }

    template <std::size_t count>
    std::optional<std::array<double, count>> numbers() {
        std::array<double, count> values{};
        for (double& value : values) {
            const std::string_view text = token();
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
            if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
                return std::nullopt;
            }
        }
        return values;
    }

    bool add(char command) {
        Point at;
        cairo_get_current_point(cairo_, &at.x, &at.y);
        switch (command) {
        case 'M':
            return with<2>([&](const auto& n) { cairo_move_to(cairo_, n[0], n[1]); });
        case 'L':
            return with<2>([&](const auto& n) { cairo_line_to(cairo_, n[0], n[1]); });
        case 'H':
            return with<1>([&](const auto& n) { cairo_line_to(cairo_, n[0], at.y); });
        case 'V':
            return with<1>([&](const auto& n) { cairo_line_to(cairo_, at.x, n[0]); });
        case 'C':
            return with<6>([&](const auto& n) { cairo_curve_to(cairo_, n[0], n[1], n[2], n[3], n[4], n[5]); });
        case 'A':
            return with<7>([&](const auto& n) {
                addArc(at, {.radii = {n[0], n[1]}, .isLarge = n[3] != 0, .isSweep = n[4] != 0, .to = {n[5], n[6]}});
            });
        case 'Z':
            cairo_close_path(cairo_);
            return true;
        default:
            return false;
        }
    }

    template <std::size_t count, class Append>
    bool with(Append append) {
        const auto values = numbers<count>();
        if (values) {
            append(*values);
        }
        return values.has_value();
    }

    struct Arc {
        Size radii;
        bool isLarge;
        bool isSweep;
        Point to;
    };

    /// Converts end points to a centre as in SVG 1.1, appendix F.6, in units of the radii.
    void addArc(Point from, const Arc& arc) {
        const Point half{(from.x - arc.to.x) / 2 / arc.radii.width, (from.y - arc.to.y) / 2 / arc.radii.height};
        const double distance = std::hypot(half.x, half.y);
        if (!std::isfinite(distance) || distance == 0) {
            cairo_line_to(cairo_, arc.to.x, arc.to.y);
            return;
        }
        // Radii that cannot span the distance grow until they do.
        const double growth = std::max(1.0, distance);
        const double factor =
            (arc.isLarge == arc.isSweep ? -1 : 1) * std::sqrt(std::max(0.0, growth * growth / distance / distance - 1));
        const Point center{factor * half.y, -factor * half.x};

        cairo_save(cairo_);
        cairo_translate(cairo_, (from.x + arc.to.x) / 2 + center.x * arc.radii.width,
                        (from.y + arc.to.y) / 2 + center.y * arc.radii.height);
        cairo_scale(cairo_, arc.radii.width, arc.radii.height);
        (arc.isSweep ? cairo_arc : cairo_arc_negative)(cairo_, 0, 0, growth,
                                                       std::atan2(half.y - center.y, half.x - center.x),
                                                       std::atan2(-half.y - center.y, -half.x - center.x));
        cairo_restore(cairo_);
    }

    cairo_t* cairo_;
    std::string_view rest_;
};

} // namespace

bool addPathData(cairo_t* cairo, std::string_view data) {
    return PathReader(cairo, data).read();
}

} // namespace host
