#include <gtest/gtest.h>

#include <random>

#include "tests/native/literal_viewer.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

using namespace std::string_literals;

std::string shown(const std::string& raw) {
  return filter_chunk(raw, -1).text;
}

TEST(DisplayFilter, ControlCharacters) {
  const struct {
    std::string raw, text;
  } cases[] = {
      {"", ""},
      {"a\tb\x7F\x80\xFF", "a\tb\x7F\x80\xFF"},
      {"a\r\nb", "a\r\nb"},
      {"a\rb\nc", "a\r\nb\r\nc"},
      {"a\n\rb", "a\r\n\r\nb"},
      {"a\r\r\nb", "a\r\n\r\nb"},
      {"\na\r", ".a."},
      {"\ra\n", "\r\na\r\n"},
      {"\x01\x08\x0B\x0C\x0E\x1F", "......"},
      {"a\0b"s, "a\r\nb"},
      {"a\0\nb"s, "a\r\nb"},
      {"a\0\0b"s, "a\r\r\nb"},  // the second NUL stands between binary and text
      {"a\0"s, "a."},
      {"\0a"s, ".a"},
      {"\x01\0a"s, "\r\na"},
      {"\x01\0\x01"s, "..."},
      {"\x01\0"s, ".."},
      {"\xE9\0a"s, "\r\na"},
      {"\xE9\0\xE9"s, "\xE9.\xE9"},
      {"\r\0a"s, "\r\r\na"},
  };
  for (const auto& [raw, text] : cases) EXPECT_EQ(shown(raw), text) << raw;
}

TEST(DisplayFilter, NoMoreThan1500BreaksAreCompleted) {
  std::string expected = ".";
  for (int i = 0; i < 1500; ++i) expected += "\r\n";
  EXPECT_EQ(shown(std::string(31000, '\n')), expected);
  // Pairs, and breaks between binary and text, go on as if nothing had happened.
  const std::string many = "a" + std::string(1500, '\n');
  EXPECT_EQ(shown(many + "b\nc\rd\r\ne\0f\xE9\0g"s), shown(many) + "bcd\r\nef\r\ng");
  EXPECT_EQ(filter_chunk(many + "b\nc", -1).crowded_from, 1502);
}

TEST(DisplayFilter, WriteHeader) {
  const std::string raw = "1\xBE" + std::string(200, 'x');
  const struct {
    const char* extension;
    std::int64_t chunk_start;
    std::size_t break_at;
  } cases[] = {{"wri", 1, 127}, {"wri", 128, 0}, {"wri", 129, 0},
               {"WRI", 1, 0},   {"doc", 1, 0},   {"wri", 120, 8}};
  for (const auto& [extension, chunk_start, break_at] : cases) {
    std::int64_t position = 1;
    const std::string literal = literal_filter(raw, extension, chunk_start, position);
    const auto end = write_header_end(raw, extension, chunk_start);
    EXPECT_EQ(filter_chunk(raw, end).text, literal);
    const std::size_t found = literal.find("\r\n");
    EXPECT_EQ(found == std::string::npos ? 0 : found, break_at) << extension << chunk_start;
  }
  EXPECT_EQ(write_header_end("0\xBE" + std::string(200, 'x'), "wri", 1), -1);
  EXPECT_EQ(write_header_end("1\xBE" + std::string(125, 'x'), "wri", 1), -1);
  EXPECT_EQ(write_header_end("1", "wri", 1), -1);
}

TEST(DisplayFilter, AgreesWithTheLiteralOne) {
  std::mt19937 random(test_seed());
  const std::string alphabets[] = {"a\r\n\0\x01"s, "\r\n",     "\n",
                                   "ab\n",         "a\0\xE9"s, "\0\n\ra\x1F"s};
  int crowded = 0;
  for (int round = 0; round < 400; ++round) {
    const std::size_t size = round % 8 == 0 ? random() % 31001 : random() % 60;
    const std::string& letters = alphabets[random() % std::size(alphabets)];
    std::string raw(size, ' ');
    for (char& c : raw) c = letters[random() % letters.size()];
    const bool write = random() % 2 == 0;
    const auto chunk_start = static_cast<std::int64_t>(random() % 200 + 1);
    if (write && size > 1) raw.replace(0, 2, "1\xBE");
    const std::string extension = write ? "wri" : "txt";
    const FilteredChunk chunk = filter_chunk(raw, write_header_end(raw, extension, chunk_start));
    crowded += chunk.crowded_from < std::ssize(raw);
    for (int i = 0; i < 20; ++i) {
      const auto asked = static_cast<std::int64_t>(random() % (size + 1) + 1);
      std::int64_t position = asked;
      const std::string literal = literal_filter(raw, extension, chunk_start, position);
      ASSERT_EQ(chunk.text, literal) << "round " << round;
      ASSERT_EQ(chunk.position_of(asked - 1) + 1, position) << "round " << round << " " << asked;
    }
  }
  EXPECT_GT(crowded, 10);
}

}  // namespace
}  // namespace tallowmere
