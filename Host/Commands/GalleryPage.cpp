#include "Host/Commands/GalleryPage.h"

#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Releaser.h"

#include <fmt/format.h>
#include <glib.h>

#include <memory>

namespace host {
namespace {

constexpr std::string_view style = R"css(
* { box-sizing: border-box; margin: 0 }
body { font: 14px/1.5 Inter, system-ui, sans-serif; color: #1d1d1f; background: #f5f5f7; padding: 40px }
h1 { font-size: 28px; line-height: 1.2; letter-spacing: -.02em }
h2 { font-size: 18px; line-height: 1.3; letter-spacing: -.01em; margin-top: 40px }
p { color: #6e6e73; margin-bottom: 14px }
.pair { display: flex; flex-wrap: wrap; gap: 20px }
.ground { border-radius: 18px; padding: 32px; display: flex; flex-wrap: wrap; gap: 24px; width: 816px; max-width: 100%;
  align-content: flex-start }
.light { background: linear-gradient(140deg, #9db7c9, #d7cdbb 55%, #b9c7b0) }
.dark { background: linear-gradient(140deg, #1d2a36, #3a3340 55%, #1f2b25) }
img { display: block; max-width: 100%; height: auto; border-radius: 20px; box-shadow: 0 6px 18px rgba(0, 0, 0, .16) }
@media (prefers-color-scheme: dark) { body { color: #f5f5f7; background: #161618 } p { color: #98989d } }
)css";

std::string escaped(const std::string& text) {
    const std::unique_ptr<char, platform::Releaser<g_free>> markup(
        g_markup_escape_text(text.data(), static_cast<gssize>(text.size())));
    return markup.get();
}

/// Kinds and families come from an extension, which must not choose the path of a file.
std::string fileNamePart(std::string_view text) {
    std::string part;
    for (const char c : text) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
        part += plain ? c : '_';
    }
    return part;
}

std::string pictures(const WidgetInfo& widget, ColorScheme scheme) {
    std::string html = fmt::format("<div class=\"ground {}\">\n", scheme == ColorScheme::light ? "light" : "dark");
    for (const std::string& family : widget.families) {
        const Size size = familySize(family);
        html += fmt::format("<img src=\"{}\" width=\"{}\" height=\"{}\" alt=\"{}, {}\">\n",
                            galleryPictureName(widget.kind, family, scheme), size.width, size.height,
                            escaped(widget.displayName), escaped(family));
    }
    return html + "</div>\n";
}

} // namespace

std::string galleryPage(const std::vector<WidgetInfo>& widgets, const std::vector<ColorScheme>& schemes) {
    std::string html = "<!doctype html>\n<html lang=\"en\">\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width\">\n<title>Widgets</title>\n<style>";
    html.append(style).append("</style>\n<h1>Widgets</h1>\n");
    for (const WidgetInfo& widget : widgets) {
        html += fmt::format("<h2>{}</h2>\n<p>{}</p>\n<div class=\"pair\">\n", escaped(widget.displayName),
                            escaped(widget.description));
        for (const ColorScheme scheme : schemes) {
            html += pictures(widget, scheme);
        }
        html += "</div>\n";
    }
    return html + "</html>\n";
}

std::string galleryPictureName(std::string_view kind, std::string_view family, ColorScheme scheme) {
    return fmt::format("{}-{}-{}.png", fileNamePart(kind), fileNamePart(family),
                       scheme == ColorScheme::light ? "light" : "dark");
}

} // namespace host
