// A property list in the old text form. Places are the offsets of values; walking scans forward from there.
#pragma once

#include "Platform/Foundation/Data.h"
#include "Platform/PropertyList/PropertyListSource.h"
#include "Platform/PropertyList/TextScanner.h"

#include <memory>
#include <utility>

namespace platform {

class TextPropertyList final : public PropertyListSource {
  public:
    /// Null if `text`, without a byte-order mark, is no UTF-8 or no property list in the old text form.
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
    TextPropertyList(Data text, const char* root)
        : text_(std::move(text)), scanner_(text_.bytes()), root_(placeOf(root)) {}

    const char* position(std::uint64_t offset) const { return text_.bytes().data() + offset; }
    Place placeOf(const char* p) const;

    Data text_;
    TextScanner scanner_;
    Place root_;
};

} // namespace platform
