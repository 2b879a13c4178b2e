// Pictures as tests look at them: decoded by gdk-pixbuf, whatever wrote them; and widgets laid out by hand.
#pragma once

#include "Host/Drawing/Renderer.h"

#include <array>
#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host {

/// Red, green, blue, alpha; not premultiplied.
using Pixel = std::array<int, 4>;

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;

    const Pixel& at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    }
    friend bool operator==(const Picture&, const Picture&) = default;
};

/// Nothing in it if `file` is no image.
Picture decoded(std::string_view file);

/// An image file made by gdk-pixbuf; `type` is one of its own: "png", "jpeg", "bmp", "tiff".
std::string imageFile(const Picture& picture, const char* type);

Picture plainPicture(int width, int height, Pixel color);

/// The greatest difference of any channel.
int difference(const Pixel& a, const Pixel& b);

/// `top` at the given strength over `below`, in 8 bits.
Pixel over(const Pixel& top, double strength, const Pixel& below);

/// A tile's background, its tertiary fill over F6F6F8 or 26262A at 86 %.
Pixel tileOf(const Appearance& appearance);

inline constexpr Appearance light{};
inline constexpr Appearance dark{.scheme = ColorScheme::dark};

/// In pixels; `right` and `bottom` lie outside.
struct Box {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int width() const { return right - left; }
    int height() const { return bottom - top; }
    friend bool operator==(const Box&, const Box&) = default;
};

/// The smallest box around the pixels that fulfil `predicate`, the tile's edge and corners left aside.
Box boxOf(const Picture& picture, const std::function<bool(const Pixel&)>& predicate);

/// The smallest box around what is not the tile's background.
Box inkOf(const Picture& picture, const Appearance& appearance = light);

WidgetLayout widget(std::vector<LayoutItem> items, Size size = {170, 170});

/// A text as the renderer measures it, its upper left corner at `origin`.
LayoutItem textAt(Renderer& renderer, Point origin, std::string_view text, platform::Font font,
                  platform::Foreground foreground = platform::primary);

LayoutItem circleAt(const Rect& frame, platform::Color fill, bool accented = false);
LayoutItem symbolAt(const Rect& frame, platform::Foreground foreground = platform::primary);
LayoutItem imageAt(const Rect& frame, const Picture& picture);

/// For tests of what one renderer draws.
class PictureTest : public testing::Test {
  protected:
    Picture picture(const WidgetLayout& layout, double scale = 1, const Appearance& appearance = light) {
        return decoded(renderer.png(layout, appearance, scale));
    }
    Picture picture(LayoutItem item, double scale = 1, const Appearance& appearance = light) {
        return picture(widget({std::move(item)}), scale, appearance);
    }
    Renderer renderer;
};

} // namespace host
