#include "files/file_names.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include "files/file_command_texts.h"

namespace tallowmere {
namespace {

TEST(FileNames, WhatCannotBeAName) {
  const std::string emoji = "\xF0\x9F\x98\x80";  // two units each
  std::string longest;
  for (int i = 0; i < 127; ++i) longest += emoji;
  for (const std::string& good :
       {std::string("a"), std::string(".profile"), std::string("read me.txt"),
        std::string("console.txt"), std::string("com0"), std::string("com12.txt"),
        std::string("r\xC3\xA9sum\xC3\xA9 & 100% #1;.txt"), longest + "x"}) {
    EXPECT_EQ(name_fault(good), "") << good;
  }
  const std::pair<std::string, std::string> bad[] = {{"", "Type a name"},
                                                     {"a/b", "any of the characters"},
                                                     {"what?", "any of the char"},
                                                     {"a\tb", "control"},
                                                     {"a.txt.", "end with"},
                                                     {"a ", "end with"},
                                                     {"..", "end with"},
                                                     {"Con", "\"Con\" for a device"},
                                                     {"nul .tar.gz", "device"},
                                                     {"LPT9", "device"},
                                                     {"com\xC2\xB2.txt", "device"},
                                                     {longest + "xy", "longer"},
                                                     {std::string(300, 'n'), "longer than 255"}};
  for (const auto& [name, fault] : bad) {
    EXPECT_NE(name_fault(name).find(fault), std::string::npos) << name << ": " << name_fault(name);
  }
}

TEST(FileNames, TypedFolders) {
  const std::tuple<const char*, const char*, const char*> folders[] = {
      {"C:\\docs", "", "C:\\docs\\"},
      {"C:\\", " new folder ", "C:\\new folder\\"},
      {"C:\\docs\\", "a/b\\\\c\\", "C:\\docs\\a\\b\\c\\"},
      {"C:\\docs", "d:\\x", "d:\\x\\"},
      {"C:\\docs", "D:", "D:\\"},
      {"C:\\docs", "\\x", "C:\\x\\"},
      {"\\\\server\\share\\docs", "\\x", "\\\\server\\share\\x\\"},
      {"C:\\docs", "//server/share/x", "\\\\server\\share\\x\\"}};
  for (const auto& [open, text, path] : folders) {
    const TypedFolder folder = typed_folder(open, text, '\\');
    EXPECT_EQ(folder.path, path) << text;
    EXPECT_EQ(folder.fault, "") << text;
  }
  for (const char* text : {"..\\x", "a\\con", "D:x", "a\\b*", "x.\\y"}) {
    EXPECT_NE(typed_folder("C:\\docs", text, '\\').fault, "") << text;
  }
  for (const char* text : {"", "x", "\\x"})
    EXPECT_NE(typed_folder("", text, '\\').fault, "") << text;
}

TEST(FileCommandTexts, Failures) {
  BatchOutcome outcome;
  outcome.selected = 40;
  EXPECT_EQ(failure_text(FileCommand::copy, outcome), "");
  outcome.faults.push_back({"C:\\a", "Access denied"});
  EXPECT_EQ(failure_text(FileCommand::rename, outcome),
            "Access denied - encountered while trying to RENAME C:\\a");
  outcome.faults.push_back({"C:\\b", "Not found"});
  EXPECT_EQ(failure_text(FileCommand::move, outcome),
            "2 of 40 files could not be moved:\n\nC:\\a: Access denied\nC:\\b: Not found");
  outcome.faults.resize(12, {"C:\\c", "Not found"});
  EXPECT_TRUE(failure_text(FileCommand::erase, outcome).ends_with("C:\\c: Not found\nand 2 more"));
  EXPECT_EQ(failure_title(FileCommand::erase), "Cannot Delete File");
}

TEST(FileCommandTexts, DeletingNamesTheFilesAndWhereTheyGo) {
  const SelectedFiles one{"a.txt", "C:\\docs\\", 1};
  const SelectedFiles many{"a.txt", "C:\\docs\\", 12};
  EXPECT_EQ(delete_question(one, 0),
            "Delete \"C:\\docs\\a.txt\" from Disk?\n\nIt goes to the Recycle Bin.");
  EXPECT_NE(delete_question(one, 1).find("gone for good"), std::string::npos);
  EXPECT_EQ(delete_question(many, 1),
            "Delete 12 files from Disk?\n\nThere is no Recycle Bin for 1 of them: it will be gone "
            "for good.");
  EXPECT_NE(delete_question(many, 12).find("for them: they will"), std::string::npos);
  EXPECT_EQ(remove_question(many), "Remove 12 files from the List?\n\nThe files stay on the Disk.");
}

}  // namespace
}  // namespace tallowmere
