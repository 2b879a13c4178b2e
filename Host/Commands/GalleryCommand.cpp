#include "Host/Commands/GalleryCommand.h"

#include "Host/Commands/GalleryPage.h"
#include "Host/Commands/Output.h"
#include "Host/Drawing/PngFile.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Drawing/Renderer.h"
#include "Host/Drawing/UserDirection.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Clock.h"

#include <fmt/format.h>
#include <future>

namespace host {
namespace {

constexpr double scale = 2;

/// A picture whose entry was requested.
struct RequestedPicture {
    PendingResponse<std::vector<Entry>> entries;
    std::string kind;
    std::string family;
};

/// Draws and writes the pictures of extensions.
class GalleryPainter {
  public:
    explicit GalleryPainter(const GalleryRequest& request) : request_(request) {}

    std::optional<Failure> paint(DescribedExtension& extension) {
        std::vector<RequestedPicture> pictures;
        for (const WidgetInfo& widget : extension.description.widgets) {
            for (const std::string& family : widget.families) {
                const EntryRequest request{
                    .method = EntryRequest::Method::timeline, .kind = widget.kind, .family = family};
                pictures.push_back(
                    {PendingResponse(*extension.client, methodName(request.method), paramsOf(request), readEntries),
                     widget.kind, family});
            }
        }
        const platform::Date now = platform::SystemClock::shared().now();
        for (const RequestedPicture& picture : pictures) {
            const auto entries = picture.entries.wait();
            if (!entries) {
                return entries.error();
            }
            if (auto failure = paint(*entryAt(*entries, now), picture)) {
                return failure;
            }
        }
        return written();
    }

  private:
    /// Waits for the picture that is being written.
    std::optional<Failure> written() { return writing_.valid() ? writing_.get() : std::nullopt; }

    std::optional<Failure> paint(const Entry& entry, const RequestedPicture& picture) {
        const WidgetLayout layout = layOut(entry.view, familySize(picture.family), direction_, renderer_);
        for (const ColorScheme scheme : request_.schemes) {
            const Appearance appearance{.scheme = scheme, .contrast = request_.contrast};
            PixelBuffer pixels = renderer_.pixels(layout, appearance, scale);
            if (auto failure = written()) {
                return failure;
            }
            // Encoding takes longer than drawing, so it is done beside that of the next picture.
            writing_ = std::async(std::launch::async,
                                  [pixels = std::move(pixels),
                                   file = request_.folder / galleryPictureName(picture.kind, picture.family, scheme)] {
                                      return writeOutput(pngFile(pixels), file);
                                  });
        }
        return std::nullopt;
    }

    const GalleryRequest& request_;
    const Direction direction_ = userDirection();
    Renderer renderer_;
    std::future<std::optional<Failure>> writing_;
};

} // namespace

std::optional<Failure> gallery(const ExtensionChoice& choice, const GalleryRequest& request) {
    // Made before the extensions start: it reads the fonts meanwhile.
    GalleryPainter painter(request);
    std::error_code error;
    std::filesystem::create_directories(request.folder, error);
    if (error) {
        return Failure{Failure::Kind::unwritable,
                       fmt::format("cannot create {}: {}", request.folder.string(), error.message())};
    }
    std::vector<WidgetInfo> widgets;
    auto failure = useExtensions(choice, [&](DescribedExtension& extension) -> Outcome<bool> {
        if (auto stop = painter.paint(extension)) {
            return platform::Unexpected{*std::move(stop)};
        }
        widgets.insert(widgets.end(), extension.description.widgets.begin(), extension.description.widgets.end());
        return false;
    });
    return failure ? std::move(failure)
                   : writeOutput(galleryPage(widgets, request.schemes), request.folder / "index.html");
}

} // namespace host
