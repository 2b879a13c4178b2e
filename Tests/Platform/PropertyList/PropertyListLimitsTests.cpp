// Files that ask for too much: they must be refused, or read, without taking long, much memory, or the stack.

#include "Tests/Platform/PropertyList/BinaryFile.h"
#include "Tests/Platform/PropertyList/CanonicalText.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using namespace std::string_literals;

std::string nested(std::string_view open, std::string_view content, std::string_view close, std::size_t depth) {
    std::string text;
    for (std::size_t index = 0; index < depth; ++index) {
        text += open;
    }
    text += content;
    for (std::size_t index = 0; index < depth; ++index) {
        text += close;
    }
    return text;
}

/// Arrays within each other, the last one empty.
BinaryFile nestedBinary(std::size_t depth) {
    BinaryFile file{.offsetSize = 4, .referenceSize = 4};
    for (std::size_t index = 1; index < depth; ++index) {
        file.objects.push_back("\xA1" + bigEndian(index, 4));
    }
    file.objects.emplace_back("\xA0");
    return file;
}

TEST(PropertyListLimits, DepthIsBounded) {
    constexpr std::size_t max = PropertyList::maxDepth;
    const auto isRead = [](const std::string& file) { return canonicalText(file) != "error"; };
    for (const std::size_t depth : {max, max + 1, std::size_t{100'000}}) {
        const bool isAllowed = depth <= max;
        EXPECT_EQ(isRead(nested("<array>", "", "</array>", depth)), isAllowed) << depth;
        EXPECT_EQ(isRead(nested("<dict><key>a</key>", "<true/>", "</dict>", depth)), isAllowed) << depth;
        EXPECT_EQ(isRead(nested("(", "", ")", depth)), isAllowed) << depth;
        EXPECT_EQ(isRead(nested("{a=", "b", ";}", depth)), isAllowed) << depth;
        EXPECT_EQ(isRead(nestedBinary(depth).bytes()), isAllowed) << depth;
    }
    EXPECT_FALSE(isRead(nested("<array>", "", "", 1'000'000)));
    EXPECT_FALSE(isRead(std::string(1'000'000, '(')));
}

/// The depth of a container counts from wherever it is reached, not only from where it was reached first.
TEST(PropertyListLimits, DepthIsBoundedOnEveryWay) {
    for (const std::size_t length : {std::size_t{255}, std::size_t{256}}) {
        // The root refers to a chain's second half first, then to its beginning.
        BinaryFile file = nestedBinary(2 * length + 1);
        file.objects.emplace_back("\xA2" + bigEndian(length, 4) + bigEndian(0, 4));
        file.root = file.objects.size() - 1;
        EXPECT_EQ(PropertyList::parse(Data::owning(file.bytes())).has_value(), 2 * length + 2 <= 512) << length;
    }
}

/// Every array holds the next one twice: 2^60 leaves in a few hundred bytes.
TEST(PropertyListLimits, SharedContainersAreCheckedOnce) {
    BinaryFile file;
    for (char index = 1; index <= 60; ++index) {
        file.objects.push_back("\xA2"s + index + index);
    }
    file.objects.emplace_back("\x09");
    const auto list = PropertyList::parse(Data::owning(file.bytes()));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->root().arrayCount(), 2U);
}

/// A root that refers to 300,000 objects, all of which are said to be the same large array, or the same large text.
TEST(PropertyListLimits, ObjectsInTheSameBytesAreRefused) {
    constexpr std::size_t count = 300'000;
    std::string references;
    std::string flags;
    for (std::size_t index = 0; index < count; ++index) {
        references += bigEndian(index + 2, 3);
        flags += bigEndian(1, 3);
    }
    const std::string root = "\xAF\x12" + bigEndian(count, 4) + references;
    for (const std::string& large : {"\xAF\x12" + bigEndian(count, 4) + flags,
                                     "\x5F\x12" + bigEndian(3 * count, 4) + std::string(3 * count, 'a')}) {
        BinaryFile file{.objects = {root, "\x09", large}, .offsetSize = 3, .referenceSize = 3};
        file.objects.resize(count + 2);
        for (std::size_t index = 3; index < count + 2; ++index) {
            file.offsets.emplace_back(index, 8 + root.size() + 1);
        }
        EXPECT_EQ(canonicalText(file.bytes()), "error");
    }
}

} // namespace
} // namespace platform
