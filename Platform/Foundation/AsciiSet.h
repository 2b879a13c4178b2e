// A set of ASCII characters, and ASCII helpers.
#pragma once

#include <array>
#include <cstddef>
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

    constexpr bool contains(char character) const { return members_[static_cast<unsigned char>(character)]; }

    /// Returns this set and `characters`.
    constexpr AsciiSet with(std::string_view characters) const {
        AsciiSet result = *this;
        for (const char character : characters) {
            result.insert(character);
        }
        return result;
    }

    /// Returns every byte that this set does not contain.
    constexpr AsciiSet inverted() const {
        AsciiSet result = *this;
        for (bool& member : result.members_) {
            member = !member;
        }
        return result;
    }

    /// Returns the index of the first character of `text` from `begin` on that is not in this set; `text.size()`
    /// without one.
    constexpr std::size_t endOfRun(std::string_view text, std::size_t begin) const {
        while (begin < text.size() && contains(text[begin])) {
            ++begin;
        }
        return begin;
    }

  private:
    constexpr void insert(char character) { members_[static_cast<unsigned char>(character)] = true; }

    std::array<bool, 256> members_{};
};

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr bool isAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

/// Returns the small letter of an ASCII capital; every other byte unchanged.
constexpr char asciiLowerCased(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Returns the value of a hexadecimal digit; 16 for any other byte.
constexpr unsigned hexadecimalValue(char character) {
    if (isDigit(character)) {
        return static_cast<unsigned>(character - '0');
    }
    const char lower = asciiLowerCased(character);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

inline constexpr AsciiSet asciiLetters("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
inline constexpr AsciiSet asciiDigits("0123456789");
inline constexpr AsciiSet asciiLettersAndDigits = asciiLetters.with("0123456789");

} // namespace platform
