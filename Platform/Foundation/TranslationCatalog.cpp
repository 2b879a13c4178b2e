#include "Platform/Foundation/TranslationCatalog.h"

#include "Platform/Foundation/PluralRule.h"
#include "Platform/Foundation/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace platform {
namespace {

constexpr std::size_t numberSize = 4;

/// Returns the number at `offset`. Bytes beyond the end count as zero.
std::uint32_t numberAt(std::string_view file, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < numberSize; ++i) {
        const std::size_t at = offset + i;
        number |= std::uint32_t{at < file.size() ? static_cast<unsigned char>(file[at]) : 0U} << 8 * i;
    }
    return number;
}

/// Reads length and offset of a text at `offset`. Returns nothing if the text is not inside the file.
std::optional<std::string_view> textAt(std::string_view file, std::size_t offset) {
    const std::size_t length = numberAt(file, offset);
    const std::size_t begin = numberAt(file, offset + numberSize);
    if (begin > file.size() || length > file.size() - begin) {
        return std::nullopt;
    }
    return file.substr(begin, length);
}

std::string_view firstForm(std::string_view forms) {
    return forms.substr(0, forms.find('\0'));
}

/// Returns the text from `begin` to `end` or to the end; empty without a `begin`.
std::string_view between(std::string_view text, std::string_view begin, char end) {
    const std::size_t found = text.find(begin);
    const std::string_view rest = found != std::string_view::npos ? text.substr(found + begin.size()) : "";
    return rest.substr(0, rest.find(end));
}

std::optional<std::string_view> unlessEmpty(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

} // namespace

std::optional<TranslationCatalog> TranslationCatalog::parse(Data file) {
    constexpr std::uint32_t magic = 0x950412DE;
    constexpr std::size_t rowSize = 2 * numberSize;
    TranslationCatalog catalog(std::move(file));
    const std::string_view bytes = catalog.file_.bytes();
    // Magic number, revision (major above minor), count of texts, tables of keys and of translations.
    constexpr std::size_t headerSize = 5 * numberSize;
    const std::size_t count = numberAt(bytes, 2 * numberSize);
    const std::size_t keys = numberAt(bytes, 3 * numberSize);
    const std::size_t translations = numberAt(bytes, 4 * numberSize);
    const auto hasTableAt = [&](std::size_t offset) {
        return offset <= bytes.size() && count <= (bytes.size() - offset) / rowSize;
    };
    if (bytes.size() < headerSize || numberAt(bytes, 0) != magic || numberAt(bytes, numberSize) >> 16U != 0 ||
        !hasTableAt(keys) || !hasTableAt(translations)) {
        return std::nullopt;
    }
    catalog.entries_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto key = textAt(bytes, keys + i * rowSize);
        const auto forms = textAt(bytes, translations + i * rowSize);
        if (!key || !forms || !isUtf8(*forms)) {
            return std::nullopt;
        }
        // The English plural follows the key.
        const Entry entry{firstForm(*key), *forms};
        if (!catalog.entries_.empty() && catalog.entries_.back().key >= entry.key) {
            return std::nullopt;
        }
        catalog.entries_.push_back(entry);
    }
    // The translation of the empty text is the catalog's header.
    if (const Entry* header = catalog.entry("")) {
        catalog.pluralRule_ = between(between(header->forms, "Plural-Forms:", '\n'), "plural=", ';');
    }
    return catalog;
}

const TranslationCatalog::Entry* TranslationCatalog::entry(std::string_view key) const {
    const auto found = std::lower_bound(entries_.begin(), entries_.end(), key,
                                        [](const Entry& entry, std::string_view wanted) { return entry.key < wanted; });
    return found != entries_.end() && found->key == key ? &*found : nullptr;
}

std::optional<std::string_view> TranslationCatalog::find(std::string_view key) const {
    const Entry* found = entry(key);
    return found != nullptr ? unlessEmpty(firstForm(found->forms)) : std::nullopt;
}

std::optional<std::string_view> TranslationCatalog::find(std::string_view key, unsigned long count) const {
    const Entry* found = entry(key);
    if (found == nullptr) {
        return std::nullopt;
    }
    std::string_view forms = found->forms;
    auto index = evaluatePluralRule(pluralRule_, count).value_or(count == 1 ? 0 : 1);
    for (; index > 0 && forms.find('\0') != std::string_view::npos; --index) {
        forms.remove_prefix(forms.find('\0') + 1);
    }
    return unlessEmpty(firstForm(forms));
}

} // namespace platform
