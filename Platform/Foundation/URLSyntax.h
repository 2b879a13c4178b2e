// The grammar of addresses: their parts, and the characters of each.
// Source: RFC 3986; UTS 46 for hosts outside ASCII.
#pragma once

#include "Platform/Foundation/AsciiSet.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The parts of an address as byte offsets in its text:
///
///     scheme:            0 … schemeEnd, the ":" after it; schemeEnd is 0 without a scheme
///     //user:password@   authorityBegin … hostBegin, the "@" within it; authorityBegin is 0 without a "//"
///     host               hostBegin … hostEnd, the brackets of an IP literal within it
///     :port              hostEnd … pathBegin
///     path               pathBegin … pathEnd
///     ?query             pathEnd … queryEnd
///     #fragment          queryEnd … end
///
/// Offsets never decrease from line to line. A missing part has no bytes.
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
    /// Returns whether there is an authority that is not empty.
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

/// Whether a text is an address. In an unencoded one, a component or the host has characters that must be encoded.
enum class URLForm { invalid, wellFormed, unencoded };

/// Splits an address. `parts` is unspecified if the result is `invalid`.
URLForm splitURL(std::string_view text, URLParts& parts);

bool isURLScheme(std::string_view text);

/// Returns `text` if it is percent-encoded or an IP literal in brackets, its ASCII form if it is not ASCII; nothing if
/// it is not a host.
std::optional<std::string> encodedURLHost(std::string_view text);

/// Returns whether `encodedURLHost` would return `text` unchanged.
bool isURLHost(std::string_view text);

/// Returns the host with "%HH" decoded and without the brackets of an IP literal.
std::string decodedURLHost(std::string_view host);

inline constexpr AsciiSet urlHostCharacters = asciiLettersAndDigits.with("-._~!$&'()*+,;=");
/// Within the brackets of an IP literal.
inline constexpr AsciiSet urlAddressCharacters = urlHostCharacters.with(":");
inline constexpr AsciiSet urlUserCharacters = urlHostCharacters.with(":");
inline constexpr AsciiSet urlPathCharacters = urlHostCharacters.with(":@/");
/// Of queries and fragments.
inline constexpr AsciiSet urlQueryCharacters = urlPathCharacters.with("?");

} // namespace platform
