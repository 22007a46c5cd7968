#include "files/file_names.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "files/file_command_texts.h"
#include "files/folder_lookup.h"
#include "files/folder_tree.h"
#include "tests/support/memory_files.h"

namespace tallowmere {
namespace {

using namespace std::string_literals;
using Row = std::pair<std::string, std::string>;

TEST(FileNames, WhatCannotBeAName) {
  std::string longest = "x";
  for (int i = 0; i < 127; ++i) longest += "😀";  // two units each
  const std::string good[] = {".profile",  "console.txt",           "com0",
                              "com12.txt", "résumé & 100% #1;.txt", longest};
  for (const std::string& name : good) EXPECT_EQ(name_fault(name), "") << name;
  const Row bad[] = {{"", "Type a name"},       {"a/b", "any of the"},
                     {"what?", "any of the"},   {"a\tb", "control"},
                     {"a\x7F", "control"},      {"a.txt.", "end with"},
                     {"a ", "end with"},        {"Con", "\"Con\" for a device"},
                     {"nul .tar.gz", "device"}, {"LPT9", "device"},
                     {"com².txt", "device"},    {longest + "y", "than 255"}};
  for (const auto& [name, fault] : bad) {
    EXPECT_NE(name_fault(name).find(fault), std::string::npos) << name << ": " << name_fault(name);
  }
}

TEST(FileNames, TypedFolders) {
  const auto typed = [](const char* open, const char* text) {
    const TypedFolder folder = typed_folder(open, text, '\\');
    return folder.fault.empty() ? folder.path : "fault";
  };
  const Row in_docs[] = {{"", "C:\\docs\\"},
                         {" new folder ", "C:\\docs\\new folder\\"},
                         {"a/b\\\\c\\", "C:\\docs\\a\\b\\c\\"},
                         {"d:\\x", "d:\\x\\"},
                         {"D:", "D:\\"},
                         {"\\x", "C:\\x\\"},
                         {"//server/x", "\\\\server\\x\\"},
                         {"a\\con\\b", "fault"},
                         {"D:x", "fault"}};
  for (const auto& [text, path] : in_docs) EXPECT_EQ(typed("C:\\docs", text.c_str()), path) << text;
  EXPECT_EQ(typed("\\\\server\\share\\docs\\", "\\x"), "\\\\server\\share\\x\\");
  for (const char* text : {"", "x", "\\x"}) EXPECT_EQ(typed("", text), "fault") << text;
}

std::string drawn(const std::vector<FolderRow>& rows) {
  std::string text;
  for (const FolderRow& row : rows) {
    text += std::string(row.depth, ' ') + "^*-"[static_cast<int>(row.kind)] + row.name + "=" +
            row.path + "\n";
  }
  return text;
}

TEST(FolderTree, Ancestry) {
  EXPECT_EQ(drawn(folder_ancestry("C:\\a\\b\\", '\\')),
            "^C:\\=C:\\\n ^a=C:\\a\\\n  *b=C:\\a\\b\\\n");
  EXPECT_EQ(drawn(folder_ancestry("\\\\server\\share\\x\\", '\\')),
            "^\\\\server\\share\\=\\\\server\\share\\\n *x=\\\\server\\share\\x\\\n");
  for (const char* odd : {"", "\\\\", "\\\\server", "C:", "C:\\", "x", "\\"}) {
    EXPECT_EQ(drawn(folder_ancestry(odd, '\\')), std::string("*") + odd + "=" + odd + "\n");
  }
}

TEST(FolderTree, OpensAFolderAndKeepsItOnFailure) {
  MemoryFiles files;
  for (const char* name : {"beta/f", "Alpha/f", "file"}) files.add("/top/in/"s + name, "");
  files.folder_errors["/gone/"] = {3, "Path not found"};
  FolderTree tree;
  const auto go_on = [] { return true; };
  EXPECT_EQ(tree.open_row(), -1);
  ASSERT_FALSE(tree.open(files, "/top/in", go_on));
  EXPECT_TRUE(tree.open(files, "/gone", go_on));
  EXPECT_EQ(tree.path(), "/top/in/");
  EXPECT_EQ(tree.open_row(), 2);
  EXPECT_EQ(drawn(tree.rows()),
            "^/=/\n ^top=/top/\n  *in=/top/in/\n   -Alpha=/top/in/Alpha/\n"
            "   -beta=/top/in/beta/\n");
}

TEST(FolderLookup, TakesTheFolderOfAFileAndFallsBack) {
  MemoryFiles files;
  files.add("/top/in/file", "");
  for (const char* gone : {"/gone/", "/top/in/file/", "/top/in/gone/"}) {
    files.folder_errors[gone] = {3, gone};
  }
  const auto go_on = [] { return true; };
  const auto typed = [&](const std::string& path) {
    const FolderLookup lookup = look_up_typed(files, path, go_on);
    return lookup.error ? lookup.error->text : lookup.tree.path();
  };
  EXPECT_EQ(typed("/top/in") + typed("/top/in/file"), "/top/in//top/in/");
  EXPECT_EQ(typed("/top/in/gone") + typed("/gone"), "/top/in/gone//gone/") << "not their parents";
  files.folder_errors["\\\\server\\share/"] = {53, "Away"};
  const auto saved = [&](const char* path) {
    return look_up_saved(files, path, "/top", go_on).tree.path();
  };
  EXPECT_EQ(saved("/top/in") + saved("/gone") + saved(""), "/top/in//top//top/");
  EXPECT_EQ(saved("\\\\server\\share"), "\\\\server\\share/") << "stays";
}

TEST(FileCommandTexts, FailuresAndQuestions) {
  BatchOutcome outcome;
  outcome.selected = 40;
  outcome.faults.assign(1, {"C:\\a", "Access denied"});
  EXPECT_EQ(failure_text(FileCommand::rename, outcome),
            "Access denied - encountered while trying to RENAME C:\\a");
  outcome.faults.resize(12, {"C:\\c", "Not found"});
  const std::string text = failure_text(FileCommand::move, outcome);
  EXPECT_TRUE(text.starts_with("12 of 40 files could not be moved:\n\nC:\\a: Access denied\n") &&
              text.ends_with("C:\\c: Not found\nand 2 more"))
      << text;

  const SelectedFiles one{"a.txt", "C:\\docs\\", 1}, many{"a.txt", "C:\\docs\\", 12};
  EXPECT_EQ(delete_question(one, 0),
            "Delete \"C:\\docs\\a.txt\" from Disk?\n\nIt will be moved to the Recycle Bin.");
  EXPECT_TRUE(remove_question(one).ends_with("The file stays on the Disk."));
  EXPECT_TRUE(delete_question(many, 1).ends_with(
      "for 1 of them: it will be deleted permanently. The others will be moved to the Recycle "
      "Bin."));
  for (const auto& [files, lost] : {std::pair{one, 1}, {many, 12}}) {
    EXPECT_TRUE(delete_question(files, lost).ends_with("will be deleted permanently.")) << lost;
  }
}

}  // namespace
}  // namespace tallowmere
