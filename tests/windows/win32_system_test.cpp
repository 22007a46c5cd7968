#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "engine/unicode.h"
#include "win32/ansi_code_page.h"
#include "win32/long_path.h"
#include "win32/text.h"
#include "win32/win_clock.h"

namespace tallowmere::win32 {
namespace {

TEST(LongPath, FormsOfPaths) {
  const std::string here = narrow(std::filesystem::current_path().wstring());
  const std::string below = here.size() > 3 ? here + "\\" : here;
  const std::pair<std::string, std::string> forms[] = {
      {"C:/docs/./a/../b./", "C:\\docs\\b.\\"},
      {"C:\\..\\..\\a\\", "C:\\a\\"},
      {"\\\\server\\share\\a\\", "UNC\\server\\share\\a\\"},
      {"\\\\?\\C:\\x.", "C:\\x."},
      {"sub.\\", below + "sub.\\"},
      {"\\top\\", here.substr(0, 3) + "top\\"}};
  for (const auto& [path, form] : forms) EXPECT_EQ(to_utf8(long_path(path)), "\\\\?\\" + form);
}

TEST(AnsiCodePage, IsTheBuiltInOneOnAWesternSystem) {
  if (GetACP() != 1252) GTEST_SKIP() << "code page " << GetACP();
  const CodePage ours = CodePage::windows_1252();
  const CodePage system = ansi_code_page();
  for (int byte = 0; byte < 256; ++byte) {
    const auto value = static_cast<unsigned char>(byte);
    EXPECT_EQ(system.to_unicode(value), ours.to_unicode(value)) << byte;
    EXPECT_EQ(system.lower(value), ours.lower(value)) << byte;
  }
}

TEST(WinClock, DaysBeginAtLocalMidnight) {
  const WinClock clock;
  for (const Date& day : {Date{1980, 1, 1}, Date{2024, 2, 29}, Date{2024, 7, 1}}) {
    EXPECT_EQ(clock.to_local(clock.start_of_day(day)), (DateTime{day, 0, 0, 0}));
  }
  EXPECT_LT(clock.start_of_day({-5000000, 1, 1}), clock.start_of_day({1980, 1, 1}));
  EXPECT_GT(clock.start_of_day({40000, 1, 1}), clock.start_of_day({3000, 1, 1}));
}

}  // namespace
}  // namespace tallowmere::win32
