#include "Host/Commands/RenderCommand.h"

#include "Host/Commands/Output.h"
#include "Host/Drawing/PngFile.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Drawing/Renderer.h"
#include "Host/Drawing/UserDirection.h"
#include "Host/Layout/FramesJson.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Clock.h"

namespace host {
namespace {

using platform::Unexpected;

Outcome<std::string> familyOfPreview(ExtensionClient& extension, const std::string& kind, const std::string& name) {
    const auto previews = PendingResponse(extension, "previews", "{}", readPreviews).wait();
    if (!previews) {
        return Unexpected{previews.error()};
    }
    for (const PreviewInfo& preview : *previews) {
        if (preview.kind == kind && preview.name == name) {
            return preview.family;
        }
    }
    // The extension refuses this one and names those that exist.
    return std::string("medium");
}

std::string picture(const Entry& entry, const RenderRequest& request, const std::string& family, Renderer& renderer) {
    const WidgetLayout layout = layOut(entry.view, familySize(family), userDirection(), renderer);
    switch (request.format) {
    case RenderFormat::svg:
        return renderer.vectorFile(VectorFormat::svg, layout, request.appearance);
    case RenderFormat::pdf:
        return renderer.vectorFile(VectorFormat::pdf, layout, request.appearance);
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
    // Made before the extension starts: it reads the fonts meanwhile.
    std::optional<Renderer> renderer;
    if (request.format != RenderFormat::tree) {
        renderer.emplace();
    }
    const auto extension = openExtensionFor(request.entry.kind, choice);
    if (!extension) {
        return extension.error();
    }
    if (request.preview && !request.family) {
        const auto family = familyOfPreview(**extension, request.entry.kind, *request.preview);
        if (!family) {
            return family.error();
        }
        request.family = *family;
    }
    request.entry.family = request.family.value_or(request.entry.family);
    const std::string_view method = request.preview ? "preview" : methodName(request.entry.method);
    const std::string params = request.preview ? paramsOf({{"kind", request.entry.kind}, {"name", *request.preview}})
                                               : paramsOf(request.entry);
    const platform::Date now = platform::SystemClock::shared().now();
    if (!renderer) {
        const auto tree = PendingResponse<std::string>(**extension, method, params, [now](Json result) {
                              return readEntryText(result, now);
                          }).wait();
        return tree ? writeOutput(*tree + '\n', request.output) : std::optional(tree.error());
    }
    const auto entries = PendingResponse(**extension, method, params, readEntries).wait();
    if (!entries) {
        return entries.error();
    }
    return writeOutput(picture(*entryAt(*entries, now), request, request.entry.family, *renderer), request.output);
}

} // namespace host
