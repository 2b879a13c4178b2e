// A binary property list. Places are objects' numbers.
#pragma once

#include "Platform/Foundation/Data.h"
#include "Platform/PropertyList/BinaryKeys.h"
#include "Platform/PropertyList/BinaryLayout.h"
#include "Platform/PropertyList/BinaryObjectTable.h"
#include "Platform/PropertyList/PropertyListSource.h"

#include <memory>
#include <utility>

namespace platform {

class BinaryPropertyList final : public PropertyListSource {
  public:
    /// Null if `file` is no sound binary property list.
    static std::unique_ptr<const PropertyListSource> parse(const Data& file);

    Place root() const override;
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
    BinaryPropertyList(Data file, const BinaryLayout& layout)
        : file_(std::move(file)), layout_(layout), objects_(layout.objectCount()) {}

    BinaryObject object(Place place) const { return layout_.object(place.offset()); }
    Place placeOf(std::uint64_t index) const { return {objects_.kind(index), index}; }
    std::string text(const BinaryObject& object) const;
    double real(const BinaryObject& object) const;

    Data file_;
    BinaryLayout layout_;
    BinaryObjectTable objects_;
    BinaryKeys keys_;
};

} // namespace platform
