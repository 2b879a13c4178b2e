#include "Host/Drawing/PathData.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace host {
namespace {

Point operator+(Point a, Point b) {
    return {a.x + b.x, a.y + b.y};
}
Point operator-(Point a, Point b) {
    return {a.x - b.x, a.y - b.y};
}
Point operator*(double factor, Point p) {
    return {factor * p.x, factor * p.y};
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Splits path data into command letters, numbers and arc flags.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : rest_(text) { skipBlanks(); }

    bool atEnd() const { return rest_.empty(); }

    std::optional<char> command() {
        constexpr std::string_view commands = "MmLlHhVvCcSsQqTtAaZz";
        if (rest_.empty() || commands.find(rest_.front()) == std::string_view::npos) {
            return std::nullopt;
        }
        const char letter = rest_.front();
        rest_.remove_prefix(1);
        skipBlanks();
        return letter;
    }

    bool numberFollows() const {
        return !rest_.empty() && (isDigit(rest_.front()) || std::string_view("+-.").find(rest_.front()) < 3);
    }

    std::optional<double> number() {
        std::string_view digits = rest_;
        if (!digits.empty() && digits.front() == '+') {
            digits.remove_prefix(1);
        }
        // Of what from_chars accepts, "inf" and "nan" are no numbers here, nor is a second sign.
        const std::size_t first = digits.starts_with('-') && digits.data() == rest_.data() ? 1 : 0;
        if (first >= digits.size() || !(isDigit(digits[first]) || digits[first] == '.')) {
            return std::nullopt;
        }
        double value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (error != std::errc() || !std::isfinite(value)) {
            return std::nullopt;
        }
        advance(static_cast<std::size_t>(end - rest_.data()));
        return value;
    }

    std::optional<bool> flag() {
        if (rest_.empty() || (rest_.front() != '0' && rest_.front() != '1')) {
            return std::nullopt;
        }
        const bool value = rest_.front() == '1';
        advance(1);
        return value;
    }

  private:
    void advance(std::size_t count) {
        rest_.remove_prefix(count);
        skipBlanks();
        if (rest_.starts_with(',')) {
            rest_.remove_prefix(1);
            skipBlanks();
            // A comma stands between two numbers, so that a further one, a command or the end is an error.
            if (!numberFollows()) {
                rest_ = malformed;
            }
        }
    }
    void skipBlanks() { rest_.remove_prefix(std::min(rest_.size(), rest_.find_first_not_of(" \t\r\n\f"))); }

    static constexpr std::string_view malformed = "!";
    std::string_view rest_;
};

struct Arc {
    Point radii;
    double rotation;
    bool large;
    bool sweep;
    Point to;
};

/// Appends `arc` as curves of at most a quarter turn: SVG 1.1, appendix F.6, from end points to centre.
void appendArc(Path& path, Point from, const Arc& arc) {
    double rx = std::abs(arc.radii.x);
    double ry = std::abs(arc.radii.y);
    if (from == arc.to) {
        return;
    }
    if (rx == 0 || ry == 0) {
        path.emplace_back(LineTo{arc.to});
        return;
    }
    const double cosine = std::cos(arc.rotation * std::numbers::pi / 180);
    const double sine = std::sin(arc.rotation * std::numbers::pi / 180);
    const Point half = 0.5 * (from - arc.to);
    const Point turned{cosine * half.x + sine * half.y, cosine * half.y - sine * half.x};

    const double excess = turned.x * turned.x / (rx * rx) + turned.y * turned.y / (ry * ry);
    if (excess > 1) {
        rx *= std::sqrt(excess);
        ry *= std::sqrt(excess);
    }
    const double distance = rx * rx * turned.y * turned.y + ry * ry * turned.x * turned.x;
    const double factor =
        (arc.large == arc.sweep ? -1 : 1) * std::sqrt(std::max(0.0, (rx * rx * ry * ry - distance) / distance));
    const Point center{factor * rx * turned.y / ry, -factor * ry * turned.x / rx};

    const double start = std::atan2((turned.y - center.y) / ry, (turned.x - center.x) / rx);
    double extent = std::atan2((-turned.y - center.y) / ry, (-turned.x - center.x) / rx) - start;
    if (arc.sweep && extent < 0) {
        extent += 2 * std::numbers::pi;
    } else if (!arc.sweep && extent > 0) {
        extent -= 2 * std::numbers::pi;
    }

    const auto placed = [&](double x, double y) { return Point{cosine * x - sine * y, sine * x + cosine * y}; };
    const Point middle = placed(center.x, center.y) + 0.5 * (from + arc.to);
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(extent) / (std::numbers::pi / 2) - 1e-9)));
    const double step = extent / pieces;
    const double handle = 4.0 / 3.0 * std::tan(step / 4);
    for (int i = 0; i < pieces; ++i) {
        const double a = start + i * step;
        const double b = a + step;
        const Point atA = middle + placed(rx * std::cos(a), ry * std::sin(a));
        const Point atB = i + 1 == pieces ? arc.to : middle + placed(rx * std::cos(b), ry * std::sin(b));
        path.emplace_back(CurveTo{atA + handle * placed(-rx * std::sin(a), ry * std::cos(a)),
                                  atB - handle * placed(-rx * std::sin(b), ry * std::cos(b)), atB});
    }
}

class Parser {
  public:
    explicit Parser(std::string_view data) : scanner_(data) {}

    std::optional<Path> parse() {
        while (!scanner_.atEnd()) {
            auto command = scanner_.command();
            if (!command || (path_.empty() && *command != 'M' && *command != 'm')) {
                return std::nullopt;
            }
            do {
                if (!segment(*command)) {
                    return std::nullopt;
                }
                // Further pairs after a move are lines.
                command = *command == 'M' ? 'L' : *command == 'm' ? 'l' : *command;
            } while (scanner_.numberFollows());
        }
        return std::move(path_);
    }

  private:
    enum class Curve { none, cubic, quadratic };
    /// The last control point of a segment that was a curve.
    struct Handle {
        Curve of = Curve::none;
        Point control;
    };

    bool segment(char command) {
        const char kind = command >= 'a' ? static_cast<char>(command - 'a' + 'A') : command;
        const Point origin = command >= 'a' ? at_ : Point{};
        const Handle before = std::exchange(handle_, {});
        switch (kind) {
        case 'M':
            return points<1>(origin, [&](auto& p) {
                path_.emplace_back(MoveTo{p[0]});
                start_ = p[0];
            });
        case 'L':
            return points<1>(origin, [&](auto& p) { path_.emplace_back(LineTo{p[0]}); });
        case 'H':
            return coordinate([&](double x) { return Point{origin.x + x, at_.y}; });
        case 'V':
            return coordinate([&](double y) { return Point{at_.x, origin.y + y}; });
        case 'C':
            return points<3>(origin, [&](auto& p) { cubic(p[0], p[1], p[2]); });
        case 'S':
            return points<2>(origin, [&](auto& p) { cubic(reflected(before, Curve::cubic), p[0], p[1]); });
        case 'Q':
            return points<2>(origin, [&](auto& p) { quadratic(p[0], p[1]); });
        case 'T':
            return points<1>(origin, [&](auto& p) { quadratic(reflected(before, Curve::quadratic), p[0]); });
        case 'A':
            return arc(origin);
        default: // Z
            path_.emplace_back(ClosePath{});
            at_ = start_;
            // Numbers have no command to belong to here.
            return !scanner_.numberFollows();
        }
    }

    template <std::size_t count, class Append>
    bool points(Point origin, Append append) {
        std::array<Point, count> p;
        for (Point& point : p) {
            const auto x = scanner_.number();
            const auto y = x ? scanner_.number() : std::nullopt;
            if (!y) {
                return false;
            }
            point = origin + Point{*x, *y};
        }
        append(p);
        at_ = p[count - 1];
        return true;
    }

    template <class Place>
    bool coordinate(Place place) {
        const auto value = scanner_.number();
        if (!value) {
            return false;
        }
        at_ = place(*value);
        path_.emplace_back(LineTo{at_});
        return true;
    }

    bool arc(Point origin) {
        const auto rx = scanner_.number();
        const auto ry = rx ? scanner_.number() : std::nullopt;
        const auto rotation = ry ? scanner_.number() : std::nullopt;
        const auto large = rotation ? scanner_.flag() : std::nullopt;
        const auto sweep = large ? scanner_.flag() : std::nullopt;
        const auto x = sweep ? scanner_.number() : std::nullopt;
        const auto y = x ? scanner_.number() : std::nullopt;
        if (!y) {
            return false;
        }
        const Point to = origin + Point{*x, *y};
        appendArc(path_, at_, {{*rx, *ry}, *rotation, *large, *sweep, to});
        at_ = to;
        return true;
    }

    void cubic(Point control1, Point control2, Point to) {
        path_.emplace_back(CurveTo{control1, control2, to});
        handle_ = {Curve::cubic, control2};
    }

    void quadratic(Point control, Point to) {
        path_.emplace_back(CurveTo{at_ + 2.0 / 3.0 * (control - at_), to + 2.0 / 3.0 * (control - to), to});
        handle_ = {Curve::quadratic, control};
    }

    /// Where the first control point lies for a curve that goes on smoothly from one of its own kind.
    Point reflected(const Handle& before, Curve kind) const {
        return before.of == kind ? 2.0 * at_ - before.control : at_;
    }

    Scanner scanner_;
    Path path_;
    Point at_;
    Point start_;
    Handle handle_;
};

} // namespace

std::optional<Path> parsePathData(std::string_view data) {
    return Parser(data).parse();
}

} // namespace host
