#include "Tests/Host/Layout/LayoutDump.h"

#include <sstream>

namespace host {
namespace {

std::ostream& operator<<(std::ostream& out, const Rect& frame) {
    return out << frame.x << "," << frame.y << " " << frame.width << "x" << frame.height;
}

struct ContentDump {
    std::ostream& out;
    const Rect& frame;

    void operator()(const TextItem& item) const {
        out << "text " << frame << " \"";
        for (const TextLine& line : item.text.lines) {
            out << (&line == &item.text.lines.front() ? "" : "|") << line.text;
        }
        out << "\"";
        if (item.alignment != platform::HorizontalAlignment::leading) {
            out << " " << styleName(item.alignment);
        }
    }
    void operator()(const SymbolItem& item) const { out << "symbol " << frame << " " << item.symbol; }
    void operator()(const ImageItem& item) const { out << "image " << frame << " " << item.data.decoded().bytes(); }
    void operator()(const CircleItem& item) const { out << "circle " << frame << " " << styleName(item.fill); }
    void operator()(const CapsuleItem& item) const { out << "capsule " << frame << " " << styleName(item.fill); }
    void operator()(const DividerItem& /*item*/) const { out << "divider " << frame; }
};

Rect moved(Rect frame, Point origin) {
    return {frame.x - origin.x, frame.y - origin.y, frame.width, frame.height};
}

} // namespace

std::string dump(const WidgetLayout& layout, Point origin) {
    std::ostringstream out;
    for (const LayoutItem& item : layout.items) {
        std::visit(ContentDump{out, moved(item.frame, origin)}, item.content);
        if (item.font != platform::callout) {
            out << " " << styleName(item.font.style) << (item.font.weight ? "-semibold" : "");
        }
        if (item.foreground != platform::primary) {
            std::visit([&](auto value) { out << " " << styleName(value); }, item.foreground);
        }
        out << (item.accented ? " accented" : "");
        if (item.link) {
            out << " link " << *item.link;
        }
        out << "\n";
    }
    for (const LayoutLink& link : layout.links) {
        out << "link " << moved(link.frame, origin) << " " << link.url;
        if (link.outer) {
            out << " in " << *link.outer;
        }
        out << "\n";
    }
    return out.str();
}

} // namespace host
