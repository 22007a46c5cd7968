#include "viewer/hit_line.h"

#include <gtest/gtest.h>

#include "engine/unicode.h"
#include "tests/support/hanging_files.h"

namespace tallowmere {
namespace {

SearchCriteria criteria(const std::string& text, int type = search_phrase) {
  SearchCriteria search;
  search.criteria = text;
  search.search_type = type;
  return search;
}

std::string line_in(const std::string& text, const SearchCriteria& search) {
  static const CodePage page = CodePage::windows_1252();
  return first_hit_line(text, search, page);
}

std::string utf16(const std::string& text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : to_utf16(text)) {
    bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
  }
  return bytes;
}

TEST(HitLine, TheFirstLineWithAHitIsShortenedAroundIt) {
  EXPECT_EQ(line_in("one\r\n two\tneedle\x01\x7F three \nneedle", criteria("needle")),
            "two needle   three");
  EXPECT_EQ(line_in("needle", criteria("needle")), "needle");
  EXPECT_EQ(line_in("needle", criteria("hay")) + line_in("needle", criteria("")), "");
  const std::string x(200, 'x');
  EXPECT_EQ(line_in(x + " needle " + x, criteria("needle")),
            "…" + x.substr(0, 29) + " needle " + x.substr(0, 63) + "…");
  EXPECT_EQ(line_in(x, criteria("\"" + x.substr(0, 150) + "\"", search_and)),
            x.substr(0, 100) + "…");

  SearchCriteria near_search = criteria("needle hay", search_near);
  near_search.prox_after = 10;
  EXPECT_EQ(line_in("a needle\nb hay " + x + "\nc needle hay", near_search), "a needle");
  EXPECT_EQ(line_in("a needle\n" + x + "\nc needle hay", near_search), "c needle hay");
}

TEST(HitLine, UnicodeTextIsReadAsTheSearchReadsIt) {
  const std::string text = "été\nΩ 中😀 жук\u202E";
  SearchCriteria search = criteria("жук");
  EXPECT_EQ(line_in(text, search), "");
  search.unicode_text = true;
  EXPECT_EQ(line_in(text, search), "Ω 中😀 жук");
  EXPECT_EQ(line_in("\xEF\xBB\xBF" + text + "\xFF", search), "Ω 中😀 жук ÿ");
  EXPECT_EQ(line_in(utf16("x\r\n😀жук"), criteria("жук")), "");
  search.criteria = "\"жук\"";
  search.search_type = search_or;
  EXPECT_EQ(line_in(utf16("x\r\n😀жук\r\ny"), search), "😀жук");
  std::string pairs;
  for (int i = 0; i < 99; ++i) pairs += "😀";
  const std::string line = line_in("x" + pairs + "жук" + pairs, search);
  EXPECT_TRUE(is_well_formed_utf8(line)) << line;
  EXPECT_TRUE(line.starts_with("…😀") && line.ends_with("😀…")) << line;
  EXPECT_EQ(line_in("\x80 \xE9t\xE9", criteria("\xC3\xA9t\xC3\xA9")), "€ été");
}

TEST(HitLineReader, AHangingDiskIsLeftToItsThread) {
  const CodePage page = CodePage::windows_1252();
  HangingFiles files;
  files.add("/d/a", "a needle");
  files.add("/d/b", std::string(2 << 20, ' ') + "needle");
  HitLineReader reader(files, page, std::chrono::hours(1));
  EXPECT_EQ(reader.line_of("/d/", "a", criteria("needle")), "a needle");
  EXPECT_EQ(reader.line_of("/d/", "b", criteria("needle")), "") << "too far down";
  EXPECT_EQ(reader.line_of("/d/", "gone", criteria("needle")), "");
  const int opened = files.opened;
  EXPECT_EQ(reader.line_of("/d/", "a", criteria("")), "");
  EXPECT_EQ(files.opened, opened);

  HitLineReader hasty(files, page, std::chrono::milliseconds(1));
  for (const auto call : {HangingFiles::Call::open, HangingFiles::Call::read}) {
    files.hang_next(call);
    EXPECT_EQ(hasty.line_of("/d/", "a", criteria("needle")), "");
    files.wait_for_hang();
    EXPECT_EQ(hasty.line_of("/d/", "a", criteria("needle")), "");
    EXPECT_EQ(files.hanging(), 1) << "no other thread was begun";
    files.release();
    while (hasty.line_of("/d/", "a", criteria("needle")) != "a needle") {
    }
  }
}

}  // namespace
}  // namespace tallowmere
