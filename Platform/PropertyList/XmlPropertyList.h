// An XML property list. Places are the offsets of start tags; walking scans forward from there, relying on the check
// that the file has passed.
#pragma once

#include "Platform/Foundation/Data.h"
#include "Platform/PropertyList/PropertyListSource.h"
#include "Platform/PropertyList/XmlElementEnds.h"
#include "Platform/PropertyList/XmlEntryHeads.h"
#include "Platform/PropertyList/XmlReader.h"

#include <memory>

namespace platform {

class XmlPropertyList final : public PropertyListSource {
  public:
    /// Null if `text`, which is UTF-8 without a byte-order mark or no text at all, is no XML property list.
    static std::unique_ptr<const PropertyListSource> parse(const Data& text);

    Place root() const override { return root_; }
    std::string string(Place place) const override;
    std::optional<std::int64_t> integer(Place place) const override;
    double number(Place place) const override;
    bool boolean(Place place) const override;
    Date date(Place place) const override;
    EncodedData data(Place place) const override;
    Cursor walk(Place container) const override;
    std::optional<Place> nextElement(Cursor& cursor) const override;
    bool nextEntry(Cursor& cursor, Entry& entry) const override;
    std::size_t arrayCount(Place array) const override;
    bool isArrayOfDictionaries(Place array) const override;
    void select(Place dictionary, KeySelection& selection) const override;

  private:
    explicit XmlPropertyList(const Data& text) : text_(text), ends_(text.size()) {}

    const char* begin() const { return text_.bytes().data(); }
    const char* end() const { return begin() + text_.size(); }
    std::uint64_t offset(const char* p) const { return static_cast<std::uint64_t>(p - begin()); }
    XmlReader readerAt(std::uint64_t offset) const { return {begin() + offset, end()}; }

    XmlCharacters characters(Place place) const;
    void skipElement(XmlReader& reader, const XmlTag& tag) const;
    void skipContent(XmlReader& reader) const;
    const char* afterEndTag(const XmlElementEnds::End& end) const;
    void prefetchAfter(const XmlElementEnds::End& end) const;

    Data text_;
    XmlElementEnds ends_;
    XmlEntryHeads heads_;
    Place root_{};
};

} // namespace platform
