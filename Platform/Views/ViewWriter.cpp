#include "Platform/Views/ViewWriter.h"

#include "Platform/Views/Node.h"

namespace platform {
namespace {

void member(JsonWriter& out, std::string_view name, std::optional<double> value) {
    if (value) {
        out.key(name).number(*value);
    }
}

void nonZeroMember(JsonWriter& out, std::string_view name, double value) {
    if (value != 0) {
        out.key(name).number(value);
    }
}

void children(JsonWriter& out, const Views& views) {
    out.key("children").beginArray();
    for (const View& view : views) {
        writeView(out, view);
    }
    out.endArray();
}

void child(JsonWriter& out, const View& view) {
    out.key("child");
    writeView(out, view);
}

/// Writes a node's type and its members.
struct ContentWriter {
    JsonWriter& out;

    void operator()(const VStack& stack) const {
        out.member("type", "vstack");
        stackMembers(stack, HorizontalAlignment::center);
    }
    void operator()(const HStack& stack) const {
        out.member("type", "hstack");
        stackMembers(stack, VerticalAlignment::center);
    }
    void operator()(const Spacer& spacer) const {
        out.member("type", "spacer");
        member(out, "minLength", spacer.minLength);
    }
    void operator()(const Divider&) const { out.member("type", "divider"); }
    void operator()(const Text& text) const {
        out.member("type", "text").member("text", text.text);
        if (text.lineLimit) {
            out.key("lineLimit").number(*text.lineLimit);
        }
        if (text.textAlignment) {
            out.member("textAlignment", styleName(*text.textAlignment));
        }
    }
    void operator()(const Symbol& symbol) const { out.member("type", "symbol").member("symbol", symbol.symbol); }
    void operator()(const Label& label) const {
        out.member("type", "label").member("symbol", label.symbol).member("text", label.text);
    }
    void operator()(const Image& image) const {
        out.member("type", "image").key("data").base64(image.data);
        if (image.fallback) {
            out.key("fallback");
            writeView(out, *image.fallback);
        }
    }
    void operator()(const Circle& circle) const { out.member("type", "circle").member("fill", styleName(circle.fill)); }
    void operator()(const Clear&) const { out.member("type", "clear"); }
    void operator()(const Padding& padding) const {
        out.member("type", "padding");
        nonZeroMember(out, "top", padding.insets.top);
        nonZeroMember(out, "bottom", padding.insets.bottom);
        nonZeroMember(out, "leading", padding.insets.leading);
        nonZeroMember(out, "trailing", padding.insets.trailing);
        child(out, padding.child);
    }
    void operator()(const Frame& frame) const {
        out.member("type", "frame");
        member(out, "width", frame.size.width);
        member(out, "height", frame.size.height);
        child(out, frame.child);
    }
    void operator()(const Background& background) const {
        out.member("type", "background").member("shape", styleName(background.shape));
        out.member("fill", styleName(background.fill));
        child(out, background.child);
    }
    void operator()(const Link& link) const {
        out.member("type", "link").member("url", link.url);
        if (link.id) {
            out.member("id", *link.id);
        }
        child(out, link.child);
    }
    void operator()(const Accentable& accentable) const {
        out.member("type", "accentable");
        child(out, accentable.child);
    }

  private:
    template <class Stack, class Alignment>
    void stackMembers(const Stack& stack, Alignment usual) const {
        if (stack.alignment != usual) {
            out.member("alignment", styleName(stack.alignment));
        }
        member(out, "spacing", stack.spacing);
        children(out, stack.children);
    }
};

} // namespace

void writeView(JsonWriter& out, const View& view) {
    const Node& node = view.node();
    out.beginObject();
    std::visit(ContentWriter{out}, node.content);
    if (node.font) {
        out.key("font").beginObject().member("style", styleName(node.font->style));
        if (node.font->weight) {
            out.member("weight", styleName(*node.font->weight));
        }
        out.endObject();
    }
    if (node.foreground) {
        out.key("foreground");
        std::visit([&](auto value) { out.text(styleName(value)); }, *node.foreground);
    }
    out.endObject();
}

} // namespace platform
