// Pictures as tests look at them: decoded by gdk-pixbuf, whatever wrote them; and widgets laid out by hand.
#pragma once

#include "Host/Drawing/Renderer.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Red, green, blue, alpha; not premultiplied.
using Pixel = std::array<int, 4>;

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;

    const Pixel& at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
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

WidgetLayout widget(std::vector<LayoutItem> items, Size size = {170, 170});

/// A text as the renderer measures it, its upper left corner at `origin`.
LayoutItem textAt(Renderer& renderer, Point origin, std::string_view text, platform::Font font,
                  platform::Foreground foreground = platform::primary);

} // namespace host
