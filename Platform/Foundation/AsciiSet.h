// A set of ASCII characters, as the grammars of addresses need them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

class AsciiSet {
  public:
    constexpr AsciiSet() = default;
    constexpr explicit AsciiSet(std::string_view characters) {
        for (const char character : characters) {
            insert(character);
        }
    }

    constexpr bool contains(char character) const { return member(character) != 0; }

    /// This set and `characters`.
    constexpr AsciiSet with(std::string_view characters) const {
        AsciiSet result = *this;
        for (const char character : characters) {
            result.insert(character);
        }
        return result;
    }

    /// Every byte that this set does not contain.
    constexpr AsciiSet inverted() const {
        AsciiSet result = *this;
        for (std::uint8_t& member : result.members_) {
            member ^= 1U;
        }
        return result;
    }

    /// The index of the first character of `text`, from `begin` on, that is not in this set; `text.size()` if all are.
    constexpr std::size_t endOfRun(std::string_view text, std::size_t begin) const {
        std::size_t at = begin;
        // Four at a time without a branch between them, since addresses are mostly runs.
        while (text.size() - at >= 4 &&
               (member(text[at]) & member(text[at + 1]) & member(text[at + 2]) & member(text[at + 3])) != 0) {
            at += 4;
        }
        while (at < text.size() && contains(text[at])) {
            ++at;
        }
        return at;
    }

  private:
    constexpr unsigned member(char character) const { return members_[static_cast<unsigned char>(character)]; }
    constexpr void insert(char character) { members_[static_cast<unsigned char>(character)] = 1; }

    /// 1 for each byte in the set, else 0.
    std::array<std::uint8_t, 256> members_{};
};

constexpr bool isAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

/// An ASCII capital's small letter; every other byte as it is.
constexpr char asciiLowerCased(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// The value of a hexadecimal digit; 16 for any other byte.
constexpr unsigned hexadecimalValue(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<unsigned>(character - '0');
    }
    const char lower = asciiLowerCased(character);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

inline constexpr AsciiSet asciiLetters("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
inline constexpr AsciiSet asciiDigits("0123456789");
inline constexpr AsciiSet asciiLettersAndDigits = asciiLetters.with("0123456789");

} // namespace platform
