// An XML property list, token by token.
//
// Blanks, comments and processing instructions between the tags are passed over. Nothing beyond the end of the text is
// looked at; whether the text is UTF-8 is left to others.
#pragma once

#include "Platform/Foundation/ByteScan.h"
#include "Platform/PropertyList/XmlTag.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

/// The characters of an element as they are typed.
struct XmlCharacters {
    std::string_view typed;
    /// Whether they mean what is typed: there are no references, sections, comments or instructions.
    bool isPlain = true;
};

class XmlReader {
  public:
    XmlReader(const char* start, const char* end) : end_(end), position_(start) {}

    /// The position after what was read last.
    const char* position() const { return position_; }

    /// Goes on at `p`.
    void moveTo(const char* p) { position_ = p; }

    /// Goes on after the start tag that lies between `start` and `after`, as if it had been read.
    void moveAfterTag(const char* start, const char* after) {
        tagStart_ = start;
        position_ = after;
    }

    /// Reads the next tag. Malformed if there is none, or anything else before it.
    XmlTag readTag() {
        const char* const p = skipXmlBlanks(position_, end_);
        if (end_ - p >= UsualXmlTags::bytesNeeded && *p == '<') {
            const XmlTag tag = usualXmlTags.find(p);
            if (tag.form() != XmlTag::Form::malformed) {
                moveAfterTag(p, tag.after());
                return tag;
            }
        }
        return readAnyTag();
    }

    /// Where the tag that was read last begins.
    const char* tagStart() const { return tagStart_; }

    /// Reads the characters and the end tag of the element whose start `tag` was just read. Without an address if they
    /// are malformed.
    XmlCharacters readContent(const XmlTag& tag) {
        const char* const start = position_;
        const char* const mark = findXmlMark(start, end_);
        if (end_ - mark >= UsualXmlTags::bytesNeeded && isEndTag(mark, start - tagStart_ - 1)) {
            position_ = mark + (start - tagStart_) + 1;
            return {.typed = {start, static_cast<std::size_t>(mark - start)}};
        }
        return readAnyContent(tag, mark);
    }

    /// Reads the end tag of `element`, which must be next.
    bool readEndTag(XmlElement element) { return readTag().isEndOf(element); }

    /// Passes over a DOCTYPE, with everything that it defines, if there is one. False if it does not end.
    bool skipDocumentType();

    /// Passes over blanks, comments and instructions. False if one does not end.
    bool skipMiscellany();

  private:
    XmlTag readAnyTag();
    XmlCharacters readAnyContent(const XmlTag& tag, const char* mark);

    /// Whether the end tag at `p` is the one for the start tag that was just read, of `length` bytes after its '<'.
    bool isEndTag(const char* p, std::ptrdiff_t length) const {
        const std::uint64_t difference = UsualXmlTags::load(tagStart_ + 1) ^ UsualXmlTags::load(p + 2);
        return p[0] == '<' && p[1] == '/' && length <= 8 && difference << (64 - 8 * length) == 0;
    }

    const char* end_;
    const char* position_;
    const char* tagStart_ = nullptr;
};

} // namespace platform
