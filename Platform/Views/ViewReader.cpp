#include "Platform/Views/ViewReader.h"

#include "Platform/Views/Node.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace platform {
namespace {

using simdjson::dom::element;
using simdjson::dom::object;

std::optional<std::string_view> textMember(const object& node, std::string_view name) {
    std::string_view value;
    return node[name].get(value) == simdjson::SUCCESS ? std::optional(value) : std::nullopt;
}

std::optional<double> lengthMember(const object& node, std::string_view name) {
    double value = 0;
    if (node[name].get(value) != simdjson::SUCCESS || !(std::abs(value) <= maxViewLength)) {
        return std::nullopt;
    }
    return value;
}

/// Returns a length that is not negative.
std::optional<double> extentMember(const object& node, std::string_view name) {
    const auto length = lengthMember(node, name);
    return length && *length >= 0 ? length : std::nullopt;
}

template <class Value>
std::optional<Value> namedMember(const object& node, std::string_view name) {
    const auto text = textMember(node, name);
    return text ? styleNamed<Value>(*text) : std::nullopt;
}

std::optional<Font> fontOf(const object& node) {
    object font;
    if (node["font"].get(font) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    const auto style = namedMember<TextStyle>(font, "style");
    if (!style) {
        return std::nullopt;
    }
    return Font{*style, namedMember<FontWeight>(font, "weight")};
}

std::optional<Foreground> foregroundOf(const object& node) {
    if (const auto level = namedMember<ForegroundLevel>(node, "foreground")) {
        return *level;
    }
    if (const auto color = namedMember<Color>(node, "foreground")) {
        return *color;
    }
    return std::nullopt;
}

class Reader {
  public:
    std::optional<View> read(element json, int depth) {
        object node;
        if (json.get(node) != simdjson::SUCCESS) {
            return refuse("a node is no object");
        }
        if (depth > maxViewDepth) {
            return refuse("the view tree is deeper than " + std::to_string(maxViewDepth));
        }
        if (++count_ > maxViewCount) {
            return refuse("the view tree has more than " + std::to_string(maxViewCount) + " nodes");
        }
        auto content = contentOf(node, depth);
        if (!content) {
            return std::nullopt;
        }
        return View(Node{.content = *std::move(content), .font = fontOf(node), .foreground = foregroundOf(node)});
    }

    const std::string& reason() const { return reason_; }

  private:
    std::optional<NodeContent> contentOf(const object& node, int depth) {
        const std::string_view type = textMember(node, "type").value_or("");
        if (type == "vstack" || type == "hstack") {
            return stack(node, type, depth);
        }
        if (type == "spacer") {
            return Spacer{.minLength = extentMember(node, "minLength")};
        }
        if (type == "divider") {
            return Divider{};
        }
        if (type == "text") {
            return text(node);
        }
        if (type == "symbol") {
            return Symbol{.symbol = std::string(textMember(node, "symbol").value_or(""))};
        }
        if (type == "label") {
            return Label{.symbol = std::string(textMember(node, "symbol").value_or("")),
                         .text = std::string(textMember(node, "text").value_or(""))};
        }
        if (type == "image") {
            return image(node, depth);
        }
        if (type == "circle") {
            return Circle{.fill = namedMember<Color>(node, "fill").value_or(Color::clear)};
        }
        if (type == "clear") {
            return Clear{};
        }
        if (hasChild(node)) {
            return wrapping(node, type, depth);
        }
        return unknownType(node, depth);
    }

    std::optional<NodeContent> stack(const object& node, std::string_view type, int depth) {
        auto views = children(node, depth);
        if (!views) {
            return std::nullopt;
        }
        const auto spacing = lengthMember(node, "spacing");
        if (type == "vstack") {
            return VStack{.children = *std::move(views),
                          .alignment =
                              namedMember<HorizontalAlignment>(node, "alignment").value_or(HorizontalAlignment::center),
                          .spacing = spacing};
        }
        return HStack{.children = *std::move(views),
                      .alignment =
                          namedMember<VerticalAlignment>(node, "alignment").value_or(VerticalAlignment::center),
                      .spacing = spacing};
    }

    static NodeContent text(const object& node) {
        std::int64_t lines = 0;
        const bool limited = node["lineLimit"].get(lines) == simdjson::SUCCESS && lines >= 1;
        return Text{.text = std::string(textMember(node, "text").value_or("")),
                    .lineLimit = limited ? std::optional(static_cast<int>(std::min<std::int64_t>(lines, 1'000'000)))
                                         : std::nullopt,
                    .textAlignment = namedMember<HorizontalAlignment>(node, "textAlignment")};
    }

    std::optional<NodeContent> image(const object& node, int depth) {
        Image image{.data = EncodedData(Data::owning(std::string(textMember(node, "data").value_or(""))),
                                        EncodedData::Encoding::base64),
                    .fallback = std::nullopt};
        element fallback;
        if (node["fallback"].get(fallback) == simdjson::SUCCESS) {
            image.fallback = read(fallback, depth + 1);
            if (!image.fallback) {
                return std::nullopt;
            }
        }
        return image;
    }

    static bool hasChild(const object& node) {
        element child;
        return node["child"].get(child) == simdjson::SUCCESS;
    }

    std::optional<NodeContent> wrapping(const object& node, std::string_view type, int depth) {
        auto child = read(node["child"].value_unsafe(), depth + 1);
        if (!child) {
            return std::nullopt;
        }
        if (type == "padding") {
            return Padding{.child = *std::move(child),
                           .insets = {.top = lengthMember(node, "top").value_or(0),
                                      .bottom = lengthMember(node, "bottom").value_or(0),
                                      .leading = lengthMember(node, "leading").value_or(0),
                                      .trailing = lengthMember(node, "trailing").value_or(0)}};
        }
        if (type == "frame") {
            return Frame{.child = *std::move(child),
                         .size = {.width = extentMember(node, "width"), .height = extentMember(node, "height")}};
        }
        if (type == "background") {
            return Background{.child = *std::move(child),
                              .shape = namedMember<ShapeKind>(node, "shape").value_or(ShapeKind::capsule),
                              .fill = namedMember<Color>(node, "fill").value_or(Color::clear)};
        }
        if (const auto url = textMember(node, "url"); type == "link" && url) {
            const auto id = textMember(node, "id");
            return Link{.child = *std::move(child),
                        .url = std::string(*url),
                        .id = id ? std::optional(std::string(*id)) : std::nullopt};
        }
        if (type == "accentable") {
            return Accentable{.child = *std::move(child)};
        }
        return Padding{.child = *std::move(child), .insets = {}};
    }

    /// Returns the children of a node of unknown type as a column.
    std::optional<NodeContent> unknownType(const object& node, int depth) {
        auto views = children(node, depth);
        if (!views) {
            return std::nullopt;
        }
        return VStack{.children = *std::move(views)};
    }

    std::optional<Views> children(const object& node, int depth) {
        Views views;
        simdjson::dom::array list;
        if (node["children"].get(list) == simdjson::SUCCESS) {
            for (const element child : list) {
                auto view = read(child, depth + 1);
                if (!view) {
                    return std::nullopt;
                }
                views.push_back(*std::move(view));
            }
        }
        return views;
    }

    std::nullopt_t refuse(std::string reason) {
        reason_ = std::move(reason);
        return std::nullopt;
    }

    int count_ = 0;
    std::string reason_;
};

} // namespace

Expected<View, std::string> readView(element node) {
    Reader reader;
    auto view = reader.read(node, 1);
    if (!view) {
        return Unexpected{reader.reason()};
    }
    return *std::move(view);
}

} // namespace platform
