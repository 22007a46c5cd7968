#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/unicode.h"
#include "win32/ansi_code_page.h"
#include "win32/long_path.h"
#include "win32/system_error.h"
#include "win32/win_clock.h"
#include "win32/win_file_system.h"

namespace tallowmere::win32 {
namespace {

class WinFilesTest : public ::testing::Test {
 protected:
  WinFilesTest() {
    wchar_t temporary[MAX_PATH];
    GetTempPathW(MAX_PATH, temporary);
    top = to_utf8(reinterpret_cast<const char16_t*>(temporary)) + "files-" +
          std::to_string(GetTickCount64()) + "\\";
    make_folder(top);
  }

  ~WinFilesTest() override {
    file->close();  // a folder with an open file in it could not be removed
    for (auto path = made_.rbegin(); path != made_.rend(); ++path) {
      if (!DeleteFileW(wide(*path))) RemoveDirectoryW(wide(*path));
    }
  }

  void make_folder(const std::string& folder) {
    made_.push_back(long_path(folder));
    ASSERT_TRUE(CreateDirectoryW(wide(made_.back()), nullptr)) << folder;
  }

  void write(const std::string& folder, const std::string& name, DWORD attributes = 0) {
    made_.push_back(long_path(folder + name));
    const HANDLE made =
        CreateFileW(wide(made_.back()), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr);
    ASSERT_NE(made, INVALID_HANDLE_VALUE) << name;
    DWORD written = 0;
    WriteFile(made, "text", 4, &written, nullptr);
    CloseHandle(made);
  }

  std::string listed(const std::string& folder) {
    FolderListing listing;
    const auto error = files.list_folder(folder, listing, [] { return true; });
    if (error) return "error " + std::to_string(error->code);
    std::string line;
    for (std::size_t i = 0; i < listing.file_count(); ++i)
      line.append(listing.file(i).name).append("|");
    for (std::size_t i = 0; i < listing.folder_count(); ++i)
      line.append(listing.folder(i)).append("\\|");
    return line;
  }

  std::string read_all(const std::string& folder, const std::string& name) {
    if (const auto error = file->open(folder, name)) return "error " + std::to_string(error->code);
    unsigned char block[100];
    std::size_t got = 0;
    const auto error = file->read(block, sizeof block, got);
    file->close();
    return error ? error->text : std::string(block, block + got);
  }

  WinFileSystem files;
  std::unique_ptr<FileReader> file = files.reader();
  std::string top;

 private:
  std::vector<std::u16string> made_;
};

TEST_F(WinFilesTest, ListsOrdinaryFilesAndFolders) {
  write(top, "a.txt");
  write(top, "hidden.txt", FILE_ATTRIBUTE_HIDDEN);
  write(top, "system.txt", FILE_ATTRIBUTE_SYSTEM);
  write(top, "\xE4\xB8\xAD\xF0\x9F\x98\x80.txt");
  make_folder(top + "sub\\");
  make_folder(top + "veiled\\");
  SetFileAttributesW(wide(long_path(top + "veiled")), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(listed(top), "a.txt|\xE4\xB8\xAD\xF0\x9F\x98\x80.txt|sub\\|");
  // The folder that the user names is searched, hidden or not.
  write(top + "veiled\\", "b.txt");
  EXPECT_EQ(listed(top + "veiled\\"), "b.txt|");
  EXPECT_EQ(listed(top + "nowhere\\"), "error 3");

  FolderListing listing;
  ASSERT_FALSE(files.list_folder(top, listing, [] { return true; }));
  EXPECT_TRUE(listing.file(0).facts_known);
  EXPECT_EQ(listing.file(0).facts.size, 4);
  FileFacts facts;
  ASSERT_FALSE(files.facts(top, "a.txt", facts));
  EXPECT_EQ(facts.modified, listing.file(0).facts.modified);
  EXPECT_EQ(WinClock().to_local(facts.modified).date, WinClock().today());
}

TEST_F(WinFilesTest, UnusualNamesAndLongPaths) {
  std::string folder = top;
  for (int i = 0; i < 10; ++i) {
    folder += std::string(100, static_cast<char>('a' + i)) + "\\";
    make_folder(folder);
  }
  ASSERT_GT(folder.size(), 1000u);
  write(folder, std::string(250, 'n') + ".txt");
  EXPECT_EQ(listed(folder), std::string(250, 'n') + ".txt|");
  EXPECT_EQ(read_all(folder, std::string(250, 'n') + ".txt"), "text");
}

TEST_F(WinFilesTest, TroubleIsToldByTheSystemsCode) {
  write(top, "locked.txt");
  const HANDLE lock = CreateFileW(wide(long_path(top + "locked.txt")), GENERIC_READ | GENERIC_WRITE,
                                  0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(read_all(top, "locked.txt"), "error 32");
  CloseHandle(lock);
  EXPECT_EQ(read_all(top, "locked.txt"), "text");
  EXPECT_EQ(read_all(top, "gone.txt"), "error 2");
  const std::string text = system_error(ERROR_FILE_NOT_FOUND).text;
  ASSERT_FALSE(text.empty());
  EXPECT_EQ(text.find_last_of(".\n"), std::string::npos);
}

TEST_F(WinFilesTest, WhatIsBeingReadCanBeRenamedAndDeleted) {
  write(top, "a.txt");
  ASSERT_FALSE(file->open(top, "a.txt"));
  const std::u16string other = long_path(top + "b.txt");
  EXPECT_TRUE(MoveFileW(wide(long_path(top + "a.txt")), wide(other)));
  EXPECT_TRUE(DeleteFileW(wide(other)));
  unsigned char block[10];
  std::size_t got = 0;
  EXPECT_FALSE(file->read(block, sizeof block, got));
  EXPECT_EQ(got, 4u);
}

TEST(LongPath, FormsOfPaths) {
  wchar_t current[MAX_PATH];
  GetCurrentDirectoryW(MAX_PATH, current);
  const std::string here = to_utf8(reinterpret_cast<const char16_t*>(current));
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
