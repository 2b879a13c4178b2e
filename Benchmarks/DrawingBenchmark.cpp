// drawing_benchmark picture ENTRY ROUNDS: a large tile at scale 2, drawn and encoded by our renderer, by turns with plain
// Pango and Cairo drawing the same items and cairo writing the PNG. ENTRY is a file with an entry of the protocol.
// drawing_benchmark drawing ENTRY ROUNDS: our drawing alone, again and again.

#include "Benchmarks/Rounds.h"

#include "Host/Drawing/PngFile.h"
#include "Host/Drawing/Renderer.h"
#include "Host/Layout/Measures.h"
#include "Platform/Views/ViewReader.h"

#include <pango/pangocairo.h>

#include <cstdlib>
#include <memory>

namespace {

constexpr double scale = 2;

void draw(cairo_t* cairo, const host::LayoutItem& item, const host::TextItem& text) {
    const host::TextMeasures measures = host::textMeasures(item.font);
    PangoLayout* layout = pango_cairo_create_layout(cairo);
    PangoFontDescription* font = pango_font_description_from_string("Inter");
    pango_font_description_set_absolute_size(font, measures.size * PANGO_SCALE);
    pango_font_description_set_weight(font, static_cast<PangoWeight>(measures.weight));
    pango_layout_set_font_description(layout, font);
    double y = item.frame.y;
    for (const host::TextLine& line : text.text.lines) {
        pango_layout_set_text(layout, line.text.c_str(), -1);
        cairo_move_to(cairo, item.frame.x, y);
        pango_cairo_show_layout(cairo, layout);
        y += text.lineHeight;
    }
    pango_font_description_free(font);
    g_object_unref(layout);
}

/// What anybody would write first: every item with the means of the libraries, nothing kept.
void drawPlainly(cairo_t* cairo, const host::WidgetLayout& layout) {
    cairo_scale(cairo, scale, scale);
    cairo_set_source_rgba(cairo, .96, .96, .97, .86);
    cairo_rectangle(cairo, 0, 0, layout.size.width, layout.size.height);
    cairo_fill(cairo);
    cairo_set_source_rgba(cairo, 0, 0, 0, .88);
    for (const host::LayoutItem& item : layout.items) {
        if (const auto* text = std::get_if<host::TextItem>(&item.content)) {
            draw(cairo, item, *text);
        } else {
            const bool filled = std::holds_alternative<host::DividerItem>(item.content) ||
                                std::holds_alternative<host::CircleItem>(item.content);
            cairo_set_line_width(cairo, 1);
            cairo_rectangle(cairo, item.frame.x, item.frame.y, item.frame.width, item.frame.height);
            filled ? cairo_fill(cairo) : cairo_stroke(cairo);
        }
    }
}

std::string plainPicture(const host::WidgetLayout& layout) {
    cairo_surface_t* surface = cairo_image_surface_create(
        CAIRO_FORMAT_ARGB32, static_cast<int>(layout.size.width * scale), static_cast<int>(layout.size.height * scale));
    cairo_t* cairo = cairo_create(surface);
    drawPlainly(cairo, layout);
    std::string png;
    cairo_surface_write_to_png_stream(
        surface,
        [](void* out, const unsigned char* bytes, unsigned length) {
            static_cast<std::string*>(out)->append(reinterpret_cast<const char*>(bytes), length);
            return CAIRO_STATUS_SUCCESS;
        },
        &png);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    return png;
}

void expectPicture(const std::string& png) {
    if (png.size() < 1000) {
        std::fprintf(stderr, "nothing was drawn\n");
        std::exit(1);
    }
}

} // namespace

int main(int argc, char** argv) {
    simdjson::dom::parser parser;
    simdjson::dom::element node;
    if (argc != 4 || parser.load(argv[2])["content"]["view"].get(node) != simdjson::SUCCESS) {
        std::fprintf(stderr, "usage: drawing_benchmark picture|drawing ENTRY ROUNDS\n");
        return 64;
    }
    const auto view = platform::readView(node);
    if (!view) {
        std::fprintf(stderr, "%s\n", view.error().c_str());
        return 1;
    }
    host::Renderer renderer;
    const host::WidgetLayout layout =
        host::layOut(*view, host::familySize("large"), renderer.texts(), renderer.images());
    std::vector<benchmarks::Work> works{
        {"picture", [&] { expectPicture(host::pngFile(renderer.pixels(layout, {}, scale))); }},
        {"plainPicture", [&] { expectPicture(plainPicture(layout)); }},
    };
    if (std::string_view(argv[1]) == "drawing") {
        works = {{"drawing", [&] { renderer.pixels(layout, {}, scale); }}};
    }
    benchmarks::timeByTurns(works, std::atoi(argv[3]));
}
