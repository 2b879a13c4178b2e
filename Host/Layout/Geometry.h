// Lengths in points, y downwards, from the widget's upper left corner.
#pragma once

namespace host {

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace host
