#include "win32/file_operations.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "engine/letter_case.h"
#include "tests/windows/temp_folder.h"
#include "win32/text.h"

namespace tallowmere::win32 {
namespace {

using Result = WinFileOperations::Result;

class FileOperationsTest : public testing::Test {
 protected:
  static int code(const Result& error) { return error ? error->code : 0; }
  static std::string text(const Result& error) { return error ? error->text : std::string(); }
  Result copy(const std::string& from, const std::string& to, bool replace = false) {
    return files.copy(folder.path(from), folder.path(to), {replace}, on_progress);
  }
  Result move(const std::string& from, const std::string& to, bool replace = false) {
    return files.move(folder.path(from), folder.path(to), {replace}, on_progress);
  }
  Result rename(const std::string& from, const std::string& to) {
    return files.rename(folder.path(from), folder.path(to));
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
  EXPECT_EQ(text(copy("a", "to\\a")), "");
  EXPECT_EQ(text(copy(unusual, "to\\" + unusual)), "");
  EXPECT_EQ(folder.read("a") + folder.read("to\\a") + folder.read("to\\" + unusual),
            "firstfirstsecond");
  EXPECT_EQ(text(copy(unusual, "to\\a", true)), "");
  EXPECT_EQ(folder.read("to\\a"), "second");
  SetFileAttributesW(folder.native("to\\a").c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(text(move("a", "to\\a", true)), "");
  EXPECT_EQ(folder.read("to\\a") + folder.read("a"), "first-");
  EXPECT_EQ(text(move(unusual, "to\\new")), "");
  EXPECT_EQ(folder.names(), "to|");
  EXPECT_EQ(folder.names("to\\"), "a|new|" + unusual + "|");
}

TEST_F(FileOperationsTest, WhatIsInTheWayStaysAsItWas) {
  folder.write("new", "new");
  folder.write("old", "old");
  folder.write("read-only", "kept", FILE_ATTRIBUTE_READONLY);
  folder.write("locked", "held");
  folder.make_folder("folder");
  ASSERT_TRUE(
      CreateHardLinkW(folder.native("same").c_str(), folder.native("new").c_str(), nullptr));
  const std::string before = folder.names();
  {
    const FileLock lock(folder, "locked");
    for (const bool moving : {false, true}) {
      const auto transfer = [&](const std::string& to, bool replace) {
        return moving ? move("new", to, replace) : copy("new", to, replace);
      };
      EXPECT_EQ(code(transfer("old", false)), ERROR_FILE_EXISTS);
      EXPECT_EQ(text(transfer("read-only", true)), "The file to be replaced is read-only");
      EXPECT_EQ(code(transfer("locked", true)), ERROR_SHARING_VIOLATION);
      EXPECT_EQ(text(transfer("folder", true)), "A folder of the same name is in the way");
      EXPECT_EQ(text(transfer("same", true)), "The file there is this file itself");
      EXPECT_EQ(code(transfer("nowhere\\x", false)), ERROR_PATH_NOT_FOUND);
    }
  }
  EXPECT_EQ(folder.names(), before);
  EXPECT_EQ(
      folder.read("old") + folder.read("read-only") + folder.read("locked") + folder.read("new"),
      "oldkeptheldnew");
}

TEST_F(FileOperationsTest, OnlyTheFileThatWasSeenIsReplaced) {
  FileFacts seen;
  folder.write("new", "new");
  folder.write("old", "old");
  folder.make_folder("folder");
  EXPECT_EQ(code(files.facts(folder.path("folder"), seen)), ERROR_DIRECTORY);
  EXPECT_EQ(code(files.facts(folder.path("gone"), seen)), ERROR_FILE_NOT_FOUND);
  const auto change = [&](const std::string& text) {
    DeleteFileW(folder.native("old").c_str());
    folder.write("old", text);
  };
  const auto put = [&](bool moving) {
    return moving ? files.move(folder.path("new"), folder.path("old"), {true, seen}, on_progress)
                  : files.copy(folder.path("new"), folder.path("old"), {true, seen}, on_progress);
  };
  ASSERT_EQ(text(files.facts(folder.path("old"), seen)), "");
  change("other");
  for (const bool moving : {false, true}) {
    EXPECT_EQ(code(put(moving)), FileOperations::in_the_way);
  }
  EXPECT_EQ(folder.read("old"), "other");

  files.facts(folder.path("old"), seen);
  EXPECT_EQ(text(put(false)), "") << "it is the same";
  files.facts(folder.path("old"), seen);
  on_progress = [&](std::int64_t, std::int64_t) {
    change("changed while it was copied");
    return true;
  };
  EXPECT_EQ(code(put(false)), FileOperations::in_the_way);
  EXPECT_EQ(folder.read("old"), "changed while it was copied");
  EXPECT_EQ(folder.names(), "folder|new|old|");
}

TEST_F(FileOperationsTest, WhatTheProgressThrowsComesToItsCaller) {
  folder.write("big", std::string(8 << 20, 'x'));
  on_progress = [](std::int64_t, std::int64_t) -> bool { throw 1; };
  EXPECT_THROW(copy("big", "new"), int);
  EXPECT_EQ(folder.names(), "big|");
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

TEST_F(FileOperationsTest, SourcesThatCannotBeTaken) {
  folder.write("locked", "held");
  folder.make_folder("folder");
  const FileLock lock(folder, "locked");
  EXPECT_EQ(code(copy("gone", "x")), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(code(move("gone", "x")), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(code(copy("locked", "x")), ERROR_SHARING_VIOLATION);
  EXPECT_EQ(code(move("locked", "x")), ERROR_SHARING_VIOLATION);
  EXPECT_EQ(code(copy("folder", "x")), ERROR_DIRECTORY);
  EXPECT_EQ(code(move("folder", "x")), ERROR_DIRECTORY);
  EXPECT_EQ(folder.names(), "folder|locked|");
}

TEST_F(FileOperationsTest, AnEndInTheMiddleLeavesNothingBehind) {
  constexpr std::int64_t size = 8 << 20;
  folder.write("big", std::string(size, 'x'));
  folder.write("old", "old");
  std::int64_t seen = 0;
  on_progress = [&](std::int64_t done, std::int64_t total) {
    EXPECT_EQ(total, size);
    seen = done;
    return done < size / 2;  // not every system asks before the whole is copied
  };
  for (const bool replace : {false, true}) {
    EXPECT_NE(code(copy("big", replace ? "old" : "new", replace)), 0);
    EXPECT_GE(seen, size / 2);
    EXPECT_EQ(folder.names(), "big|old|");
    EXPECT_TRUE(folder.read("old") == "old");
  }
}

TEST_F(FileOperationsTest, PathsBeyondTheOldLimit) {
  std::string deep;
  for (int i = 0; i < 5; ++i) deep += std::string(100, static_cast<char>('a' + i)) + "\\";
  ASSERT_EQ(text(files.create_folder(folder.path(deep))), "");
  const std::string name = std::string(250, 'n') + ".txt";
  folder.write("a", "text");
  EXPECT_EQ(text(copy("a", deep + name)), "");
  EXPECT_EQ(text(copy("a", deep + name, true)), "");
  EXPECT_FALSE(files.can_recycle(folder.path(deep + name))) << "the shell cannot reach it";
  EXPECT_EQ(text(rename(deep + name, deep + "b")), "");
  EXPECT_EQ(text(move(deep + "b", "b")), "");
  EXPECT_EQ(folder.read("b"), "text");
  EXPECT_EQ(text(move("b", deep + "b")), "");
  EXPECT_EQ(text(files.remove(folder.path(deep + "b"), false)), "");
  EXPECT_EQ(folder.names(deep), "");
}

TEST_F(FileOperationsTest, Renames) {
  folder.write("a.txt", "a");
  folder.write("b.txt", "b");
  EXPECT_EQ(text(rename("a.txt", "A.TXT")), "") << "the case alone";
  const std::string names = folder.names();
  EXPECT_EQ(folder.read("A.TXT"), "a");
  EXPECT_EQ(code(rename("A.TXT", "b.txt")), ERROR_ALREADY_EXISTS);
  EXPECT_NE(code(rename("b.txt", std::string(300, 'n'))), 0);
  EXPECT_NE(code(rename("b.txt", "what?")), 0);
  EXPECT_EQ(code(rename("gone.txt", "c.txt")), ERROR_FILE_NOT_FOUND);
  const FileLock lock(folder, "b.txt");
  EXPECT_EQ(code(rename("b.txt", "c.txt")), ERROR_SHARING_VIOLATION);
  EXPECT_EQ(folder.names(), names);
}

TEST_F(FileOperationsTest, DeletesForGoodOrIntoTheBin) {
  folder.write("a", "");
  folder.write("read-only", "", FILE_ATTRIBUTE_READONLY);
  folder.write("locked", "");
  folder.make_folder("folder");
  EXPECT_EQ(text(files.remove(folder.path("a"), false)), "");
  EXPECT_EQ(text(files.remove(folder.path("read-only"), false)), "The file is read-only");
  {
    const FileLock lock(folder, "locked");
    for (const bool recycle : {false, true}) {
      EXPECT_EQ(code(files.remove(folder.path("gone"), recycle)), ERROR_FILE_NOT_FOUND);
      EXPECT_EQ(code(files.remove(folder.path("locked"), recycle)), ERROR_SHARING_VIOLATION);
      EXPECT_EQ(code(files.remove(folder.path("folder"), recycle)), ERROR_DIRECTORY);
    }
  }
  EXPECT_EQ(folder.names(), "folder|locked|read-only|");

  EXPECT_FALSE(files.can_recycle(folder.path("locked."))) << "the shell would take another file";
  EXPECT_FALSE(files.can_recycle("\\\\server\\share\\a"));
  EXPECT_NE(recycling_flags & FOF_NO_CONNECTED_ELEMENTS, 0) << "not every system heeds it below";
  if (!files.can_recycle(folder.path("locked"))) GTEST_SKIP() << "no Recycle Bin here";
  folder.write("page.htm", "");
  folder.make_folder("page_files");
  EXPECT_EQ(text(files.remove(folder.path("page.htm"), true)), "");
  EXPECT_EQ(folder.names(), "folder|locked|page_files|read-only|");
}

TEST_F(FileOperationsTest, MakesFoldersOrNone) {
  folder.write("file", "");
  EXPECT_EQ(text(files.create_folder(folder.path("a\\b\\"))), "");
  EXPECT_EQ(text(files.create_folder(folder.path("a\\b\\c\\"))), "");
  EXPECT_EQ(text(files.create_folder(folder.path("a\\"))), "");
  EXPECT_EQ(folder.names("a\\b\\"), "c|");
  EXPECT_EQ(text(files.create_folder(folder.path("file\\x\\"))),
            "A file of the same name is in the way");
  EXPECT_NE(code(files.create_folder(folder.path("new\\" + std::string(300, 'n') + "\\"))), 0);
  EXPECT_EQ(folder.names(), "a|file|");
}

/// A folder on another volume than the temporary one; null when there is none to write to.
std::unique_ptr<TempFolder> other_volume(const TempFolder& folder) {
  folder.write("probe", "");
  std::unique_ptr<TempFolder> found;
  for (const char* base : {"Z:\\dev\\shm\\", "D:\\", "E:\\"}) {
    const std::string target = base + std::string("tw-probe");
    if (GetFileAttributesW(wide(long_path(base))) == INVALID_FILE_ATTRIBUTES) continue;
    if (MoveFileExW(folder.native("probe").c_str(), wide(long_path(target)), 0)) {
      MoveFileExW(wide(long_path(target)), folder.native("probe").c_str(), 0);
    } else if (GetLastError() == ERROR_NOT_SAME_DEVICE) {
      found = std::make_unique<TempFolder>(base);
      break;
    }
  }
  DeleteFileW(folder.native("probe").c_str());
  return found;
}

TEST_F(FileOperationsTest, MovesAcrossVolumes) {
  const std::unique_ptr<TempFolder> other = other_volume(folder);
  if (!other) GTEST_SKIP() << "one volume only";
  folder.write("a", "text", FILE_ATTRIBUTE_READONLY);
  folder.write("locked", "held");
  folder.write("big", std::string(8 << 20, 'x'));
  const auto move_over = [&](const std::string& name, bool replace) {
    return files.move(folder.path(name), other->path(name), {replace}, on_progress);
  };
  {
    const FileLock lock(folder, "locked");
    EXPECT_EQ(code(move_over("locked", false)), ERROR_SHARING_VIOLATION);
  }
  EXPECT_EQ(other->names(), "");
  EXPECT_EQ(text(move_over("a", false)), "");
  EXPECT_EQ(other->read("a"), "text");
  other->write("locked", "old");
  EXPECT_EQ(text(move_over("locked", true)), "");
  EXPECT_EQ(other->read("locked"), "held");
  on_progress = [](std::int64_t done, std::int64_t) { return done < 4 << 20; };
  EXPECT_NE(code(move_over("big", false)), 0);
  EXPECT_EQ(folder.names(), "big|");
  EXPECT_EQ(other->names(), "a|locked|");
}

}  // namespace
}  // namespace tallowmere::win32
