#include "Host/Pictures/StoredFace.h"

#include "Host/Drawing/AppearanceNames.h"
#include "Host/Drawing/PixelGrid.h"
#include "Host/Drawing/PngDecoder.h"
#include "Host/Drawing/PngEncoder.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/JsonWriter.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace host {
namespace {

using platform::JsonWriter;
using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

constexpr int storedVersion = 1;
/// What a part's frame may be off from the widget's corner, in points.
constexpr double greatestLength = 1'000'000;

/// In the order of their values.
constexpr std::array<std::string_view, 3> roleNames{"heading", "text", "link"};

void writeAppearance(JsonWriter& out, const Appearance& appearance) {
    out.member("scheme", nameOf(appearance.scheme, colorSchemeNames))
        .member("mode", nameOf(appearance.mode, drawingModeNames));
    out.member("redaction", nameOf(appearance.redaction, redactionNames));
    out.member("contrast", nameOf(appearance.contrast, contrastNames));
    if (const auto& accent = appearance.accent) {
        out.key("accent").beginArray();
        out.number(accent->red).number(accent->green).number(accent->blue).number(accent->alpha).endArray();
    }
}

void writePart(JsonWriter& out, const LayoutPart& part) {
    out.beginObject().member("role", nameOf(part.role, roleNames)).key("frame").beginArray();
    out.number(part.frame.x).number(part.frame.y).number(part.frame.width).number(part.frame.height).endArray();
    out.member("name", part.name);
    if (!part.description.empty()) {
        out.member("description", part.description);
    }
    if (!part.url.empty()) {
        out.member("url", part.url);
    }
    out.endObject();
}

std::string headOf(const Face& face, const Instance& instance) {
    std::string head;
    JsonWriter out(head);
    out.beginObject().key("version").number(storedVersion).member("extension", instance.extension);
    out.member("kind", instance.kind).member("family", instance.family).key("configuration").beginObject();
    for (const auto& [name, choice] : instance.configuration) {
        out.textKey(name).text(choice);
    }
    out.endObject().key("scale").number(face.scale);
    writeAppearance(out, face.appearance);
    out.key("made").number(face.made.secondsSinceReferenceDate);
    out.key("reload").number(face.reload.secondsSinceReferenceDate);
    if (face.widgetURL) {
        out.member("widgetURL", *face.widgetURL);
    }
    out.key("parts").beginArray();
    for (const LayoutPart& part : face.parts) {
        writePart(out, part);
    }
    out.endArray().endObject();
    return head;
}

// Each reads one value into its place and says whether it was there and of the right form.

bool read(object json, std::string_view name, std::string& text) {
    std::string_view view;
    if (json[name].get(view) != simdjson::SUCCESS) {
        return false;
    }
    text = view;
    return true;
}

bool read(object json, std::string_view name, double& number) {
    return json[name].get(number) == simdjson::SUCCESS;
}

template <class Value, std::size_t Count>
bool read(object json, std::string_view name, const std::array<std::string_view, Count>& names, Value& value) {
    std::string_view text;
    if (json[name].get(text) != simdjson::SUCCESS) {
        return false;
    }
    const auto found = valueNamed<Value>(text, names);
    value = found.value_or(value);
    return found.has_value();
}

bool read(object json, std::string_view name, std::array<double, 4>& numbers) {
    array values;
    if (json[name].get(values) != simdjson::SUCCESS || values.size() != numbers.size()) {
        return false;
    }
    auto* number = numbers.begin();
    for (const element value : values) {
        if (value.get(*number) != simdjson::SUCCESS || std::abs(*number) > greatestLength) {
            return false;
        }
        ++number;
    }
    return true;
}

bool isThere(object json, std::string_view name) {
    return json[name].error() == simdjson::SUCCESS;
}

bool readAppearance(object json, Appearance& appearance) {
    if (!read(json, "scheme", colorSchemeNames, appearance.scheme) ||
        !read(json, "mode", drawingModeNames, appearance.mode) ||
        !read(json, "redaction", redactionNames, appearance.redaction) ||
        !read(json, "contrast", contrastNames, appearance.contrast)) {
        return false;
    }
    std::array<double, 4> accent{};
    if (!isThere(json, "accent")) {
        return true;
    }
    if (!read(json, "accent", accent) ||
        !std::all_of(accent.begin(), accent.end(), [](double share) { return share >= 0 && share <= 1; })) {
        return false;
    }
    appearance.accent = Rgba{accent[0], accent[1], accent[2], accent[3]};
    return true;
}

bool readPart(element value, LayoutPart& part) {
    object json;
    std::array<double, 4> frame{};
    if (value.get(json) != simdjson::SUCCESS || !read(json, "role", roleNames, part.role) ||
        !read(json, "frame", frame) || !read(json, "name", part.name) || part.name.empty()) {
        return false;
    }
    part.frame = {frame[0], frame[1], frame[2], frame[3]};
    return (!isThere(json, "description") || read(json, "description", part.description)) &&
           (!isThere(json, "url") || read(json, "url", part.url));
}

bool readParts(object json, std::vector<LayoutPart>& parts) {
    array values;
    if (json["parts"].get(values) != simdjson::SUCCESS || values.size() > greatestPartCount) {
        return false;
    }
    return std::all_of(values.begin(), values.end(),
                       [&](element value) { return readPart(value, parts.emplace_back()); });
}

bool isMadeFor(object json, const Instance& instance) {
    std::string extension;
    std::string kind;
    std::string family;
    object settings;
    if (!read(json, "extension", extension) || !read(json, "kind", kind) || !read(json, "family", family) ||
        json["configuration"].get(settings) != simdjson::SUCCESS) {
        return false;
    }
    Settings configuration;
    for (const auto& [name, value] : settings) {
        std::string_view choice;
        if (value.get(choice) != simdjson::SUCCESS || !configuration.emplace(name, choice).second) {
            return false;
        }
    }
    return extension == instance.extension && kind == instance.kind && family == instance.family &&
           configuration == instance.configuration;
}

bool readHead(std::string_view head, const Instance& instance, Face& face) {
    simdjson::dom::parser parser;
    object json;
    std::int64_t version = 0;
    if (parser.parse(head).get(json) != simdjson::SUCCESS || json["version"].get(version) != simdjson::SUCCESS ||
        version != storedVersion || !isMadeFor(json, instance)) {
        return false;
    }
    if (isThere(json, "widgetURL") && !read(json, "widgetURL", face.widgetURL.emplace())) {
        return false;
    }
    return read(json, "scale", face.scale) && face.scale > 0 && face.scale <= greatestFaceScale &&
           readAppearance(json, face.appearance) && read(json, "made", face.made.secondsSinceReferenceDate) &&
           read(json, "reload", face.reload.secondsSinceReferenceDate) && readParts(json, face.parts);
}

} // namespace

std::string storedFace(const Face& face, const Instance& instance) {
    std::string file = headOf(face, instance);
    if (file.size() > greatestFaceHead || face.parts.size() > greatestPartCount) {
        return {};
    }
    file += '\n';
    const std::string picture = PngEncoder().encode({.pixels = face.pixels.data(),
                                                     .width = static_cast<std::uint32_t>(face.width),
                                                     .height = static_cast<std::uint32_t>(face.height)});
    return picture.empty() || file.size() + picture.size() > greatestFaceFile ? std::string() : file + picture;
}

std::optional<Face> readStoredFace(std::string_view bytes, const Instance& instance) {
    const std::size_t end = bytes.substr(0, greatestFaceHead + 1).find('\n');
    Face face;
    if (bytes.size() > greatestFaceFile || end == std::string_view::npos ||
        !readHead(bytes.substr(0, end), instance, face)) {
        return std::nullopt;
    }
    const PixelGrid grid(face.scale);
    const Size size = familySize(instance.family);
    face.width = static_cast<int>(grid.edge(size.width));
    face.height = static_cast<int>(grid.edge(size.height));
    auto pixels = decodePng(bytes.substr(end + 1), face.width, face.height);
    if (!pixels) {
        return std::nullopt;
    }
    face.pixels = *std::move(pixels);
    return face;
}

} // namespace host
