#include "tests/journeys/journey.h"
#include "tools/driver/text.h"

namespace tallowmere::driver {
namespace {

class UnicodeText : public Journey {};

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

std::string in_utf16(std::string_view text, bool big_endian) {
  std::string bytes;
  for (const wchar_t unit : to_wide(std::string(utf8_mark) + std::string(text))) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += big_endian ? high : low;
    bytes += big_endian ? low : high;
  }
  return bytes;
}

TEST_F(UnicodeText, OneLetterInSixEncodingsIsFoundAndReadByTheLinkOfTheNote) {
  const std::string word = "Kündigung";
  const std::string letter =
      "Sehr geehrte Frau Müller,\r\ndie " + word + " vom 1. Mai 😀 – die " + word + " gilt.\r\n";
  write("a-1252.txt", "Frau M\xFCller,\r\ndie K\xFCndigung gilt, die K\xFCndigung vom 1. Mai.\r\n");
  write("b-utf8.txt", letter);
  write("c-utf8-mark.txt", std::string(utf8_mark) + letter);
  write("d-utf16.txt", in_utf16(letter, false));
  write("e-utf16-be.txt", in_utf16(letter, true));
  write("f-mixed.txt", std::string(utf8_mark) + "Müller: K\xFCndigung, " + word);
  set_folder_settings();
  const auto program = start();
  ASSERT_TRUE(program->search(phrase, word));
  EXPECT_EQ(program->list().column(0), (Names{"a-1252.txt", "f-mixed.txt"}));
  const Window note = program->control(IDC_LBLNOTE);
  EXPECT_EQ(note.text(),
            "5 Unicode files were searched byte by byte. <a id=\"0\">Read Unicode text</a>");

  program->window().command(ID_NOTELINK);
  ASSERT_TRUE(wait_until([&] { return program->list().column(0).size() == 6; }));
  ASSERT_TRUE(program->wait_for_end());
  const Window box = program->control(IDC_TEXT1);
  const std::string notes[] = {"hit 1",         "UTF-8, hit 1",  "UTF-8, hit 1",
                               "UTF-16, hit 1", "UTF-16, hit 1", "UTF-8, hit 1"};
  for (int row = 0; row < 6; ++row) {
    program->list().select(row);
    const std::string name = program->list().column(0)[static_cast<std::size_t>(row)];
    ASSERT_TRUE(wait_until([&] { return program->window().text().find(name) != name.npos; }));
    ASSERT_TRUE(wait_until([&] { return box.selected_text() == word; })) << name;
    EXPECT_NE(box.text().find("Müller"), std::string::npos) << name;
    EXPECT_TRUE(wait_until([&] { return note.text() == notes[row] + " of 2"; })) << note.text();
    const int first = box.selection_start();
    program->control(IDC_CMDFINDNEXT).click();
    EXPECT_TRUE(wait_until([&] {
      return box.selection_start() > first && box.selected_text() == word;
    })) << name;
  }
  ASSERT_TRUE(program->quit());
  EXPECT_EQ(settings().get("unicode_text"), "Y");
}

}  // namespace
}  // namespace tallowmere::driver
