#include "Extension/Shared/DocumentType.h"

#include "Platform/Foundation/Localization.h"

#include <algorithm>
#include <array>

namespace foliovault::DocumentType {
namespace {

struct Row {
    std::int64_t code;
    std::string_view symbol;
    const char* label;
};

constexpr std::array<Row, 26> rows{{
    {1, "folder", "Group"},
    {2, "folder.badge.gearshape", "Smart Group"},
    {3, "doc.text", "Text"},
    {4, "doc.richtext", "RTF"},
    {5, "doc.richtext", "RTFD"},
    {6, "terminal", "Script"},
    {7, "globe", "HTML"},
    {8, "archivebox", "Web Archive"},
    {9, "chevron.left.forwardslash.chevron.right", "XML"},
    {10, "list.bullet.rectangle", "Plist"},
    {11, "photo", "Image"},
    {12, "doc.text", "PDF"},
    {13, "play.rectangle", "QuickTime"},
    {14, "bookmark", "Bookmark"},
    {15, "dot.radiowaves.left.and.right", "Feed"},
    {16, "tablecells", "Sheet"},
    {110, "tag", "Tag"},
    {111, "tag", "Tag"},
    {112, "tag", "Tag Group"},
    {120, "video", "Video"},
    {121, "waveform", "Audio"},
    {122, "envelope", "Email"},
    {123, "doc.richtext", "Formatted Note"},
    {124, "doc.plaintext", "Markdown"},
    {125, "newspaper", "News"},
    {126, "doc.text", "PDF"},
}};
constexpr Row unknown{0, "doc", "Document"};

const Row& rowFor(std::int64_t code) {
    const auto* row = std::find_if(rows.begin(), rows.end(), [code](const Row& each) { return each.code == code; });
    return row == rows.end() ? unknown : *row;
}

} // namespace

std::string_view sfSymbol(std::int64_t code) {
    return rowFor(code).symbol;
}

std::string label(std::int64_t code) {
    return platform::localized(rowFor(code).label);
}

} // namespace foliovault::DocumentType
