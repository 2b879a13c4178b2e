#include "Host/Desktop/DesktopTile.h"

#include "Host/Desktop/ClockTime.h"
#include "Host/Desktop/WaitingView.h"
#include "Host/Drawing/AppearanceNames.h"
#include "Host/Drawing/Badges.h"
#include "Host/Layout/Measures.h"
#include "Platform/Foundation/Localization.h"

namespace host {

using platform::localized;

namespace {

/// How long an old picture stands without saying so while its successor is awaited.
constexpr guint patienceMilliseconds = 1500;
constexpr guint explanationMilliseconds = 12'000;

DrawingMode modeNamed(const std::string& name) {
    return valueNamed<DrawingMode>(name, drawingModeNames).value_or(DrawingMode::fullColor);
}

/// `format` with `value` in the place of its "%s".
std::string filledIn(const std::string& format, const std::string& value) {
    std::string text = format;
    if (const auto place = text.find("%s"); place != std::string::npos) {
        text.replace(place, 2, value);
    }
    return text;
}

/// For a reader who can do nothing about it; `explain` tells the rest.
std::string inWords(NoAnswer::Cause cause) {
    switch (cause) {
    case NoAnswer::Cause::notStarted:
        return localized("The extension could not be started.");
    case NoAnswer::Cause::lost:
        return localized("The extension stopped without an answer.");
    case NoAnswer::Cause::unusable:
        break;
    }
    return localized("The extension gave no usable answer.");
}

} // namespace

DesktopTile::DesktopTile(Instance instance, const std::string& renderingMode, const TileSurroundings& around)
    : around_(around), instance_(std::move(instance)), renderingMode_(renderingMode),
      window_(instance_.id, around.hands, around.stacking), stored_(around.entries.load(instance_, renderingMode)) {
    if (stored_) {
        shown_ = Shown::stored;
        made_ = stored_->made;
        reload_ = stored_->reload;
    }
    mark();
}

void DesktopTile::mark() {
    window_.setMarks(around_.settings.look().accent, around_.settings.look().scheme);
}

Size DesktopTile::size() const {
    return around_.settings.tileSize(instance_.family);
}

void DesktopTile::put(const Output& output, const Rect& frame) {
    frame_ = frame;
    const bool hasOtherScale = std::exchange(output_, output).scale != output.scale;
    if (window_.rendered().width == 0) {
        paint();
    } else if (hasOtherScale) {
        paintSoon();
    }
    window_.put(output, frame);
    if (std::exchange(isAway_, false) && std::exchange(isBehind_, false)) {
        paint();
    }
}

void DesktopTile::hide() {
    isAway_ = true;
    window_.hide();
}

void DesktopTile::change(const Instance& instance, const std::string& renderingMode) {
    const Instance before = std::exchange(instance_, instance);
    const std::string mode = std::exchange(renderingMode_, renderingMode);
    if (before.family != instance_.family || before.kind != instance_.kind) {
        // What is there does not fit any more; the answer to the new question will.
        shown_ = Shown::waiting;
        stored_.reset();
        paint();
    } else if (mode != renderingMode_) {
        paintSoon();
    }
}

void DesktopTile::show() {
    shown_ = Shown::entry;
    stored_.reset();
    paintSoon();
    saving_.whenIdle<&DesktopTile::save>(this);
}

void DesktopTile::showPlaceholder(const platform::View& view) {
    if (shown_ == Shown::waiting) {
        present(
            renderTile(view, familySize(instance_.family), style(Redaction::placeholder), around_.studio.renderer()));
    }
}

void DesktopTile::updated(TileUpdate update) {
    const Tile* tile = around_.tile(instance_.id);
    const bool isGood = tile != nullptr && tile->entry() != nullptr && !tile->history().lastFailure;
    if (isGood) {
        made_ = tile->history().lastSuccess->date;
        reload_ = tile->schedule().due();
        isKept_ = false;
    }
    // The session may have had the entry all along.
    if (update == TileUpdate::entry || (isGood && shown_ != Shown::entry)) {
        show();
    } else if (marks() != marks_) {
        paintSoon();
    }
}

void DesktopTile::restyle() {
    mark();
    paintSoon();
}

void DesktopTile::say(const Message& message, guint milliseconds, std::function<void()> then) {
    isSaying_ = true;
    afterMessage_ = std::move(then);
    const auto button =
        message.button.empty() ? std::nullopt : std::optional(MessageButton{message.button, message.button});
    RenderedTile rendered = renderTile(messageView(message.title, message.texts, button), familySize(instance_.family),
                                       style(Redaction::none), around_.studio.renderer());
    std::vector<TilePart> parts = tileParts(rendered, name());
    for (TilePart& part : parts) {
        part.act = part.act == TilePart::Act::open ? TilePart::Act::undo : part.act;
    }
    window_.show(std::move(rendered), std::move(parts), name());
    messageEnding_.after<&DesktopTile::messageEnded>(milliseconds, this);
}

void DesktopTile::messageEnded() {
    isSaying_ = false;
    if (const auto then = std::exchange(afterMessage_, nullptr)) {
        // It may be the end of this tile.
        then();
        return;
    }
    paint();
}

void DesktopTile::explain() {
    const Tile* tile = around_.tile(instance_.id);
    if (tile == nullptr || !tile->history().lastFailure) {
        return;
    }
    const std::string next = shortMoment(tile->schedule().due(), around_.clock.now());
    say({.title = localized("Could not be updated"),
         .texts = {inWords(tile->history().lastFailure->why.cause),
                   filledIn(localized("The next attempt is at %s."), next)},
         .button = {}},
        explanationMilliseconds, nullptr);
}

void DesktopTile::keep() {
    if (!isKept_ || saving_.isAwaited()) {
        save();
    }
}

void DesktopTile::paintSoon() {
    if (!window_.isSeen()) {
        // What there is comes to the screen first: the first new picture waits for the fonts.
        isBehind_ = true;
        return;
    }
    // Before the toolkit draws.
    painting_.whenIdle<&DesktopTile::paint>(this, G_PRIORITY_HIGH_IDLE);
}

void DesktopTile::seen() {
    if (std::exchange(isBehind_, false)) {
        // After the other tiles have come, too.
        painting_.whenIdle<&DesktopTile::paint>(this);
    }
}

void DesktopTile::paint() {
    if (isSaying_) {
        return;
    }
    if (isAway_) {
        // Without any screen the toolkit cannot even make widgets.
        isBehind_ = true;
        return;
    }
    const Tile* tile = around_.tile(instance_.id);
    if (tile != nullptr && tile->entry() != nullptr && shown_ == Shown::entry) {
        present(renderEntry(*tile->entry()));
        return;
    }
    if (stored_) {
        if (reload_ < around_.clock.now() && !waiting_.isAwaited() && tile == nullptr) {
            waiting_.after<&DesktopTile::waitedLong>(patienceMilliseconds, this);
        }
        present(renderEntry(stored_->entry));
        return;
    }
    shown_ = Shown::waiting;
    present(renderWaiting());
}

RenderedTile DesktopTile::renderEntry(const Entry& entry) {
    RenderedTile rendered =
        renderTile(entry.view, familySize(instance_.family), style(Redaction::none), around_.studio.renderer());
    rendered.widgetURL = entry.widgetURL;
    return rendered;
}

RenderedTile DesktopTile::renderWaiting() {
    return renderTile(waitingView(instance_.family), familySize(instance_.family), style(Redaction::placeholder),
                      around_.studio.renderer());
}

void DesktopTile::present(RenderedTile rendered) {
    marks_ = marks();
    std::vector<TilePart> parts = tileParts(rendered, name());
    if (marks_ != Marks{}) {
        parts.push_back(drawMarks(rendered));
    }
    window_.show(std::move(rendered), std::move(parts), name());
}

/// The part that the marks are, for the place where they were drawn.
TilePart DesktopTile::drawMarks(RenderedTile& rendered) {
    const std::string& text = marks_.asOf;
    const platform::View badge = !marks_.hasFailed ? asOfBadge(text)
                                 : text.empty()    ? failureMark()
                                                   : failedAsOfBadge(text);
    const Rect frame =
        drawBadge(rendered, badge, Corner::bottomTrailing, style(Redaction::none), around_.studio.renderer());
    if (!marks_.hasFailed) {
        return {
            .part = {.role = AccessibleItem::Role::text, .frame = frame, .name = text, .description = {}, .url = {}}};
    }
    return {.part = {.role = AccessibleItem::Role::link,
                     .frame = frame,
                     .name = localized("Could not be updated"),
                     .description = text,
                     .url = {}},
            .act = TilePart::Act::explain};
}

void DesktopTile::save() {
    const Tile* tile = around_.tile(instance_.id);
    if (tile == nullptr || tile->entry() == nullptr || tile->awaited() || tile->history().lastFailure) {
        // It may not be what is asked for by now.
        return;
    }
    isKept_ = true;
    around_.workLater([entries = around_.entries, instance = instance_, mode = renderingMode_,
                       stored = StoredEntry{*tile->entry(), made_, reload_}] {
        if (const auto failure = entries.save(instance, mode, stored)) {
            // A cache that cannot be written costs a moment at the next start, and nobody can do anything about it now.
            g_debug("%s", failure->description.c_str());
        }
    });
}

DesktopTile::Marks DesktopTile::marks() const {
    const Tile* tile = around_.tile(instance_.id);
    const bool hasFailed = tile != nullptr && tile->history().lastFailure.has_value();
    const bool hasPicture = shown_ != Shown::waiting;
    const bool isPast = hasPicture && reload_ < around_.clock.now();
    // While the answer may come any moment, an old picture is only that.
    const bool isAwaited = tile == nullptr || (tile->awaited() && !hasFailed);
    const bool hasWaited = !waiting_.isAwaited() && shown_ == Shown::stored && tile != nullptr;
    const bool isOld = isPast && (!isAwaited || hasWaited);
    return {.asOf = isOld ? filledIn(localized("as of %s"), shortMoment(made_, around_.clock.now())) : "",
            .hasFailed = hasFailed};
}

TileStyle DesktopTile::style(Redaction redaction) const {
    const DesktopLook& look = around_.settings.look();
    // The toolkit draws a window that reaches onto another screen for the finer one.
    const bool hasToolkits = output_.fine == nullptr && gtk_widget_get_realized(window_.widget()) != FALSE;
    const double scale = hasToolkits ? std::max<double>(output_.scale, window_.deviceScale()) : output_.scale;
    return {.appearance = {.scheme = look.scheme,
                           .mode = modeNamed(renderingMode_),
                           .redaction = redaction,
                           .contrast = look.contrast,
                           .accent = look.accent},
            .scale = scale * look.textScale,
            .direction = look.direction};
}

std::string DesktopTile::name() const {
    const WidgetInfo* widget = around_.catalog.widget(instance_.extension, instance_.kind);
    return widget == nullptr ? instance_.kind : widget->displayName;
}

} // namespace host
