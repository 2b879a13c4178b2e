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
#include <utility>

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

/// Encodes and writes one picture while the next is drawn.
class PictureFiles {
  public:
    /// Starts to write. Returns the failure of a picture before.
    std::optional<Failure> write(PixelBuffer picture, fs::path file) {
        auto failure = finish();
        writing_ = std::async(std::launch::async, [picture = std::move(picture), file = std::move(file)]() mutable {
            return writeOutput(pngFile(std::move(picture)), file);
        });
        return failure;
    }

    /// Waits for what is still being written.
    std::optional<Failure> finish() { return writing_.valid() ? writing_.get() : std::nullopt; }

  private:
    std::future<std::optional<Failure>> writing_;
};

/// Draws the pictures of one extension and adds its widgets to the page.
class GalleryPainter {
  public:
    GalleryPainter(const GalleryRequest& request, GalleryPage& page) : request_(request), page_(page) {}

    std::optional<Failure> paint(DescribedExtension& extension) {
        std::vector<Awaited> awaited;
        for (const WidgetInfo& widget : extension.widgets) {
            for (const std::string& family : widget.families) {
                const EntryRequest request{
                    .method = EntryRequest::Method::timeline, .kind = widget.kind, .family = family};
                awaited.push_back({sendEntryRequest(extension.connection, request), widget.kind, family});
            }
        }
        const platform::Date now = platform::SystemClock::shared().now();
        for (const Awaited& picture : awaited) {
            const auto entries = receive(extension.connection, picture.id, readEntries);
            if (!entries) {
                return entries.error();
            }
            if (auto failure = paint(*entryAt(*entries, now), picture)) {
                return failure;
            }
        }
        for (const WidgetInfo& widget : extension.widgets) {
            page_.addWidget(widget);
        }
        return files_.finish();
    }

  private:
    std::optional<Failure> paint(const Entry& entry, const Awaited& awaited) {
        const WidgetLayout layout = layOut(entry.view, familySize(awaited.family), direction_, renderer_);
        for (const ColorScheme scheme : request_.schemes) {
            const Appearance appearance{.scheme = scheme, .contrast = request_.contrast};
            auto name = GalleryPage::pictureName(awaited.kind, awaited.family, scheme);
            if (auto failure = files_.write(renderer_.pixels(layout, appearance, scale), request_.folder / name)) {
                return failure;
            }
        }
        return std::nullopt;
    }

    const GalleryRequest& request_;
    GalleryPage& page_;
    const Direction direction_ = userDirection();
    Renderer renderer_;
    PictureFiles files_;
};

} // namespace

std::optional<Failure> gallery(const ExtensionChoice& choice, const GalleryRequest& request) {
    GalleryPage page(request.schemes);
    // Before the extensions, because it reads the fonts while they start.
    GalleryPainter painter(request, page);
    std::error_code failure;
    fs::create_directories(request.folder, failure);
    if (failure) {
        return Failure{Failure::Kind::unwritable,
                       fmt::format("cannot make {}: {}", request.folder.string(), failure.message())};
    }
    auto stopped = useExtensions(choice, [&](DescribedExtension& extension) -> Outcome<bool> {
        auto stop = painter.paint(extension);
        return stop ? Outcome<bool>(platform::Unexpected{*std::move(stop)}) : false;
    });
    if (stopped) {
        return stopped;
    }
    return writeOutput(page.html(), request.folder / "index.html");
}

} // namespace host
