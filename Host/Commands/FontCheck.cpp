#include "Host/Commands/MachineChecks.h"

#include "Platform/Foundation/Releaser.h"

#include <fmt/format.h>
#include <fontconfig/fontconfig.h>

#include <array>
#include <memory>
#include <optional>

namespace host {
namespace {

constexpr const char* widgetFont = "Inter";

using Config = std::unique_ptr<FcConfig, platform::Releaser<FcConfigDestroy>>;
using Pattern = std::unique_ptr<FcPattern, platform::Releaser<FcPatternDestroy>>;
using CharSet = std::unique_ptr<FcCharSet, platform::Releaser<FcCharSetDestroy>>;

const FcChar8* fontconfigText(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

struct Script {
    const char* name;
    const char* package;
    /// Letters that every font for the script has.
    std::array<FcChar32, 3> letters;
};
constexpr Script latin{"font", "fonts-inter", {U'a', U'ö', U'…'}};
constexpr std::array scripts{Script{"Japanese", "fonts-noto-cjk", {U'日', U'の', U'ト'}},
                             Script{"Arabic", "fonts-noto-core", {U'ا', U'ل', U'م'}},
                             Script{"Hebrew", "fonts-noto-core", {U'א', U'ל', U'ש'}},
                             Script{"emoji", "fonts-noto-color-emoji", {U'😀', U'📚', U'🌍'}}};

/// Returns the family of the font that has all these letters; nothing if no font has.
std::optional<std::string> familyFor(const Script& script, FcConfig* config) {
    const CharSet letters(FcCharSetCreate());
    for (const FcChar32 letter : script.letters) {
        FcCharSetAddChar(letters.get(), letter);
    }
    const Pattern wish(FcPatternCreate());
    FcPatternAddString(wish.get(), FC_FAMILY, fontconfigText(widgetFont));
    FcPatternAddString(wish.get(), FC_FAMILY, fontconfigText("sans-serif"));
    FcPatternAddCharSet(wish.get(), FC_CHARSET, letters.get());
    FcConfigSubstitute(config, wish.get(), FcMatchPattern);
    FcDefaultSubstitute(wish.get());
    FcResult result = FcResultNoMatch;
    const Pattern font(FcFontMatch(config, wish.get(), &result));
    FcCharSet* has = nullptr;
    FcChar8* family = nullptr;
    if (!font || FcPatternGetCharSet(font.get(), FC_CHARSET, 0, &has) != FcResultMatch ||
        FcCharSetIsSubset(letters.get(), has) == FcFalse ||
        FcPatternGetString(font.get(), FC_FAMILY, 0, &family) != FcResultMatch) {
        return std::nullopt;
    }
    return std::string(reinterpret_cast<const char*>(family));
}

Finding checkWidgetFont(FcConfig* config) {
    const auto family = familyFor(latin, config);
    const auto fix = fmt::format("install the font {} (on Debian the package {})", widgetFont, latin.package);
    if (!family) {
        return Finding::problem(latin.name, "not found: widgets show no text", fix);
    }
    return family == widgetFont
               ? Finding::ok(latin.name, *family)
               : Finding::note(latin.name, fmt::format("{} is missing; widgets are drawn in {}", widgetFont, *family),
                               fix);
}

Finding checkScript(const Script& script, FcConfig* config) {
    const auto name = fmt::format("font, {}", script.name);
    const auto family = familyFor(script, config);
    return family ? Finding::ok(name, *family)
                  : Finding::note(name, "not found: such names are shown as boxes",
                                  fmt::format("install one (on Debian for example the package {})", script.package));
}

} // namespace

Findings checkFonts() {
    const Config config(FcInitLoadConfigAndFonts());
    Findings findings{checkWidgetFont(config.get())};
    for (const Script& script : scripts) {
        findings.push_back(checkScript(script, config.get()));
    }
    return findings;
}

} // namespace host
