#include "Extension/Shared/DocumentType.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

namespace foliovault {
namespace {

// The edges of the two ranges of codes, the codes that share something, and codes that mean nothing.
TEST(DocumentType, KnowsItsCodesAndNoOthers) {
    const std::tuple<std::int64_t, const char*, const char*> rows[]{
        {1, "folder", "Group"},
        {3, "doc.text", "Text"},
        {4, "doc.richtext", "RTF"},
        {5, "doc.richtext", "RTFD"},
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
        {std::numeric_limits<std::int64_t>::min(), "doc", "Document"},
    };
    for (const auto& [code, symbol, label] : rows) {
        EXPECT_EQ(DocumentType::sfSymbol(code), symbol) << code;
        EXPECT_EQ(DocumentType::label(code), label) << code;
    }
}

} // namespace
} // namespace foliovault
