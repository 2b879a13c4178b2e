#include "Extension/Shared/DocumentType.h"

#include <gtest/gtest.h>

#include <limits>

namespace foliovault {
namespace {

// The edges of the two ranges of codes, the codes that share something, and codes that mean nothing.
TEST(DocumentType, KnowsItsCodesAndNoOthers) {
    struct Row {
        std::int64_t code;
        const char* symbol;
        const char* label;
    };
    const Row rows[]{
        {1, "folder", "Group"},
        {2, "folder.badge.gearshape", "Smart Group"},
        {3, "doc.text", "Text"},
        {4, "doc.richtext", "RTF"},
        {5, "doc.richtext", "RTFD"},
        {9, "chevron.left.forwardslash.chevron.right", "XML"},
        {12, "doc.text", "PDF"},
        {16, "tablecells", "Sheet"},
        {17, "doc", "Document"},
        {109, "doc", "Document"},
        {110, "tag", "Tag"},
        {111, "tag", "Tag"},
        {112, "tag", "Tag Group"},
        {113, "doc", "Document"},
        {119, "doc", "Document"},
        {120, "video", "Video"},
        {123, "doc.richtext", "Formatted Note"},
        {126, "doc.text", "PDF"},
        {127, "doc", "Document"},
        {0, "doc", "Document"},
        {-1, "doc", "Document"},
        {std::numeric_limits<std::int64_t>::min(), "doc", "Document"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(DocumentType::sfSymbol(row.code), row.symbol) << row.code;
        EXPECT_EQ(DocumentType::label(row.code), row.label) << row.code;
    }
}

} // namespace
} // namespace foliovault
