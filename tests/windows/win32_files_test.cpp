#include "win32/file_operations.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "engine/letter_case.h"
#include "engine/unicode.h"
#include "tests/windows/temp_folder.h"
#include "win32/long_path.h"
#include "win32/system_error.h"
#include "win32/text.h"
#include "win32/text_file.h"
#include "win32/win_clock.h"
#include "win32/win_file_system.h"

namespace tallowmere::win32 {
namespace {

using Result = WinFileOperations::Result;

class FileOperationsTest : public testing::Test {
 protected:
  static int code(const Result& error) { return error ? error->code : 0; }
  int put(bool moving, const std::string& from, const std::string& to, const Replace& replace) {
    return code(moving ? files.move(folder.path(from), folder.path(to), replace, on_progress)
                       : files.copy(folder.path(from), folder.path(to), replace, on_progress));
  }
  int copy(const std::string& from, const std::string& to, bool replace = false) {
    return put(false, from, to, {replace});
  }
  int move(const std::string& from, const std::string& to, bool replace = false) {
    return put(true, from, to, {replace});
  }
  int rename(const std::string& from, const std::string& to) {
    return code(files.rename(folder.path(from), folder.path(to)));
  }
  int remove(const std::string& name, bool recycle) {
    return code(files.remove(folder.path(name), recycle));
  }
  int create_folder(const std::string& name) {
    return code(files.create_folder(folder.path(name)));
  }

  TempFolder folder;
  WinFileOperations files{nullptr};
  FileOperations::Progress on_progress = [](std::int64_t, std::int64_t) { return true; };
};

TEST_F(FileOperationsTest, CopiesMovesAndReplaces) {
  const std::string unusual = "\xE4\xB8\xAD\xF0\x9F\x98\x80 100% & more.txt";
  folder.write("a", "first");
  folder.write(unusual, "second", FILE_ATTRIBUTE_READONLY);
  folder.make_folder("to");
  EXPECT_EQ(copy("a", "to\\a"), 0);
  EXPECT_EQ(copy(unusual, "to\\" + unusual), 0);
  EXPECT_EQ(folder.read("a") + folder.read("to\\a") + folder.read("to\\" + unusual),
            "firstfirstsecond");
  EXPECT_EQ(copy(unusual, "to\\a", true), 0);
  EXPECT_EQ(folder.read("to\\a"), "second");
  SetFileAttributesW(folder.native("to\\a").c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(move("a", "to\\a", true), 0);
  EXPECT_EQ(folder.read("to\\a") + folder.read("a"), "first-");
  EXPECT_EQ(move(unusual, "to\\new"), 0);
  EXPECT_EQ(folder.names(), "to|");
  EXPECT_EQ(folder.names("to\\"), "a|new|" + unusual + "|");
}

TEST_F(FileOperationsTest, WhatIsInTheWayStaysAsItWas) {
  for (const char* name : {"new", "old", "locked"}) folder.write(name, name);
  folder.write("read-only", "kept", FILE_ATTRIBUTE_READONLY);
  folder.make_folder("folder");
  ASSERT_TRUE(
      CreateHardLinkW(folder.native("same").c_str(), folder.native("new").c_str(), nullptr));
  const std::string before = folder.names();
  {
    const FileLock lock(folder, "locked");
    for (const bool moving : {false, true}) {
      const auto fault = [&](const std::string& to) { return put(moving, "new", to, {true}); };
      EXPECT_EQ(put(moving, "new", "old", {}), ERROR_FILE_EXISTS);
      EXPECT_EQ(fault("read-only"), ERROR_ACCESS_DENIED);
      EXPECT_EQ(fault("locked"), ERROR_SHARING_VIOLATION);
      EXPECT_EQ(fault("folder"), ERROR_ALREADY_EXISTS);
      EXPECT_EQ(fault("same"), ERROR_ALREADY_EXISTS);
      EXPECT_EQ(fault("nowhere\\x"), ERROR_PATH_NOT_FOUND);
      EXPECT_EQ(put(moving, "gone", "x", {}), ERROR_FILE_NOT_FOUND);
      EXPECT_EQ(put(moving, "locked", "x", {}), ERROR_SHARING_VIOLATION);
      EXPECT_EQ(put(moving, "folder", "x", {}), ERROR_DIRECTORY);
    }
  }
  EXPECT_EQ(folder.names(), before);
  EXPECT_EQ(
      folder.read("old") + folder.read("read-only") + folder.read("locked") + folder.read("new"),
      "oldkeptlockednew");
}

TEST_F(FileOperationsTest, ATextIsSavedWhollyOrNotAtAll) {
  const auto save = [this](const std::string& name, const std::string& text) {
    return code(write_text_file(folder.path(name), text));
  };
  folder.write("old", "longer than what is saved");
  folder.write("locked", "kept");
  {
    const FileLock lock(folder, "locked");
    EXPECT_EQ(save("old", "ü"), 0);
    EXPECT_EQ(save("new", ""), 0);
    EXPECT_EQ(save("locked", "lost"), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(save("nowhere\\x", "lost"), ERROR_PATH_NOT_FOUND);
  }
  EXPECT_EQ(folder.read("old") + folder.read("new"), "\xEF\xBB\xBFü\xEF\xBB\xBF");
  EXPECT_EQ(folder.names() + folder.read("locked"), "locked|new|old|kept");
}

TEST_F(FileOperationsTest, OnlyTheFileThatWasSeenIsReplaced) {
  FileFacts seen;
  folder.write("new", "new");
  folder.write("old", "old");
  ASSERT_EQ(code(files.facts(folder.path("old"), seen)), 0);
  folder.write("old", "other");
  for (const bool moving : {false, true}) {
    EXPECT_EQ(put(moving, "new", "old", {true, seen}), FileOperations::in_the_way);
  }
  EXPECT_EQ(folder.read("old"), "other");

  files.facts(folder.path("old"), seen);
  EXPECT_EQ(put(false, "new", "old", {true, seen}), 0) << "it is the same";
  files.facts(folder.path("old"), seen);
  on_progress = [&](std::int64_t, std::int64_t) {
    folder.write("old", "changed while it was copied");
    return true;
  };
  EXPECT_EQ(put(false, "new", "old", {true, seen}), FileOperations::in_the_way);
  EXPECT_EQ(folder.read("old"), "changed while it was copied");
  EXPECT_EQ(folder.names(), "new|old|");
  EXPECT_EQ(code(files.facts(folder.path(""), seen)), ERROR_DIRECTORY);
}

// The key has the capitals that the system compares names by.
TEST(NameKey, JoinsWhatTheSystemJoins) {
  const auto equal = [](wchar_t a, wchar_t b) {
    return CompareStringOrdinal(&a, 1, &b, 1, TRUE) == CSTR_EQUAL;
  };
  const auto key = [](wchar_t unit) { return name_key(narrow({&unit, 1})); };
  std::size_t joined = 0;
  for (unsigned unit = 1; unit < 0x10000; ++unit) {
    const auto letter = static_cast<wchar_t>(unit);
    wchar_t others[] = {wide(key(letter))[0], letter, letter};
    CharUpperBuffW(&others[1], 1);
    CharLowerBuffW(&others[2], 1);
    for (const wchar_t other : others) {
      EXPECT_EQ(key(letter) == key(other), equal(letter, other)) << std::hex << unit;
      joined += other != letter && equal(letter, other) ? 1 : 0;
    }
  }
  EXPECT_GT(joined, 2000u);
}

TEST_F(FileOperationsTest, AnEndInTheMiddleLeavesNothingBehind) {
  constexpr std::int64_t size = 8 << 20;
  folder.write("big", std::string(size, 'x'));
  folder.write("old", "old");
  for (const bool replace : {false, true}) {
    std::int64_t seen = 0;
    on_progress = [&](std::int64_t done, std::int64_t total) {
      EXPECT_EQ(total, size);
      return (seen = done) < size / 2;  // not every system asks before the whole is copied
    };
    EXPECT_NE(copy("big", replace ? "old" : "new", replace), 0);
    EXPECT_GE(seen, size / 2);
    on_progress = [](std::int64_t, std::int64_t) -> bool { throw 1; };
    EXPECT_THROW(copy("big", replace ? "old" : "new", replace), int);
    EXPECT_EQ(folder.names() + folder.read("old"), "big|old|old");
  }
}

TEST_F(FileOperationsTest, PathsBeyondTheOldLimit) {
  std::string deep;
  for (int i = 0; i < 5; ++i) deep += std::string(100, static_cast<char>('a' + i)) + "\\";
  ASSERT_EQ(create_folder(deep), 0);
  const std::string name = std::string(250, 'n') + ".txt";
  folder.write("a", "text");
  EXPECT_EQ(copy("a", deep + name), 0);
  EXPECT_EQ(copy("a", deep + name, true), 0);
  EXPECT_FALSE(files.can_recycle(folder.path(deep + name))) << "the shell cannot reach it";
  EXPECT_EQ(rename(deep + name, deep + "b"), 0);
  EXPECT_EQ(move(deep + "b", "b"), 0);
  EXPECT_EQ(folder.read("b"), "text");
  EXPECT_EQ(move("b", deep + "b"), 0);
  EXPECT_EQ(remove(deep + "b", false), 0);
  EXPECT_EQ(folder.names(deep), "");
}

TEST_F(FileOperationsTest, Renames) {
  folder.write("a.txt", "a");
  folder.write("b.txt", "b");
  EXPECT_EQ(rename("a.txt", "A.TXT"), 0) << "the case alone";
  const std::string names = folder.names();
  EXPECT_EQ(folder.read("A.TXT"), "a");
  EXPECT_EQ(rename("A.TXT", "b.txt"), ERROR_ALREADY_EXISTS);
  EXPECT_NE(rename("b.txt", std::string(300, 'n')), 0);
  EXPECT_NE(rename("b.txt", "what?"), 0);
  EXPECT_EQ(rename("gone.txt", "c.txt"), ERROR_FILE_NOT_FOUND);
  const FileLock lock(folder, "b.txt");
  EXPECT_EQ(rename("b.txt", "c.txt"), ERROR_SHARING_VIOLATION);
  EXPECT_EQ(folder.names(), names);
}

TEST_F(FileOperationsTest, DeletesForGoodOrIntoTheBin) {
  folder.write("a", "");
  folder.write("read-only", "", FILE_ATTRIBUTE_READONLY);
  folder.write("locked", "");
  folder.make_folder("folder");
  EXPECT_EQ(remove("a", false), 0);
  EXPECT_EQ(remove("read-only", false), ERROR_ACCESS_DENIED);
  {
    const FileLock lock(folder, "locked");
    for (const bool recycle : {false, true}) {
      EXPECT_EQ(remove("gone", recycle), ERROR_FILE_NOT_FOUND);
      EXPECT_EQ(remove("locked", recycle), ERROR_SHARING_VIOLATION);
      EXPECT_EQ(remove("folder", recycle), ERROR_DIRECTORY);
    }
  }
  EXPECT_EQ(folder.names(), "folder|locked|read-only|");

  EXPECT_FALSE(files.can_recycle(folder.path("locked."))) << "the shell would take another file";
  EXPECT_FALSE(files.can_recycle("\\\\server\\share\\a"));
  EXPECT_NE(recycling_flags & FOF_NO_CONNECTED_ELEMENTS, 0) << "not every system heeds it below";
  if (!files.can_recycle(folder.path("locked"))) GTEST_SKIP() << "no Recycle Bin here";
  folder.write("page.htm", "");
  folder.make_folder("page_files");
  EXPECT_EQ(remove("page.htm", true), 0);
  EXPECT_EQ(folder.names(), "folder|locked|page_files|read-only|");
}

TEST_F(FileOperationsTest, MakesFoldersOrNone) {
  folder.write("file", "");
  EXPECT_EQ(create_folder("a\\b\\"), 0);
  EXPECT_EQ(create_folder("a\\b\\c\\"), 0);
  EXPECT_EQ(create_folder("a\\"), 0);
  EXPECT_EQ(folder.names("a\\b\\"), "c|");
  EXPECT_EQ(create_folder("file\\x\\"), ERROR_DIRECTORY);
  EXPECT_NE(create_folder("new\\" + std::string(300, 'n') + "\\"), 0);
  EXPECT_EQ(folder.names(), "a|file|");
}

TEST_F(FileOperationsTest, MovesAcrossVolumes) {
  const std::string volume = "Z:\\dev\\shm\\";
  if (GetFileAttributesW(wide(volume).c_str()) == INVALID_FILE_ATTRIBUTES) GTEST_SKIP() << volume;
  const TempFolder other(volume);
  folder.write("a", "text", FILE_ATTRIBUTE_READONLY);
  if (MoveFileExW(folder.native("a").c_str(), other.native("a").c_str(), 0))
    GTEST_SKIP() << "one volume only";
  folder.write("locked", "held");
  folder.write("big", std::string(8 << 20, 'x'));
  const auto move_over = [&](const std::string& name, bool replace) {
    return code(files.move(folder.path(name), other.path(name), {replace}, on_progress));
  };
  {
    const FileLock lock(folder, "locked");
    EXPECT_EQ(move_over("locked", false), ERROR_SHARING_VIOLATION);
  }
  EXPECT_EQ(other.names(), "");
  EXPECT_EQ(move_over("a", false), 0);
  EXPECT_EQ(other.read("a"), "text");
  other.write("locked", "old");
  EXPECT_EQ(move_over("locked", true), 0);
  EXPECT_EQ(other.read("locked"), "held");
  on_progress = [](std::int64_t done, std::int64_t) { return done < 4 << 20; };
  EXPECT_NE(move_over("big", false), 0);
  EXPECT_EQ(folder.names(), "big|");
  EXPECT_EQ(other.names(), "a|locked|");
}

class WinFilesTest : public ::testing::Test {
 protected:
  std::string listed(const std::string& folder, bool hidden = false) {
    FolderListing listing;
    listing.set_wants_hidden(hidden);
    const auto error = files.list_folder(folder, listing, [] { return true; });
    if (error) return "error " + std::to_string(error->code);
    std::string line;
    for (std::size_t i = 0; i < listing.file_count(); ++i)
      line.append(listing.file(i).name).append("|");
    for (std::size_t i = 0; i < listing.folder_count(); ++i)
      line.append(listing.folder(i)).append("\\|");
    return line;
  }
  std::string read(const std::string& name) {
    if (const auto error = file->open(top.path(), name)) {
      return "error " + std::to_string(error->code);
    }
    unsigned char block[100];
    std::size_t got = 0;
    const auto error = file->read(block, sizeof block, got);
    file->close();
    return error ? error->text : std::string(block, block + got);
  }

  TempFolder top;
  WinFileSystem files;
  std::unique_ptr<FileReader> file = files.reader();
};

TEST_F(WinFilesTest, ListsOrdinaryFilesAndFolders) {
  top.write("a.txt", "text");
  top.write("hidden.txt", "", FILE_ATTRIBUTE_HIDDEN);
  top.write("system.txt", "", FILE_ATTRIBUTE_SYSTEM);
  top.write("\u4e2d\U0001f600.txt", "");
  top.make_folder("sub");
  const std::string veiled = top.make_folder("veiled");
  SetFileAttributesW(top.native("veiled").c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(listed(top.path()), "a.txt|\u4e2d\U0001f600.txt|sub\\|");
  EXPECT_EQ(listed(top.path(), true),
            "a.txt|hidden.txt|system.txt|\u4e2d\U0001f600.txt|sub\\|veiled\\|");
  // The folder that the user names is searched, hidden or not.
  top.write("veiled\\b.txt", "");
  EXPECT_EQ(listed(veiled), "b.txt|");
  EXPECT_EQ(listed(top.path("nowhere\\")), "error 3");

  FolderListing listing;
  ASSERT_FALSE(files.list_folder(top.path(), listing, [] { return true; }));
  EXPECT_TRUE(listing.file(0).facts_known);
  EXPECT_EQ(listing.file(0).facts.size, 4);
  FileFacts facts;
  ASSERT_FALSE(files.facts(top.path(), "a.txt", facts));
  EXPECT_EQ(facts.modified, listing.file(0).facts.modified);
  EXPECT_EQ(WinClock().to_local(facts.modified).date, WinClock().today());
}

TEST_F(WinFilesTest, LongPathsAndTroubleWithItsCode) {
  std::string folder;
  for (char name = 'a'; name < 'k'; ++name) {
    folder += std::string(100, name);
    folder = top.make_folder(folder).substr(top.path().size());
  }
  const std::string name = std::string(250, 'n') + ".txt";
  top.write(folder + name, "text");
  EXPECT_EQ(listed(top.path(folder)), name + "|");
  EXPECT_EQ(read(folder + name), "text");

  top.write("locked.txt", "text");
  const FileLock lock(top, "locked.txt");
  EXPECT_EQ(read("locked.txt"), "error 32");
  EXPECT_EQ(read("gone.txt"), "error 2");
  const std::string text = system_error(ERROR_FILE_NOT_FOUND).text;
  EXPECT_TRUE(!text.empty() && text.find_last_of(".\n") == std::string::npos) << text;
}

TEST_F(WinFilesTest, WhatIsBeingReadCanBeRenamedAndDeleted) {
  top.write("a.txt", "text");
  ASSERT_FALSE(file->open(top.path(), "a.txt"));
  EXPECT_TRUE(MoveFileW(top.native("a.txt").c_str(), top.native("b.txt").c_str()));
  EXPECT_TRUE(DeleteFileW(top.native("b.txt").c_str()));
  unsigned char block[10];
  std::size_t got = 0;
  EXPECT_FALSE(file->read(block, sizeof block, got));
  EXPECT_EQ(got, 4u);
  file->close();  // its folder could not be removed
}

TEST(OnlineOnly, IsWhatReadingWouldFetch) {
  for (const auto bit : {0x00400000u, 0x00040000u, 0x1000u}) EXPECT_TRUE(is_online_only(bit));
  EXPECT_FALSE(is_online_only(~0x00441000u));  // such as what is kept here for good, or sparse
}

}  // namespace
}  // namespace tallowmere::win32
