#include "Host/Commands/GalleryCommand.h"

#include "Host/Commands/GalleryPage.h"
#include "Host/Commands/Output.h"
#include "Host/Drawing/Renderer.h"
#include "Host/Layout/Measures.h"

#include <fmt/format.h>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr double scale = 2;

/// A picture that has been asked for.
struct Awaited {
    std::int64_t id = 0;
    std::string kind;
    std::string family;
};

/// Draws the pictures of one extension into `folder` and adds its widgets to the page.
class GalleryPainter {
  public:
    GalleryPainter(const fs::path& folder, GalleryPage& page) : folder_(folder), page_(page) {}

    std::optional<Failure> paint(ExtensionConnection& connection) {
        const auto widgets = receive(connection, connection.send("describe", "{}"), readDescription);
        if (!widgets) {
            return widgets.error();
        }
        std::vector<Awaited> awaited;
        for (const WidgetInfo& widget : *widgets) {
            page_.addWidget(widget);
            for (const std::string& family : widget.families) {
                const EntryRequest request{
                    .method = EntryRequest::Method::timeline, .kind = widget.kind, .family = family};
                awaited.push_back({sendEntryRequest(connection, request), widget.kind, family});
            }
        }
        for (const Awaited& picture : awaited) {
            const auto entries = receive(connection, picture.id, readEntries);
            if (!entries) {
                return entries.error();
            }
            if (auto failure = paint(entries->front(), picture)) {
                return failure;
            }
        }
        return std::nullopt;
    }

  private:
    std::optional<Failure> paint(const Entry& entry, const Awaited& picture) {
        const WidgetLayout layout =
            layOut(entry.view, familySize(picture.family), renderer_.texts(), renderer_.images());
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            const fs::path file = folder_ / GalleryPage::pictureName(picture.kind, picture.family, scheme);
            if (auto failure = writeOutput(renderer_.png(layout, {.scheme = scheme}, scale), file)) {
                return failure;
            }
        }
        return std::nullopt;
    }

    const fs::path& folder_;
    GalleryPage& page_;
    Renderer renderer_;
};

} // namespace

std::optional<Failure> gallery(const ExtensionChoice& choice, const fs::path& folder) {
    auto connections = openExtensions(choice);
    if (!connections) {
        return connections.error();
    }
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (failure) {
        return Failure{ExitCode::cannotCreate, fmt::format("cannot make {}: {}", folder.string(), failure.message())};
    }
    GalleryPage page;
    GalleryPainter painter(folder, page);
    for (ExtensionConnection& connection : *connections) {
        if (auto stopped = painter.paint(connection)) {
            return stopped;
        }
    }
    return writeOutput(page.html(), folder / "index.html");
}

} // namespace host
