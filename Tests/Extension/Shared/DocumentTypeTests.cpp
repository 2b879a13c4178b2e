#include "Extension/Shared/DocumentType.h"

#include <gtest/gtest.h>

#include <tuple>

namespace foliovault {
namespace {

TEST(DocumentType, KnowsItsCodesAndNoOthers) {
    const std::tuple<std::int64_t, const char*, const char*> rows[]{
        {1, "folder", "Group"}, {4, "doc.richtext", "RTF"}, {12, "doc.text", "PDF"}, {16, "tablecells", "Sheet"},
        {111, "tag", "Tag"},    {112, "tag", "Tag Group"},  {120, "video", "Video"}, {126, "doc.text", "PDF"}};
    for (const auto& [code, symbol, label] : rows) {
        EXPECT_EQ(DocumentType::sfSymbol(code), symbol) << code;
        EXPECT_EQ(DocumentType::label(code), label) << code;
    }
    for (const std::int64_t unknown : {0, 17, 109, 113, 119, 127}) {
        EXPECT_EQ(DocumentType::sfSymbol(unknown), "doc") << unknown;
        EXPECT_EQ(DocumentType::label(unknown), "Document") << unknown;
    }
}

} // namespace
} // namespace foliovault
