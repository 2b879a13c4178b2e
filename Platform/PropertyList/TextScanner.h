// The old text form of property lists, value by value.
//
//   value       dictionary | array | data | string
//   dictionary  '{' { string '=' value ';' } '}'
//   array       '(' [ value { ',' value } [','] ] ')'
//   data        '<' hexadecimal digits in pairs, with blanks anywhere '>'
//   string      between double or single quotes, with escapes; or bare: letters, digits and _ $ / : . -
//
// Blanks and comments (// to the end of the line, /* to */) may stand between all of these. Escapes are those of C,
// octal numbers and \U with up to four hexadecimal digits, which are a unit of UTF-16.
//
// Positions are pointers into the text. Functions look at nothing beyond its end, and answer with the position after
// what they read, or null where the text is malformed.
#pragma once

#include <string>
#include <string_view>

namespace platform {

class TextScanner {
  public:
    explicit TextScanner(std::string_view text) : end_(text.data() + text.size()) {}

    const char* end() const { return end_; }

    const char* skipBlanks(const char* p) const;

    /// Passes over the value at `p`, which lies within `depth` containers.
    const char* skipValue(const char* p, int depth) const;

    /// Passes over the string at `p`.
    const char* skipString(const char* p) const;

    /// Passes over blanks, `mark` and blanks again.
    const char* skipMark(const char* p, char mark) const;

    /// Whether the next character is `mark`.
    bool isAt(const char* p, char mark) const { return p < end_ && *p == mark; }

    /// What the string that begins at `p` means.
    std::string string(const char* p) const;

    /// The bytes of the data that begin at `p`.
    std::string data(const char* p) const;

  private:
    const char* skipDictionary(const char* p, int depth) const;
    const char* skipArray(const char* p, int depth) const;
    const char* skipData(const char* p) const;

    const char* end_;
};

} // namespace platform
