#include <gtest/gtest.h>

#include <random>

#include "engine/letter_case.h"
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
       {"\xFF", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xE4\xB8", "\xF5\x80\x80\x80", "\x80"}) {
    EXPECT_FALSE(is_well_formed_utf8(text));
    EXPECT_EQ(to_utf16(text).size(), text.size());
    EXPECT_EQ(to_utf16(text)[0], 0xDC00 + static_cast<unsigned char>(text[0]));
  }
  EXPECT_FALSE(is_well_formed_utf8("\xED\xA0\x80"));
  EXPECT_TRUE(is_well_formed_utf8("a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80"));
}

TEST(LetterCase, OrdersAndTellsTheSame) {
  EXPECT_EQ(lower_case("B_\xC3\x84\xD0\x96\xCE\xA9\xF0\x90\x90\x80"),
            "b_\xC3\xA4\xD0\xB6\xCF\x89\xF0\x90\x90\xA8");
  EXPECT_EQ(lower_case("\xC4\xB0\xC4\x81\xFF"), "\xC4\xB0\xC4\x81\xED\xB3\xBF");
  EXPECT_EQ(name_key("b_\xC3\xA4\xCF\x82\xC3\x9F\xF0\x90\x90\xA8"),
            "B_\xC3\x84\xCF\x82\xC3\x9F\xF0\x90\x90\xA8");
  EXPECT_EQ(name_key("\xCF\x83k"), "\xCE\xA3K");
  for (const char32_t letter : {U'k', U'\xE9', U'\x10428'}) EXPECT_TRUE(has_upper_case(letter));
  for (const char32_t other : {U'K', U'\xC9', U'\xDF', U'1'}) EXPECT_FALSE(has_upper_case(other));
}

}  // namespace
}  // namespace tallowmere
