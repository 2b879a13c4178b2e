// The one pass over an XML property list that finds out whether it is well-formed.
//
// The pass keeps nothing of the file but the way from the root to where it stands and the ends of long elements.
// Whatever walks over the file afterwards may rely on its form.
#pragma once

#include "Platform/PropertyList/XmlElementEnds.h"
#include "Platform/PropertyList/XmlEntryHeads.h"
#include "Platform/PropertyList/XmlReader.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace platform {

class XmlChecker {
  public:
    /// `ends` and `heads` are filled on the way.
    XmlChecker(std::string_view text, XmlElementEnds& ends, XmlEntryHeads& heads);

    /// The start tag of the root object, or null if the text is no property list.
    const char* check();

  private:
    /// A container whose end tag is still to come.
    struct OpenContainer {
        const char* start = nullptr;
        XmlElement element = XmlElement::array;
        bool expectsValue = false;
        bool isUniform = true;
        /// Of the entries of a dictionary: the last head, and the beginning and the key of the current one.
        std::uint8_t lastHead = XmlEntryHeads::start;
        const char* entryStart = nullptr;
        XmlCharacters key;
    };

    bool checkObject();
    bool checkKnownEntry(std::uint8_t index);
    bool checkTag();
    bool checkKey(const XmlTag& tag);
    bool checkLeaf(const XmlTag& tag);
    bool isExpected(XmlElement element, const char* entryStart);
    void noteHead(const XmlTag& tag);
    bool open(const XmlTag& tag);
    bool close(const XmlTag& tag);
    bool checkEncoding();
    std::uint64_t offset(const char* p) const { return static_cast<std::uint64_t>(p - begin_); }

    const char* begin_;
    const char* end_;
    /// Up to here the text is known to be UTF-8.
    const char* encodingChecked_;
    XmlReader reader_;
    XmlElementEnds& ends_;
    XmlEntryHeads& heads_;
    std::vector<OpenContainer> path_;
};

} // namespace platform
