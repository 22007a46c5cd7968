#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "files/folder_tree.h"
#include "shell/command_rules.h"
#include "shell/layout.h"
#include "shell/run_texts.h"

namespace tallowmere {
namespace {

TEST(Geometry, PixelsAndTwips) {
  EXPECT_EQ(to_pixels(15, 96), 1);
  EXPECT_EQ(to_pixels(7, 96), 0);
  EXPECT_EQ(to_pixels(8, 96), 1);
  EXPECT_EQ(to_pixels(-8, 96), -1);
  EXPECT_EQ(to_twips(3, 144), 30);
  EXPECT_EQ(to_pixels(std::numeric_limits<int>::max(), 480), 715827882);
  for (const int dpi : {96, 120, 144, 168, 192}) {
    for (int pixels = -50; pixels < 3000; pixels += 7) {
      ASSERT_EQ(to_pixels(to_twips(pixels, dpi), dpi), pixels) << dpi;
    }
  }
}

/// The controls from top to bottom; neighbours must not overlap.
std::vector<TwipRect> column(const MainLayout& l) {
  return {l.cmdSearch, l.Line1, l.ListView2, l.Label1, l.Label2, l.Line2, l.Text1, l.lblFileInfo};
}

std::vector<TwipRect> button_row(const MainLayout& l) {
  return {l.cmdSearch, l.cmdView,  l.cmdFindNext, l.cmdFindPrev,
          l.cmdLaunch, l.cmdHyper, l.cmdRestore,  l.cmdExit};
}

TEST(Layout, ControlsFillTheWindowWithoutOverlap) {
  for (const TwipSize outer : {main_window_minimum, main_window_design, TwipSize{30000, 20000}}) {
    // A frame of 8 pixels, a caption and a menu of 51 pixels together at 96 dpi.
    const TwipSize client{outer.width - 240, outer.height - 885};
    const MainLayout layout = layout_main_window(outer, client);
    const std::vector<TwipRect> rows = column(layout);
    for (std::size_t i = 1; i < rows.size(); ++i) {
      EXPECT_GE(rows[i].top, rows[i - 1].bottom()) << i;
    }
    EXPECT_LE(layout.lblFileInfo.bottom(), client.height);
    const std::vector<TwipRect> buttons = button_row(layout);
    for (std::size_t i = 1; i < buttons.size(); ++i) {
      EXPECT_GE(buttons[i].left, buttons[i - 1].right()) << i;
    }
    EXPECT_EQ(layout.ListView2.width, outer.width - 360);
    EXPECT_EQ(layout.VScroll1.right(), layout.ListView2.right());
    EXPECT_EQ(layout.ListView2.left, client.width - layout.ListView2.right());
    EXPECT_EQ(layout.ListView2.height, std::max<Twips>(outer.height / 4, 1650));
    EXPECT_EQ(layout.Text1.height, outer.height - layout.ListView2.height - 2580);
  }
}

TEST(Layout, ShortWindowsKeepTheListAndAStripOfTheViewer) {
  const MainLayout layout = layout_main_window({9600, 2000}, {9360, 1100});
  EXPECT_EQ(layout.ListView2.height, 1650);
  EXPECT_EQ(layout.Text1.height, 240);
  // A tall menu and frame take from the viewer, not from the row below it.
  const MainLayout tight = layout_main_window({9600, 7000}, {9360, 5500});
  EXPECT_LE(tight.lblFileInfo.bottom(), 5500);
  EXPECT_LT(tight.Text1.height, 7000 - 1750 - 2580);
}

TEST(Layout, MemoryNoticesChangesOnly) {
  LayoutMemory memory;
  EXPECT_TRUE(memory.changed({}));
  EXPECT_FALSE(memory.changed({}));
  EXPECT_TRUE(memory.changed({0, 0, 0, 1}));
  memory.forget();
  EXPECT_TRUE(memory.changed({0, 0, 0, 1}));
}

std::set<EnabledRule> enabled(const WindowState& state) {
  std::set<EnabledRule> rules;
  for (int i = 0; i <= static_cast<int>(EnabledRule::text_marked); ++i) {
    if (is_enabled(EnabledRule{i}, state)) rules.insert(EnabledRule{i});
  }
  return rules;
}

TEST(CommandRules, WhatIsEnabledWhen) {
  using enum EnabledRule;
  WindowState state;
  std::set<EnabledRule> expected{always, not_busy};
  EXPECT_EQ(enabled(state), expected);
  state.rows = 3;
  expected.insert(list_not_empty);
  EXPECT_EQ(enabled(state), expected);
  state.row_selected = true;
  expected.insert({row_selected, row_not_viewed});
  EXPECT_EQ(enabled(state), expected);
  state.row_viewed = state.viewing = true;
  expected.erase(row_not_viewed);
  expected.insert(viewing);
  for (const bool selected : {false, true}) {
    for (const int hyper_state : {0, 1, 2}) {
      state.text_selected = selected;
      state.hyper_current = hyper_state == 1;
      state.user_restored = hyper_state == 2;
      std::set<EnabledRule> with = expected;
      if (selected || hyper_state == 2) with.insert(hyper_find);
      if (hyper_state == 1) with.insert(restore_find);
      EXPECT_EQ(enabled(state), with) << selected << hyper_state;
    }
  }
  state.text_marked = true;
  EXPECT_TRUE(enabled(state).contains(text_marked));
  state.searching = true;
  EXPECT_EQ(enabled(state), (std::set{always, busy}));
  state.searching = false;
  state.finding = true;
  EXPECT_EQ(enabled(state), (std::set{always, busy}));
}

TEST(RunTexts, CountsAndTiming) {
  EXPECT_EQ(timing_text(false, elapsed_seconds(10, 10.004)), "in 0.01 seconds");
  EXPECT_EQ(timing_text(false, elapsed_seconds(86399.5, 0.5)), "in 0.01 seconds");
  EXPECT_EQ(timing_text(false, elapsed_seconds(10, 71.256)), "in 61.26 seconds");
  EXPECT_EQ(timing_text(true, 5), "Search Stopped");
  EXPECT_EQ(finished_text(3, 40), "3 file(s) matched out of 40");
  EXPECT_EQ(finished_text(0, 40), "0 file(s) matched out of 40");
  EXPECT_EQ(finished_text(0, 0), "No Files Found");
  EXPECT_EQ(selected_file_text(false), "Selected File Didn't Match");
}

TEST(RunTexts, UnreadToolTip) {
  EXPECT_EQ(unread_tool_tip({}), "");
  EXPECT_EQ(unread_tool_tip({{"/a", "Denied"}}), "1 file could not be read:\n/a: Denied");
  const std::string many = unread_tool_tip(std::vector<UnreadFile>(12, {"/a", "Denied"}));
  EXPECT_TRUE(many.starts_with("12 files could not be read:\n/a: Denied\n"));
  EXPECT_TRUE(many.ends_with("\nand 2 more"));
  EXPECT_EQ(std::count(many.begin(), many.end(), '\n'), 11);
}

std::string drawn(const std::vector<FolderRow>& rows) {
  std::string text;
  for (const FolderRow& row : rows) {
    const char* const marks = "^*-";
    text += std::string(row.depth, ' ') + marks[static_cast<int>(row.kind)] + row.name + "=" +
            row.path + "\n";
  }
  return text;
}

TEST(FolderTree, Ancestry) {
  EXPECT_EQ(drawn(folder_ancestry("C:\\", '\\')), "*C:\\=C:\\\n");
  EXPECT_EQ(drawn(folder_ancestry("C:\\a\\b\\", '\\')),
            "^C:\\=C:\\\n ^a=C:\\a\\\n  *b=C:\\a\\b\\\n");
  EXPECT_EQ(drawn(folder_ancestry("\\\\server\\share\\", '\\')),
            "*\\\\server\\share\\=\\\\server\\share\\\n");
  EXPECT_EQ(drawn(folder_ancestry("\\\\server\\share\\x\\", '\\')),
            "^\\\\server\\share\\=\\\\server\\share\\\n *x=\\\\server\\share\\x\\\n");
  EXPECT_EQ(drawn(folder_ancestry("/a//b", '/')), "^/=/\n ^a=/a/\n  *b=/a//b\n");
  for (const char* odd : {"", "\\\\", "\\\\server", "C:", "x", "\\"}) {
    EXPECT_EQ(folder_ancestry(odd, '\\').size(), 1u) << odd;
  }
}

/// One folder that can be listed.
class OneFolder : public FileSystem {
 public:
  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>&) const override {
    if (folder != with_separator("/top/in")) return SystemError{3, "Path not found"};
    for (const char* name : {"beta", "Alpha", "zeta", "Gamma"}) listing.add_folder(name);
    listing.add_file("file", nullptr);
    return std::nullopt;
  }
  std::optional<SystemError> facts(const std::string&, std::string_view,
                                   FileFacts&) const override {
    return {};
  }
  std::unique_ptr<FileReader> reader() const override { return {}; }
};

TEST(FolderTree, OpensAFolderAndKeepsItOnFailure) {
  OneFolder files;
  FolderTree tree;
  const auto go_on = [] { return true; };
  EXPECT_EQ(tree.open_row(), -1);
  ASSERT_FALSE(tree.open(files, "/top/in", go_on));
  const std::string before = drawn(tree.rows());
  EXPECT_EQ(before,
            "^/=/\n ^top=/top/\n  *in=/top/in/\n   -Alpha=/top/in/Alpha/\n"
            "   -beta=/top/in/beta/\n   -Gamma=/top/in/Gamma/\n   -zeta=/top/in/zeta/\n");
  EXPECT_EQ(tree.open_row(), 2);
  const std::optional<SystemError> error = tree.open(files, "/gone", go_on);
  ASSERT_TRUE(error);
  EXPECT_EQ(drive_not_ready_message(*error),
            "Path not found - encountered while trying to access disk.");
  EXPECT_EQ(tree.path(), "/top/in/");
  EXPECT_EQ(drawn(tree.rows()), before);
}

TEST(FolderTree, SetDirToDrive) {
  std::string path = "C:\\docs\\";
  EXPECT_EQ(set_dir_to_drive("C:\\", path, "D:\\x\\"), "C:\\docs\\");
  EXPECT_EQ(set_dir_to_drive("c:\\", path, "D:\\x\\"), "C:\\docs\\");
  EXPECT_EQ(set_dir_to_drive("D:\\", path, "D:\\x\\"), "D:\\");
  path.clear();
  EXPECT_EQ(set_dir_to_drive("D:\\", path, "D:\\x\\"), "D:\\x\\");
  EXPECT_EQ(path, "D:\\x\\");
}

}  // namespace
}  // namespace tallowmere
