#include "Host/Layout/FramesJson.h"

#include "Platform/Foundation/JsonWriter.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>
#include <variant>

namespace host {
namespace {

void writeLength(platform::JsonWriter& out, std::string_view name, double value) {
    // Adding 0 turns -0 into 0.
    out.key(name).number(std::round(value * 1000) / 1000 + 0.0);
}

void writeFrame(platform::JsonWriter& out, const Rect& frame) {
    writeLength(out, "x", frame.x);
    writeLength(out, "y", frame.y);
    writeLength(out, "width", frame.width);
    writeLength(out, "height", frame.height);
}

std::string joinedLines(const MeasuredText& text) {
    std::string joined;
    for (const TextLine& line : text.lines) {
        if (&line != &text.lines.front()) {
            joined += '\n';
        }
        joined += line.text;
    }
    return joined;
}

struct TypeName {
    std::string_view operator()(const TextItem& /*item*/) const { return "text"; }
    std::string_view operator()(const SymbolItem& /*item*/) const { return "symbol"; }
    std::string_view operator()(const ImageItem& /*item*/) const { return "image"; }
    std::string_view operator()(const CircleItem& /*item*/) const { return "circle"; }
    std::string_view operator()(const CapsuleItem& /*item*/) const { return "background"; }
    std::string_view operator()(const DividerItem& /*item*/) const { return "divider"; }
};

void writeLinks(platform::JsonWriter& out, const WidgetLayout& layout, std::optional<std::size_t> link) {
    out.key("links").beginArray();
    for (; link; link = layout.links[*link].outer) {
        out.beginObject().member("url", layout.links[*link].url);
        writeFrame(out, layout.links[*link].frame);
        out.endObject();
    }
    out.endArray();
}

} // namespace

std::string framesJson(const WidgetLayout& layout) {
    std::string json;
    platform::JsonWriter out(json);
    out.beginArray();
    for (const LayoutItem& item : layout.items) {
        out.beginObject().member("type", std::visit(TypeName{}, item.content));
        writeFrame(out, item.frame);
        if (const auto* text = std::get_if<TextItem>(&item.content)) {
            out.member("text", joinedLines(text->text));
        } else if (const auto* symbol = std::get_if<SymbolItem>(&item.content)) {
            out.member("symbol", symbol->symbol);
        }
        writeLinks(out, layout, item.link);
        out.endObject();
    }
    out.endArray();
    return json;
}

} // namespace host
