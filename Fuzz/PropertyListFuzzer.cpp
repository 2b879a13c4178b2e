// Reads any file as a property list, and calls every accessor of every value.

#include "Platform/PropertyList/PropertyList.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using platform::Data;
using platform::PropertyList;
using platform::PropertyListValue;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class Walk {
  public:
    void visit(const PropertyListValue& value) {
        // Containers that are shared make more values than there are bytes.
        constexpr int maxValues = 20'000;
        if (++values_ > maxValues) {
            return;
        }
        using Kind = PropertyListValue::Kind;
        const Kind kind = value.kind();
        require(value.string().has_value() == (kind == Kind::string));
        require(value.boolean().has_value() == (kind == Kind::boolean));
        require(value.date().has_value() == (kind == Kind::date));
        require(value.number().has_value() == (kind == Kind::integer || kind == Kind::real));
        require(!value.integer() || kind == Kind::integer);
        if (const auto data = value.data()) {
            std::string text;
            data->appendBase64(text);
            require(text.size() % 4 == 0 && data->decoded().size() <= text.size());
        }
        require(value.forEachElement([this](const PropertyListValue& element) {
            visit(element);
            return values_ <= maxValues;
        }) == (kind == Kind::array));
        require(value.forEachEntry([&](const std::string& key, const PropertyListValue& entry) {
            const auto selected = value[key];
            require(selected.has_value());
            visit(entry);
            return values_ <= maxValues;
        }) == (kind == Kind::dictionary));
        visitAsContainer(value);
    }

  private:
    static void visitAsContainer(const PropertyListValue& value) {
        std::size_t elements = 0;
        bool isUniform = true;
        const bool isArray = value.forEachElement([&](const PropertyListValue& element) {
            ++elements;
            isUniform = isUniform && element.kind() == PropertyListValue::Kind::dictionary;
            return true;
        });
        require(!isArray || value.arrayCount() == elements);
        require(value.isArrayOfDictionaries() == (isArray && isUniform));

        constexpr std::array<std::string_view, 4> keys = {"Name", "a", "", "Children"};
        std::array<std::optional<PropertyListValue>, 4> found;
        require(value.select(keys, found) == (value.kind() == PropertyListValue::Kind::dictionary));
    }

    int values_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // A copy of exactly this size, so that the sanitizer sees reads beyond it.
    const Data file = Data::owning(std::string(reinterpret_cast<const char*>(bytes), size));
    if (const auto list = PropertyList::parse(file)) {
        Walk().visit(list->root());
    }
    return 0;
}
