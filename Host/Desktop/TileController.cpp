#include "Host/Desktop/TileController.h"

#include "Host/Desktop/WaitingView.h"
#include "Host/Drawing/Badges.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Calendar.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Localization.h"
#include "Platform/Foundation/LocalizedDate.h"

namespace host {

using platform::localized;

namespace {

/// How long an outdated picture shows no age while a response is awaited.
constexpr guint gracePeriodMilliseconds = 1500;
constexpr guint refusalMilliseconds = 4000;
constexpr guint undoMilliseconds = 8000;
constexpr guint explanationMilliseconds = 12'000;

/// Returns how long a message is shown. Tests set it for all messages by WIDGETHOST_MESSAGE_MILLISECONDS.
guint messageTimeout(guint milliseconds) {
    const char* set = g_getenv("WIDGETHOST_MESSAGE_MILLISECONDS");
    return set == nullptr ? milliseconds : static_cast<guint>(g_ascii_strtoull(set, nullptr, 10));
}

platform::Date now() {
    return platform::SystemClock::shared().now();
}

/// Returns the local time of day, "10:42" or "10:42 AM" as the locale has it; for another day than today, the date.
std::string shortMoment(platform::Date date) {
    const bool isToday = platform::localDayNumber(date) == platform::localDayNumber(now());
    return isToday ? platform::localizedTime(date) : platform::localizedDate(date);
}

/// Returns `format` with `value` in place of its "%s".
std::string filledIn(const std::string& format, const std::string& value) {
    std::string text = format;
    if (const auto place = text.find("%s"); place != std::string::npos) {
        text.replace(place, 2, value);
    }
    return text;
}

/// Returns a short reason for users; `widgethost explain` prints more.
std::string inWords(TileFailure::Cause cause) {
    switch (cause) {
    case TileFailure::Cause::notStarted:
        return localized("The extension could not be started.");
    case TileFailure::Cause::stopped:
        return localized("The extension stopped without an answer.");
    case TileFailure::Cause::invalidResponse:
        break;
    }
    return localized("The extension gave no usable answer.");
}

/// Opens `url` with the desktop's application for its scheme. Returns false if there is none or it did not start.
bool openLink(const std::string& url) {
    GError* error = nullptr;
    if (gtk_show_uri_on_window(nullptr, url.c_str(), gtk_get_current_event_time(), &error) == FALSE) {
        g_clear_error(&error);
        return false;
    }
    return true;
}

} // namespace

TileController::TileController(Instance instance, const std::string& renderingMode, const TileContext& context)
    : context_(context), instance_(std::move(instance)), renderingMode_(renderingMode),
      window_({.activated = [this](const TilePart& part) { activated(part); },
               .menuRequested =
                   [this](const std::optional<std::string>& url, const GdkEvent* event) {
                       context_.delegate.menuRequested(instance_.id, url, event);
                   },
               .dragged = [this](Point distance) { context_.delegate.dragged(instance_.id, distance); },
               .dragEnded = [this](DragEnd end) { context_.delegate.dragEnded(instance_.id, end); },
               .keyPressed = [this] { context_.delegate.keyPressed(); },
               .firstDrawn = [this] { firstDrawn(); },
               .scaleChanged = [this] { restyle(); }},
              context.stacking),
      stored_(context.entries.load(instance_, renderingMode)) {
    if (stored_) {
        shown_ = Shown::stored;
        made_ = stored_->made;
        reload_ = stored_->reload;
    }
}

void TileController::put(const Output& output, const Rect& frame) {
    frame_ = frame;
    const Output before = std::exchange(output_, output);
    const bool looksOtherwise =
        before.scale != output.scale || (before.blurManager == nullptr) != (output.blurManager == nullptr);
    if (window_.rendered().picture.width == 0) {
        paint();
    } else if (looksOtherwise) {
        paintSoon();
    }
    window_.put(output, frame);
    if (std::exchange(isOffscreen_, false) && std::exchange(needsRepaint_, false)) {
        paint();
    }
}

void TileController::hide() {
    isOffscreen_ = true;
    window_.hide();
}

void TileController::change(const Instance& instance, const std::string& renderingMode) {
    const Instance before = std::exchange(instance_, instance);
    const std::string mode = std::exchange(renderingMode_, renderingMode);
    if (before.family != instance_.family || before.kind != instance_.kind) {
        // The old picture has another size.
        shown_ = Shown::nothing;
        stored_.reset();
        paint();
    } else if (mode != renderingMode_) {
        paintSoon();
    }
}

void TileController::showEntry() {
    shown_ = Shown::entry;
    stored_.reset();
    paintSoon();
    saving_.idle<&TileController::save>(this);
}

void TileController::showPlaceholder(const platform::View& view) {
    if (shown_ == Shown::nothing) {
        present(render(view, Redaction::placeholder));
    }
}

void TileController::updated(TileUpdate update) {
    const Tile* current = tile();
    const bool isGood = current != nullptr && current->entry() != nullptr && !current->history().lastFailure;
    if (isGood) {
        made_ = current->history().lastSuccess->date;
        reload_ = current->schedule().due();
        isSaved_ = false;
    }
    // The session may have had the entry before this tile.
    if (update == TileUpdate::entry || (isGood && shown_ != Shown::entry)) {
        showEntry();
    } else if (badges() != badges_) {
        paintSoon();
    }
}

void TileController::restyle() {
    paintSoon();
}

void TileController::activated(const TilePart& part) {
    switch (part.action) {
    case TilePart::Action::open:
        if (!openLink(part.item.url)) {
            showMessage({.title = localized("Nothing opens this link"),
                         .texts = {part.item.url},
                         .button = {},
                         .milliseconds = refusalMilliseconds});
        }
        break;
    case TilePart::Action::explain:
        explain();
        break;
    case TilePart::Action::undo:
        context_.delegate.undoRequested(instance_.id);
        break;
    case TilePart::Action::none:
        break;
    }
}

void TileController::showRemoved(std::function<void()> done) {
    showMessage(
        {.title = localized("Removed"), .texts = {}, .button = localized("Undo"), .milliseconds = undoMilliseconds},
        std::move(done));
}

void TileController::showMessage(const Message& message, std::function<void()> done) {
    showsMessage_ = true;
    afterMessage_ = std::move(done);
    const auto button =
        message.button.empty() ? std::nullopt : std::optional(MessageButton{message.button, message.button});
    RenderedTile rendered = render(messageView(message.title, message.texts, button), Redaction::none);
    std::vector<TilePart> parts = tileParts(rendered, name());
    for (TilePart& part : parts) {
        part.action = part.action == TilePart::Action::open ? TilePart::Action::undo : part.action;
    }
    window_.show(std::move(rendered), std::move(parts), name());
    messageEnding_.after<&TileController::messageEnded>(messageTimeout(message.milliseconds), this);
}

void TileController::messageEnded() {
    showsMessage_ = false;
    if (const auto done = std::exchange(afterMessage_, nullptr)) {
        // May destroy this.
        done();
        return;
    }
    paint();
}

void TileController::explain() {
    const Tile* current = tile();
    if (current == nullptr || !current->history().lastFailure) {
        return;
    }
    showMessage({.title = localized("Could not be updated"),
                 .texts = {inWords(current->history().lastFailure->cause),
                           filledIn(localized("The next attempt is at %s."), shortMoment(current->schedule().due()))},
                 .button = {},
                 .milliseconds = explanationMilliseconds});
}

void TileController::saveState() {
    if (!isSaved_ || saving_.isPending()) {
        save();
    }
}

void TileController::paintSoon() {
    if (!window_.isDrawn()) {
        // The present picture is shown first, since a new one may wait for the fonts.
        needsRepaint_ = true;
        return;
    }
    painting_.idle<&TileController::paint>(this, G_PRIORITY_HIGH_IDLE);
}

void TileController::firstDrawn() {
    if (std::exchange(needsRepaint_, false)) {
        // After the other tiles are drawn, too.
        painting_.idle<&TileController::paint>(this);
    }
}

void TileController::paint() {
    if (showsMessage_) {
        return;
    }
    if (isOffscreen_) {
        // GTK cannot make widgets without a screen.
        needsRepaint_ = true;
        return;
    }
    const Tile* current = tile();
    const Entry* entry = current != nullptr && shown_ == Shown::entry ? current->entry() : nullptr;
    if (entry == nullptr && stored_) {
        entry = &stored_->entry;
        if (reload_ < now() && !waiting_.isPending() && current == nullptr) {
            waiting_.after<&TileController::waitedLong>(gracePeriodMilliseconds, this);
        }
    }
    if (entry == nullptr) {
        shown_ = Shown::nothing;
        present(render(waitingView(instance_.family), Redaction::placeholder));
        return;
    }
    RenderedTile rendered = render(entry->view, Redaction::none);
    rendered.widgetURL = entry->widgetURL;
    present(std::move(rendered));
}

RenderedTile TileController::render(const platform::View& view, Redaction redaction) {
    return renderTile(view, familySize(instance_.family), style(redaction), context_.renderers.renderer());
}

void TileController::present(RenderedTile rendered) {
    badges_ = badges();
    std::vector<TilePart> parts = tileParts(rendered, name());
    if (badges_ != Badges{}) {
        parts.push_back(drawBadges(rendered));
    }
    window_.show(std::move(rendered), std::move(parts), name());
}

TilePart TileController::drawBadges(RenderedTile& rendered) {
    const std::string& text = badges_.asOf;
    const platform::View badge = !badges_.hasFailed ? asOfBadge(text)
                                 : text.empty()     ? failureMark()
                                                    : failedAsOfBadge(text);
    const Rect frame = drawBadge(rendered, badge, style(Redaction::none), context_.renderers.renderer());
    if (!badges_.hasFailed) {
        return {
            .item = {.role = AccessibleItem::Role::text, .frame = frame, .name = text, .description = {}, .url = {}}};
    }
    return {.item = {.role = AccessibleItem::Role::link,
                     .frame = frame,
                     .name = localized("Could not be updated"),
                     .description = text,
                     .url = {}},
            .action = TilePart::Action::explain};
}

void TileController::save() {
    const Tile* current = tile();
    if (current == nullptr || current->entry() == nullptr || current->awaited() || current->history().lastFailure) {
        // The entry may belong to an older request.
        return;
    }
    isSaved_ = true;
    context_.host.workLater([entries = context_.entries, instance = instance_, mode = renderingMode_,
                             stored = StoredEntry{*current->entry(), made_, reload_}] {
        if (const auto failure = entries.save(instance, mode, stored)) {
            // A missing cache costs a moment at the next start, and the user can do nothing about it.
            g_debug("%s", failure->description.c_str());
        }
    });
}

TileController::Badges TileController::badges() const {
    const Tile* current = tile();
    const bool hasFailed = current != nullptr && current->history().lastFailure.has_value();
    const bool isPast = shown_ != Shown::nothing && reload_ < now();
    // An outdated picture needs no badge while a response is awaited.
    const bool isAwaited = current == nullptr || (current->awaited() && !hasFailed);
    const bool hasWaited = !waiting_.isPending() && shown_ == Shown::stored && current != nullptr;
    const bool isOld = isPast && (!isAwaited || hasWaited);
    return {.asOf = isOld ? filledIn(localized("as of %s"), shortMoment(made_)) : "", .hasFailed = hasFailed};
}

TileStyle TileController::style(Redaction redaction) const {
    // GTK draws a window that reaches onto another screen at the larger of both scales.
    const bool usesToolkitScale = output_.fractional == nullptr && gtk_widget_get_realized(window_.widget()) != FALSE;
    const double scale = usesToolkitScale ? std::max<double>(output_.scale, window_.deviceScale()) : output_.scale;
    TileStyle style = context_.settings.tileStyle(
        scale, redaction, valueNamed<DrawingMode>(renderingMode_, drawingModeNames).value_or(DrawingMode::fullColor));
    style.appearance.wallpaper = output_.blurManager == nullptr ? Wallpaper::sharp : Wallpaper::blurred;
    return style;
}

std::string TileController::name() const {
    const WidgetInfo* widget = context_.catalog.widget(instance_.extension, instance_.kind);
    return widget == nullptr ? instance_.kind : widget->displayName;
}

} // namespace host
