#include "Host/Commands/RenderCommand.h"

#include "Host/Commands/Output.h"
#include "Host/Drawing/PngFile.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Drawing/Renderer.h"
#include "Host/Drawing/UserDirection.h"
#include "Host/Layout/FramesJson.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/JsonWriter.h"

namespace host {
namespace {

using platform::Unexpected;

Outcome<std::string> familyOfPreview(ExtensionConnection& connection, const std::string& kind,
                                     const std::string& name) {
    const auto previews = receive(connection, connection.send("previews", "{}"), readPreviews);
    if (!previews) {
        return Unexpected{previews.error()};
    }
    for (const PreviewInfo& preview : *previews) {
        if (preview.kind == kind && preview.name == name) {
            return preview.family;
        }
    }
    // The extension names the previews that exist when it is asked for this one.
    return std::string("medium");
}

std::int64_t sendPreviewRequest(ExtensionConnection& connection, const std::string& kind, const std::string& name) {
    std::string params;
    platform::JsonWriter(params).beginObject().member("kind", kind).member("name", name).endObject();
    return connection.send("preview", params);
}

std::string picture(const Entry& entry, const RenderRequest& request, const std::string& family, Renderer& renderer) {
    const WidgetLayout layout = layOut(entry.view, familySize(family), userDirection(), renderer);
    switch (request.format) {
    case RenderFormat::svg:
        return renderer.svg(layout, request.appearance);
    case RenderFormat::pdf:
        return renderer.pdf(layout, request.appearance);
    case RenderFormat::frames:
        return framesJson(layout) + '\n';
    case RenderFormat::png:
    case RenderFormat::tree:
        break;
    }
    return pngFile(renderer.pixels(layout, request.appearance, request.scale));
}

} // namespace

std::optional<Failure> render(const ExtensionChoice& choice, RenderRequest request) {
    // Before the extension, because it reads the fonts while that starts.
    std::optional<Renderer> renderer;
    if (request.format != RenderFormat::tree) {
        renderer.emplace();
    }
    auto connection = openExtensionFor(request.entry.kind, choice);
    if (!connection) {
        return connection.error();
    }
    std::int64_t id = 0;
    if (request.preview) {
        if (!request.family) {
            const auto family = familyOfPreview(*connection, request.entry.kind, *request.preview);
            if (!family) {
                return family.error();
            }
            request.family = *family;
        }
        id = sendPreviewRequest(*connection, request.entry.kind, *request.preview);
    } else {
        request.entry.family = request.family.value_or(request.entry.family);
        id = sendEntryRequest(*connection, request.entry);
    }
    const auto entries = receive(*connection, id, readEntries);
    if (!entries) {
        return entries.error();
    }
    const Entry& entry = *entryAt(*entries, platform::SystemClock::shared().now());
    return writeOutput(renderer ? picture(entry, request, request.family.value_or(request.entry.family), *renderer)
                                : entry.json + '\n',
                       request.output);
}

} // namespace host
