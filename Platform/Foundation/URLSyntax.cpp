#include "Platform/Foundation/URLSyntax.h"

#include "Platform/Foundation/Icu.h"
#include "Platform/Foundation/PercentEncoding.h"
#include "Platform/Foundation/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace platform {

namespace {

constexpr AsciiSet schemeCharacters = asciiLettersAndDigits.with("+-.");
constexpr AsciiSet notSchemeDelimiters = AsciiSet(":/?#[]@").inverted();
constexpr AsciiSet notAuthorityDelimiters = AsciiSet("/?#").inverted();
constexpr AsciiSet notPathDelimiters = AsciiSet("?#").inverted();
constexpr AsciiSet notQueryDelimiters = AsciiSet("#").inverted();
constexpr AsciiSet anyCharacter = AsciiSet().inverted();

bool startsAt(std::string_view text, std::size_t at, std::string_view start) {
    return text.substr(at).starts_with(start);
}

bool isUserInfo(std::string_view info) {
    return info.empty() || isPercentEncoded(info.substr(0, info.size() - 1), urlUserCharacters);
}

/// Splits "user:password@host:port", which begins at `parts.authorityBegin`, and any subset of its parts.
URLForm splitAuthority(std::string_view text, URLParts& parts) {
    parts.hostBegin = parts.authorityBegin;
    parts.hostEnd = parts.pathBegin = urlHostCharacters.endOfRun(text, parts.hostBegin);
    if (parts.pathBegin == text.size() || !notAuthorityDelimiters.contains(text[parts.pathBegin])) {
        return URLForm::wellFormed;
    }

    parts.pathBegin = notAuthorityDelimiters.endOfRun(text, parts.pathBegin);
    const std::string_view authority = text.substr(0, parts.pathBegin);
    const std::size_t at = authority.rfind('@');
    if (at != std::string_view::npos) {
        parts.hostBegin = at + 1;
    }
    if (startsAt(authority, parts.hostBegin, "[")) {
        const std::size_t bracket = authority.find(']', parts.hostBegin);
        if (bracket == std::string_view::npos) {
            return URLForm::invalid;
        }
        parts.hostEnd = bracket + 1;
    } else {
        parts.hostEnd = std::min(authority.find(':', parts.hostBegin), authority.size());
    }
    const std::string_view port = parts.port(text);
    if (!port.empty() && (port.front() != ':' || asciiDigits.endOfRun(port, 1) != port.size())) {
        return URLForm::invalid;
    }
    return isUserInfo(parts.userInfo(text)) && isURLHost(parts.host(text)) ? URLForm::wellFormed : URLForm::unencoded;
}

/// Returns the end of the component that begins at `begin` and ends at the first delimiter. Sets `form` to `unencoded`
/// if the component has anything but `allowed` and "%HH".
std::size_t componentEnd(std::string_view text, std::size_t begin, const AsciiSet& allowed,
                         const AsciiSet& notDelimiters, URLForm& form) {
    const std::size_t runEnd = allowed.endOfRun(text, begin);
    const std::size_t end = notDelimiters.endOfRun(text, runEnd);
    if (runEnd != end && !isPercentEncoded(text.substr(runEnd, end - runEnd), allowed)) {
        form = URLForm::unencoded;
    }
    return end;
}

/// Returns the ASCII form of a host by UTS 46, non-transitional. Ignores errors that matter only to name servers (too
/// long, empty, hyphenated), since the application's own addresses have such hosts.
std::optional<std::string> hostToAscii(std::string_view text) {
    constexpr std::uint32_t harmlessErrors = UIDNA_ERROR_EMPTY_LABEL | UIDNA_ERROR_LABEL_TOO_LONG |
                                             UIDNA_ERROR_DOMAIN_NAME_TOO_LONG | UIDNA_ERROR_LEADING_HYPHEN |
                                             UIDNA_ERROR_TRAILING_HYPHEN | UIDNA_ERROR_HYPHEN_3_4;
    // Punycode takes quadratic time. Names of name servers have 253 bytes.
    constexpr std::size_t maxHost = 4096;
    const Icu* icu = Icu::shared();
    if (icu == nullptr || text.size() > maxHost) {
        return std::nullopt;
    }
    static const UIDNA* const idna = [icu] {
        UErrorCode error = U_ZERO_ERROR;
        return icu->idnaOpenUts46(UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ | UIDNA_NONTRANSITIONAL_TO_ASCII, &error);
    }();
    if (idna == nullptr) {
        return std::nullopt;
    }

    std::string ascii(256, '\0');
    UIDNAInfo info = UIDNA_INFO_INITIALIZER;
    const auto convert = [&] {
        UErrorCode error = U_ZERO_ERROR;
        const auto length =
            icu->idnaNameToAsciiUtf8(idna, text.data(), static_cast<std::int32_t>(text.size()), ascii.data(),
                                     static_cast<std::int32_t>(ascii.size()), &info, &error);
        ascii.resize(static_cast<std::size_t>(length));
        return error;
    };
    UErrorCode error = convert();
    if (error == U_BUFFER_OVERFLOW_ERROR) {
        error = convert();
    }
    if (U_FAILURE(error) || (info.errors & ~harmlessErrors) != 0) {
        return std::nullopt;
    }
    return ascii;
}

} // namespace

URLForm splitURL(std::string_view text, URLParts& parts) {
    parts = {};
    std::size_t at = schemeCharacters.endOfRun(text, 0);
    if (at > 0 && startsAt(text, at, ":") && asciiLetters.contains(text.front())) {
        parts.schemeEnd = at++;
    } else {
        at = notSchemeDelimiters.endOfRun(text, at);
        if (text.empty() || startsAt(text, at, ":")) {
            return URLForm::invalid;
        }
        at = 0;
    }

    URLForm form = URLForm::wellFormed;
    if (startsAt(text, at, "//")) {
        parts.authorityBegin = at + 2;
        form = splitAuthority(text, parts);
        if (form == URLForm::invalid) {
            return form;
        }
    } else {
        parts.hostBegin = parts.hostEnd = parts.pathBegin = at;
    }

    parts.pathEnd = componentEnd(text, parts.pathBegin, urlPathCharacters, notPathDelimiters, form);
    parts.queryEnd = parts.pathEnd;
    if (startsAt(text, parts.pathEnd, "?")) {
        parts.queryEnd = componentEnd(text, parts.pathEnd + 1, urlQueryCharacters, notQueryDelimiters, form);
    }
    if (startsAt(text, parts.queryEnd, "#")) {
        componentEnd(text, parts.queryEnd + 1, urlQueryCharacters, anyCharacter, form);
    }
    return form;
}

bool isURLScheme(std::string_view text) {
    return !text.empty() && asciiLetters.contains(text.front()) && schemeCharacters.endOfRun(text, 0) == text.size();
}

bool isURLHost(std::string_view text) {
    if (text.starts_with('[')) {
        const std::string_view address = text.substr(1, text.size() - 2);
        return text.size() > 2 && text.ends_with(']') && isPercentEncoded(address, urlAddressCharacters);
    }
    return isPercentEncoded(text, urlHostCharacters);
}

std::string decodedURLHost(std::string_view host) {
    return percentDecoded(host.starts_with('[') ? host.substr(1, host.size() - 2) : host);
}

std::optional<std::string> encodedURLHost(std::string_view text) {
    if (isURLHost(text)) {
        return std::string(text);
    }
    if (isAscii(text)) {
        return std::nullopt;
    }
    std::optional<std::string> ascii = hostToAscii(text);
    const bool isHost = ascii && !ascii->empty() && isPercentEncoded(*ascii, urlHostCharacters);
    return isHost ? std::move(ascii) : std::nullopt;
}

} // namespace platform
