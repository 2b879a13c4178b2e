#include "Host/Commands/GalleryCommand.h"

#include "Host/Commands/Output.h"
#include "Host/Drawing/PngFile.h"
#include "Host/Drawing/RenderedTile.h"
#include "Host/Drawing/Renderer.h"
#include "Host/Drawing/UserDirection.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Releaser.h"

#include <fmt/format.h>
#include <glib.h>

#include <deque>
#include <future>
#include <memory>

namespace host {
namespace {

constexpr double scale = 2;
/// Enough that drawing goes on while a large picture is encoded. The pixels of each are some megabytes.
constexpr std::size_t maxBeingEncoded = 8;

constexpr std::string_view style = R"css(
* { box-sizing: border-box; margin: 0 }
body { font: 14px/1.5 Inter, system-ui, sans-serif; color: #1d1d1f; background: #f5f5f7; padding: 40px }
h1 { font-size: 28px; line-height: 1.2; letter-spacing: -.02em }
h2 { font-size: 18px; line-height: 1.3; letter-spacing: -.01em; margin-top: 40px }
p { color: #6e6e73; margin-bottom: 14px }
.pair { display: flex; flex-wrap: wrap; gap: 20px }
.ground { border-radius: 18px; padding: 32px; display: flex; flex-wrap: wrap; gap: 24px; width: 816px; max-width: 100%;
  align-content: flex-start }
.light { background: linear-gradient(140deg, #9db7c9, #d7cdbb 55%, #b9c7b0) }
.dark { background: linear-gradient(140deg, #1d2a36, #3a3340 55%, #1f2b25) }
img { display: block; max-width: 100%; height: auto; border-radius: 20px; box-shadow: 0 6px 18px rgba(0, 0, 0, .16) }
@media (prefers-color-scheme: dark) { body { color: #f5f5f7; background: #161618 } p { color: #98989d } }
)css";

std::string escaped(const std::string& text) {
    const std::unique_ptr<char, platform::Releaser<g_free>> markup(
        g_markup_escape_text(text.data(), static_cast<gssize>(text.size())));
    return markup.get();
}

/// Kinds and families come from an extension, which must not choose the path of a file.
std::string fileNamePart(std::string_view text) {
    std::string part;
    for (const char c : text) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
        part += plain ? c : '_';
    }
    return part;
}

std::string pictureName(std::string_view kind, std::string_view family, ColorScheme scheme) {
    return fmt::format("{}-{}-{}.png", fileNamePart(kind), fileNamePart(family),
                       scheme == ColorScheme::light ? "light" : "dark");
}

std::string pictures(const WidgetInfo& widget, ColorScheme scheme) {
    std::string html = fmt::format("<div class=\"ground {}\">\n", scheme == ColorScheme::light ? "light" : "dark");
    for (const std::string& family : widget.families) {
        const Size size = familySize(family);
        html += fmt::format("<img src=\"{}\" width=\"{}\" height=\"{}\" alt=\"{}, {}\">\n",
                            pictureName(widget.kind, family, scheme), size.width, size.height,
                            escaped(widget.displayName), escaped(family));
    }
    return html + "</div>\n";
}

/// Returns a page with pictures of all widgets, light beside dark, as HTML.
std::string pageOf(const std::vector<WidgetInfo>& widgets, const std::vector<ColorScheme>& schemes) {
    std::string html = "<!doctype html>\n<html lang=\"en\">\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width\">\n<title>Widgets</title>\n<style>";
    html.append(style).append("</style>\n<h1>Widgets</h1>\n");
    for (const WidgetInfo& widget : widgets) {
        html += fmt::format("<h2>{}</h2>\n<p>{}</p>\n<div class=\"pair\">\n", escaped(widget.displayName),
                            escaped(widget.description));
        for (const ColorScheme scheme : schemes) {
            html += pictures(widget, scheme);
        }
        html += "</div>\n";
    }
    return html + "</html>\n";
}

/// A picture whose entry was requested.
struct RequestedPicture {
    PendingResponse<std::vector<Entry>> entries;
    std::string kind;
    std::string family;
};

using EncodingTask = std::packaged_task<std::string()>;

void runEncoding(gpointer task, gpointer /*unused*/) {
    (*std::unique_ptr<EncodingTask>(static_cast<EncodingTask*>(task)))();
}

void finishEncoding(GThreadPool* encoder) {
    g_thread_pool_free(encoder, FALSE, TRUE);
}

/// A picture that is being encoded.
struct EncodedPicture {
    std::filesystem::path file;
    std::future<std::string> png;
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
        return writeUntilAtMost(0);
    }

  private:
    /// Writes the oldest pictures until no more than `count` are being encoded.
    std::optional<Failure> writeUntilAtMost(std::size_t count) {
        while (encoded_.size() > count) {
            EncodedPicture next = std::move(encoded_.front());
            encoded_.pop_front();
            if (auto failure = writeOutput(next.png.get(), next.file)) {
                return failure;
            }
        }
        return std::nullopt;
    }

    std::optional<Failure> paint(const Entry& entry, const RequestedPicture& picture) {
        const WidgetLayout layout = layOut(entry.view, familySize(picture.family), direction_, renderer_);
        for (const ColorScheme scheme : request_.schemes) {
            const Appearance appearance{.scheme = scheme, .contrast = request_.contrast};
            PixelBuffer pixels = renderer_.pixels(layout, appearance, scale);
            if (auto failure = writeUntilAtMost(maxBeingEncoded - 1)) {
                return failure;
            }
            auto task = std::make_unique<EncodingTask>([pixels = std::move(pixels)] { return pngFile(pixels); });
            encoded_.push_back(
                {request_.folder / pictureName(picture.kind, picture.family, scheme), task->get_future()});
            g_thread_pool_push(encoder_.get(), task.release(), nullptr);
        }
        return std::nullopt;
    }

    const GalleryRequest& request_;
    const Direction direction_ = userDirection();
    Renderer renderer_;
    std::deque<EncodedPicture> encoded_;
    /// Has one thread, which stays: a new one for each picture often shares the processor of the thread that draws.
    std::unique_ptr<GThreadPool, platform::Releaser<finishEncoding>> encoder_{
        g_thread_pool_new(runEncoding, nullptr, 1, TRUE, nullptr)};
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
    return failure ? std::move(failure) : writeOutput(pageOf(widgets, request.schemes), request.folder / "index.html");
}

} // namespace host
