#include <gtest/gtest.h>

#include <random>

#include "engine/unicode.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

TEST(Unicode, NamesSurviveTheWayThereAndBack) {
  std::mt19937 random(test_seed());
  for (int round = 0; round < 20000; ++round) {
    // Any sequence of units, lone and swapped surrogates included.
    std::u16string units(random() % 6, u' ');
    for (char16_t& unit : units) {
      const unsigned long kinds[] = {random() % 0x80, random() % 0x10000,
                                     0xD800 + random() % 0x800};
      unit = static_cast<char16_t>(kinds[random() % 3]);
    }
    ASSERT_EQ(to_utf16(to_utf8(units)), units);
  }
  EXPECT_EQ(to_utf8(u"\x4E2D\xD83D\xDE00"), "\xE4\xB8\xAD\xF0\x9F\x98\x80");
  EXPECT_EQ(to_utf8(u"\xD800"), "\xED\xA0\x80");
}

TEST(Unicode, IllFormedBytesAreTakenOneByOne) {
  for (const std::string text :
       {"\xFF", "\xC3", "\xC0\x80", "\xE4\xB8", "\xF5\x80\x80\x80", "\x80"}) {
    EXPECT_FALSE(is_well_formed_utf8(text));
    EXPECT_EQ(to_utf16(text).size(), text.size());
    EXPECT_EQ(to_utf16(text)[0], 0xDC00 + static_cast<unsigned char>(text[0]));
  }
  EXPECT_FALSE(is_well_formed_utf8("\xED\xA0\x80"));
  EXPECT_TRUE(is_well_formed_utf8("a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80"));
}

TEST(Unicode, ComparesWithoutRegardToCase) {
  EXPECT_EQ(compare_ignore_case("B.TXT", "b.txt"), 0);
  EXPECT_EQ(compare_ignore_case("\xC3\x84\xD0\x96\xCE\xA9", "\xC3\xA4\xD0\xB6\xCF\x89"), 0);
  EXPECT_LT(compare_ignore_case("b.txt", "C.txt"), 0);
  EXPECT_GT(compare_ignore_case("b.txt", "a_b"), 0);
  EXPECT_LT(compare_ignore_case("a", "ab"), 0);
  EXPECT_GT(compare_ignore_case("ab", "a"), 0);
  EXPECT_EQ(to_lower(0x130), 0x130u);
  EXPECT_EQ(to_lower(0x10400), 0x10428u);
  EXPECT_EQ(to_lower(0x101), 0x101u);
}

}  // namespace
}  // namespace tallowmere
