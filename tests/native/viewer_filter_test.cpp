#include <gtest/gtest.h>

#include <random>

#include "tests/native/literal_viewer.h"
#include "tests/support/seed.h"
#include "viewer/display_filter.h"

namespace tallowmere {
namespace {

using namespace std::string_literals;

TEST(DisplayFilter, ControlCharacters) {
  const std::string many = "a" + std::string(1500, '\n');
  std::string breaks;
  for (int i = 0; i < 1500; ++i) breaks += "\r\n";
  const struct {
    std::string raw, text;
  } cases[] = {{"a\tb\x7F\x80\xFF", "a\tb\x7F\x80\xFF"},
               {"a\rb\nc\r\r\nd\n\r", "a\r\nb\r\nc\r\n\r\nd\r\n."},
               {"\na\x01\x08\x0B\x0C\x0E\x1F", ".a......"},
               {"\0a\0b\0\nc\0"s, ".a\r\nb\r\nc."},
               {"a\0\0b"s, "a\r\r\nb"},  // the second NUL stands between binary and text
               {"\xE9\0a\xE9\0\xE9\x01\0"s, "\r\na\xE9.\xE9.."},
               // Pairs, and breaks between binary and text, go on behind the limit.
               {many + "b\nc\rd\r\ne\0f\xE9\0g"s, "a" + breaks + "bcd\r\nef\r\ng"}};
  for (const auto& [raw, text] : cases)
    EXPECT_EQ(filter_chunk({.chunk_text = raw}, "").chunk_text, text) << raw;
}

TEST(DisplayFilter, AgreesWithTheLiteralOne) {
  std::mt19937 random(test_seed());
  const std::string alphabets[] = {"a\r\n\0\x01"s, "\r\n",     "\n",
                                   "ab\n",         "a\0\xE9"s, "\0\n\ra\x1F"s};
  int crowded = 0;
  for (int round = 0; round < 300; ++round) {
    const bool is_long = round % 20 == 0;
    std::string raw(random() % (is_long ? 31001 : 200), ' ');
    const std::string& letters = alphabets[random() % std::size(alphabets)];
    for (char& c : raw) c = letters[random() % letters.size()];
    const std::string extension = random() % 2 == 0 ? "wri" : "txt";
    if (random() % 4 > 0) raw.replace(0, std::min<std::size_t>(raw.size(), 2), "1\xBE");
    const auto start = static_cast<Position>(random() % 200 + 1);
    const Chunk chunk = filter_chunk({.chunk_start = start, .chunk_text = raw}, extension);
    crowded += chunk.crowded_from < start + std::ssize(raw);
    for (int i = 0; i < 10; ++i) {
      const auto asked = static_cast<Position>(random() % (raw.size() + 1) + 1);
      Position position = asked;
      const std::string literal = literal_filter(raw, extension, start, position);
      ASSERT_EQ(chunk.chunk_text, literal) << "round " << round;
      ASSERT_EQ(chunk.character_at(start + asked - 1) + 1, position)
          << "round " << round << " " << asked;
    }
  }
  EXPECT_GT(crowded, 2);
}

}  // namespace
}  // namespace tallowmere
