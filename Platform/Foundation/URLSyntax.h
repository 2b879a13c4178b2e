// The grammar of addresses: where an address has its parts, and what each may hold.
// Source: RFC 3986; UTS 46 for hosts outside ASCII.
#pragma once

#include "Platform/Foundation/AsciiSet.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Where the parts lie in the text of an address, as byte offsets:
///
///     scheme:            0 … schemeEnd, the ":" after it; schemeEnd is 0 without a scheme
///     //user:password@   authorityBegin … hostBegin, the "@" within it; authorityBegin is 0 without a "//"
///     host               hostBegin … hostEnd, the brackets of an IP literal within it
///     :port              hostEnd … pathBegin
///     path               pathBegin … pathEnd
///     ?query             pathEnd … queryEnd
///     #fragment          queryEnd … end
///
/// Offsets never decrease from line to line; a part that is not there has no bytes.
struct URLParts {
    std::size_t schemeEnd = 0;
    std::size_t authorityBegin = 0;
    std::size_t hostBegin = 0;
    std::size_t hostEnd = 0;
    std::size_t pathBegin = 0;
    std::size_t pathEnd = 0;
    std::size_t queryEnd = 0;

    bool hasScheme() const { return schemeEnd != 0; }
    bool hasAuthority() const { return authorityBegin != 0; }
    /// Whether there is an authority with anything in it.
    bool hasHost() const { return hasAuthority() && authorityBegin != pathBegin; }

    std::string_view scheme(std::string_view text) const { return text.substr(0, schemeEnd); }
    std::string_view userInfo(std::string_view text) const {
        return hasAuthority() ? between(text, authorityBegin, hostBegin) : std::string_view();
    }
    std::string_view host(std::string_view text) const { return between(text, hostBegin, hostEnd); }
    std::string_view port(std::string_view text) const { return between(text, hostEnd, pathBegin); }
    std::string_view path(std::string_view text) const { return between(text, pathBegin, pathEnd); }
    std::string_view query(std::string_view text) const { return between(text, pathEnd, queryEnd); }
    std::string_view fragment(std::string_view text) const { return text.substr(queryEnd); }

  private:
    static std::string_view between(std::string_view text, std::size_t begin, std::size_t end) {
        return text.substr(begin, end - begin);
    }
};

/// How a text reads as an address: not at all; with every component holding only what it may; or with a component, the
/// host possibly, that holds something else.
enum class URLForm { none, wellFormed, sloppy };

/// Splits an address. Leaves `parts` alone if the result is `none`.
URLForm splitURL(std::string_view text, URLParts& parts);

bool isURLScheme(std::string_view text);

/// A host as an address holds it: `text` itself where it is percent-encoded or an IP literal in brackets, its ASCII
/// form where it is not ASCII; nothing if it is not a host.
std::optional<std::string> urlHost(std::string_view text);

/// Whether `urlHost` would give `text` back.
bool isURLHost(std::string_view text);

/// A host of an address as people write it: "%HH" decoded, an IP literal without its brackets.
std::string decodedURLHost(std::string_view host);

inline constexpr AsciiSet urlHostCharacters = asciiLettersAndDigits.with("-._~!$&'()*+,;=");
/// Within the brackets of an IP literal.
inline constexpr AsciiSet urlAddressCharacters = urlHostCharacters.with(":");
inline constexpr AsciiSet urlUserCharacters = urlHostCharacters.with(":");
inline constexpr AsciiSet urlPathCharacters = urlHostCharacters.with(":@/");
/// And those of a fragment.
inline constexpr AsciiSet urlQueryCharacters = urlPathCharacters.with("?");

} // namespace platform
