// The tags of XML property lists.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace platform {

enum class XmlElement : std::uint8_t {
    unknown,
    plist,
    key,
    string,
    integer,
    real,
    yes, // <true/>
    no,  // <false/>
    date,
    data,
    array,
    dictionary
};

/// A tag. Two words, so that it travels in registers.
class XmlTag {
  public:
    enum class Form : std::uint8_t { malformed, start, empty, end };

    constexpr XmlTag() = default;
    constexpr XmlTag(Form form, XmlElement element, const char* after)
        : bits_(static_cast<std::uint64_t>(form) << formShift | static_cast<std::uint64_t>(element)), after_(after) {}

    Form form() const { return static_cast<Form>(bits_ >> formShift); }
    XmlElement element() const { return static_cast<XmlElement>(bits_ & 0xFFU); }
    bool isEndOf(XmlElement element) const { return bits_ == XmlTag(Form::end, element, nullptr).bits_; }
    /// The position after the tag.
    const char* after() const { return after_; }

  private:
    friend class UsualXmlTags;
    constexpr XmlTag(std::uint64_t bits, const char* after) : bits_(bits), after_(after) {}

    static constexpr unsigned formShift = 8;
    std::uint64_t bits_ = 0;
    const char* after_ = nullptr;
};

/// The usual tags, recognised with one comparison of eight bytes: a table has for every hash of the first four letters
/// the one tag that it may be.
class UsualXmlTags {
  public:
    constexpr UsualXmlTags() {
        using Form = XmlTag::Form;
        add("key>", Form::start, XmlElement::key);
        add("string>", Form::start, XmlElement::string);
        add("integer>", Form::start, XmlElement::integer);
        add("real>", Form::start, XmlElement::real);
        add("true/>", Form::empty, XmlElement::yes);
        add("false/>", Form::empty, XmlElement::no);
        add("date>", Form::start, XmlElement::date);
        add("data>", Form::start, XmlElement::data);
        add("array>", Form::start, XmlElement::array);
        add("dict>", Form::start, XmlElement::dictionary);
    }

    /// The tag at `p`, where there are at least `bytesNeeded` bytes; malformed if it is none of the usual ones.
    XmlTag find(const char* p) const {
        const bool isEnd = p[1] == '/';
        p += isEnd ? 2 : 1;
        const std::uint64_t word = load(p);
        const Entry& entry = entries_[hash(word)];
        if ((word & entry.mask) != entry.word) {
            return {};
        }
        return {isEnd ? entry.endBits : entry.bits, p + entry.length};
    }
    static constexpr std::ptrdiff_t bytesNeeded = 10;

    /// Eight bytes, the first one lowest.
    static std::uint64_t load(const char* p) {
        std::uint64_t word = 0;
        std::memcpy(&word, p, sizeof word);
        if constexpr (std::endian::native == std::endian::big) {
            word = __builtin_bswap64(word);
        }
        return word;
    }

  private:
    struct Entry {
        std::uint64_t mask = 0;
        /// What no word is under an empty mask.
        std::uint64_t word = 1;
        /// Of the tag, and of the same name's end tag if that is usual.
        std::uint16_t bits = 0;
        std::uint16_t endBits = 0;
        std::uint32_t length = 0;
    };

    /// Chosen so that no two of the tags fall on the same place, which `add` makes sure of.
    static constexpr std::size_t hash(std::uint64_t word) {
        return static_cast<std::uint32_t>(static_cast<std::uint32_t>(word) * hashFactor) >> 28U;
    }
    static constexpr std::uint32_t hashFactor = 4265;

    constexpr void add(std::string_view text, XmlTag::Form form, XmlElement element) {
        using Form = XmlTag::Form;
        Entry entry{.mask = 0, .word = 0, .length = static_cast<std::uint32_t>(text.size())};
        for (std::size_t index = 0; index < text.size(); ++index) {
            entry.word |= std::uint64_t{static_cast<unsigned char>(text[index])} << 8 * index;
            entry.mask |= std::uint64_t{0xFF} << 8 * index;
        }
        entry.bits = static_cast<std::uint16_t>(XmlTag(form, element, nullptr).bits_);
        if (form == Form::start) {
            entry.endBits = static_cast<std::uint16_t>(XmlTag(Form::end, element, nullptr).bits_);
        }
        Entry& place = entries_[hash(entry.word)];
        if (place.mask != 0) {
            throw "two tags fall on the same place"; // never runs: the table is made by the compiler
        }
        place = entry;
    }

    std::array<Entry, 16> entries_{};
};

inline constexpr UsualXmlTags usualXmlTags;

} // namespace platform
