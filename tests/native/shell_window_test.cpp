#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "engine/unicode.h"
#include "shell/clipboard_text.h"
#include "shell/command_rules.h"
#include "shell/folder_text.h"
#include "shell/font_sizes.h"
#include "shell/layout.h"
#include "shell/run_texts.h"
#include "shell/search_chain.h"
#include "shell/shortened_path.h"
#include "shell/start_folder.h"
#include "shell/window_note.h"

namespace tallowmere {
namespace {

TEST(Geometry, AStoredPlacementIsMended) {
  const auto place = [](const TwipRect& stored, int hidden_frame) {
    constexpr int dpi = 1440;  // a pixel is a twip
    const Screen screen{{0, 0, 15000, 11000}, dpi, hidden_frame};
    return place_on_desktop(stored, {&screen, 1}, dpi, {10000, 8000});
  };
  constexpr TwipRect centred{2500, 1500, 10000, 8000}, good{1, 3000, 14999, 600};
  EXPECT_EQ(place({}, 105), centred);
  EXPECT_EQ(place(good, 105), good);
  EXPECT_EQ(place({2, 10401, 14999, 600}, 105), (TwipRect{0, 5200, 14999, 600}));
  EXPECT_EQ(place({-5, 0, 599, 11001}, 105), centred);
  EXPECT_EQ(place({-105, 0, 5000, 11105}, 0), (TwipRect{5000, 1500, 5000, 8000}));
  constexpr Twips far = std::numeric_limits<int>::max();
  EXPECT_EQ(place({-far, far, -far, far}, 105), centred);
}

TEST(Geometry, ScreensOfSeveralResolutions) {
  const Screen screens[] = {{{0, 0, 1920, 1040}, 96, 7},
                            {{1920, -200, 2560, 1400}, 144, 11},
                            {{-1280, 300, 1280, 984}, 120, 9}};
  const auto place = [&](const PixelRect& window, int dpi, std::size_t count) {
    return place_on_desktop(stored_placement(window, dpi, 96), {screens, count}, 96,
                            main_window_design);
  };
  // A snapped window's frame reaches beyond the screen.
  for (const auto& [window, dpi] : {std::pair{PixelRect{1909, -200, 1302, 1411}, 144},
                                    {{953, 520, 974, 527}, 96},
                                    {{-700, 700, 690, 500}, 120}}) {
    EXPECT_EQ(place(window, dpi, 3), window) << window.left;
  }
  // Most of it is on the second one, in whose middle it comes back.
  EXPECT_EQ(place({1500, 100, 900, 600}, 144, 3), (PixelRect{2750, 100, 900, 600}));
  // That screen is gone: the same size as users saw it, in the middle of the first one.
  EXPECT_EQ(place({3600, 800, 900, 600}, 144, 1), (PixelRect{660, 320, 600, 400}));
}

TEST(Layout, ControlsFillTheWindowWithoutOverlap) {
  // The frame, the caption and the menu at 96 dpi; in the last one the menu has several lines.
  for (const auto& [outer, client] : {std::pair<TwipSize, TwipSize>{{9600, 6000}, {9360, 5115}},
                                      {{30000, 20000}, {29760, 19115}},
                                      {{9600, 7000}, {9360, 5500}}}) {
    const MainLayout l = layout_main_window(outer, client, 0);
    const TwipRect rows[] = {l.cmdSearch, l.Line1, l.ListView2, l.Label1,
                             l.Label2,    l.Line2, l.Text1,     l.lblFileInfo};
    const TwipRect buttons[] = {l.cmdSearch, l.cmdView,  l.cmdFindNext, l.cmdFindPrev,
                                l.cmdLaunch, l.cmdHyper, l.cmdRestore,  l.cmdExit};
    for (std::size_t i = 1; i < std::size(rows); ++i) {
      EXPECT_GE(rows[i].top, rows[i - 1].bottom()) << i;
      EXPECT_GE(buttons[i].left, buttons[i - 1].right()) << i;
    }
    EXPECT_LE(l.lblFileInfo.bottom(), client.height);
    EXPECT_GE(l.lblFileInfo.bottom(), client.height - 300) << "hardly any room is left";
    EXPECT_EQ(l.VScroll1.right(), l.ListView2.right());
    EXPECT_EQ(l.ListView2.left, client.width - l.ListView2.right());
  }
  EXPECT_EQ(layout_main_window({9600, 2000}, {9360, 1100}, 0).Text1.height, 240);
}

TEST(Layout, TheListKeepsItsShareAndLeavesTheViewerRoom) {
  constexpr TwipSize outer{10200, 7800}, small{9600, 6000}, client{9960, 6915};
  const auto height = [&](const TwipSize& window, ListShare share) {
    return layout_main_window(window, client, share).ListView2.height;
  };
  EXPECT_EQ(height(outer, 0), 7800 / 4);
  EXPECT_EQ(height(small, 0), 1650);
  for (const Twips dragged : {1650, 1951, 3000, 4020}) {
    EXPECT_EQ(height(outer, list_share(outer, dragged)), dragged);
  }
  EXPECT_EQ(height({10200, 15600}, list_share(outer, 3000)), 6000);
  for (const Twips beyond : {-100'000, 0, 1649}) {
    EXPECT_EQ(height(outer, list_share(outer, beyond)), 1650);
  }
  EXPECT_EQ(list_share(outer, 100'000), list_share(outer, 4020));
  for (const ListShare share : {1, 9999, whole_window}) {
    for (const TwipSize& window : {outer, small, TwipSize{9600, 2000}}) {
      EXPECT_GE(height(window, share), 1650);
      if (window.height < 6000) continue;
      EXPECT_GE(layout_main_window(window, window, share).Text1.height, 1200) << share;
    }
  }
}

/// A letter for each rule that allows its command.
std::string enabled(const WindowState& state) {
  const std::string letters = "ANBLSDVHRM";
  std::string text;
  for (int i = 0; i < std::ssize(letters); ++i) {
    if (is_enabled(EnabledRule{i}, state)) text += letters[i];
  }
  return text;
}

TEST(CommandRules, WhatIsEnabledWhen) {
  EXPECT_EQ(enabled({}), "AN");
  EXPECT_EQ(enabled({.row_selected = true, .row_viewed = true, .viewing = true}), "ANSV");
  EXPECT_EQ(enabled({.viewing = true, .text_selected = true}), "ANVH");
  EXPECT_EQ(enabled({.viewing = true, .user_restored = true}), "ANVH");
  EXPECT_EQ(enabled({.rows = 3, .row_selected = true, .viewing = true, .hyper_current = true}),
            "ANLSDVR");
  EXPECT_EQ(enabled({.text_selected = true, .hyper_current = true, .user_restored = true}), "AN");
  EXPECT_EQ(enabled({.text_marked = true}), "ANM");
  EXPECT_EQ(enabled({.searching = true, .rows = 3, .viewing = true}), "AB");
  EXPECT_EQ(enabled({.finding = true, .rows = 3}), "AB");
}

TEST(RunTexts, TimingCountsAndUnreadFiles) {
  EXPECT_EQ(timing_text(false, elapsed_seconds(86399.5, 0.5)), "in 0.01 seconds");
  EXPECT_EQ(timing_text(false, elapsed_seconds(10, 71.256)), "in 61.26 seconds");
  EXPECT_EQ(finished_text(0, 0), "No Files Found");

  EXPECT_EQ(count_tool_tip("", {}) + count_tool_tip("a, then b", {}), "a, then b");
  EXPECT_EQ(count_tool_tip("a, then b", {{"/a", "Denied"}}),
            "a, then b\n1 file could not be read:\n/a: Denied");
  const std::string many = count_tool_tip("", std::vector<UnreadFile>(12, {"/a", "Denied"}));
  EXPECT_TRUE(many.starts_with("12 files could") && many.ends_with("\nand 2 more")) << many;
  EXPECT_EQ(std::ranges::count(many, '\n'), 11);
  EXPECT_EQ(unread_lines({{"/a", "x"}, {"/b", "Not\r\nready"}, {"/c", "y"}}, {1, 2}),
            "/b\tNot  ready\r\n/c\ty\r\n");
}

/// A note with its links in brackets.
std::string line(const Note& note, std::size_t texts) {
  static const std::regex link("<a id=\"\\d\">(.*?)</a>");
  return std::regex_replace(note_markup(note, texts), link, "[$1]");
}

std::string shown(const WindowNote& notes, const OnView& on_view = {}) {
  const Note note = notes.current(on_view);
  return line(note, note.text_count());
}

TEST(WindowNote, TheFileOnViewComesBeforeWhatTheRunHasLeft) {
  WindowNote notes;
  const auto after = [&notes](const RunOutcome& run) {
    notes.run_ended(run);
    return shown(notes);
  };
  EXPECT_EQ(after({}) + after({true, true, 12}), "") << "nothing was left unread";
  EXPECT_EQ(after({.read_as_bytes = 12}),
            "12 Unicode files were searched byte by byte. [Read Unicode text]");
  EXPECT_EQ(after({false, true, 1}),
            "1 Unicode file was searched byte by byte. The code page lacks a character of the "
            "criteria. [Read Unicode text]");
  EXPECT_EQ(after({.code_page_lacks = true}),
            "The code page lacks a character of the criteria. [Read Unicode text]");

  EXPECT_EQ(shown(notes, {TextEncoding::utf8, "hit 3"}), "UTF-8, hit 3; " + shown(notes));
  notes.clear_run();
  EXPECT_EQ(shown(notes), "");
  EXPECT_EQ(shown(notes, {TextEncoding::utf16_le}) + shown(notes, {TextEncoding::utf16_be}),
            "UTF-16UTF-16");
  EXPECT_EQ(shown(notes, {.hit = "hit 3"}), "hit 3");
}

TEST(WindowNote, ARunThatListsNothingSaysWhatLeftTheFilesOut) {
  WindowNote notes;
  RunOutcome run{.code_page_lacks = true,
                 .unread = 2,
                 .nothing_listed = true,
                 .searched = 7,
                 .left_out = {12, 3, 5}};
  const auto told = [&] {
    notes.run_ended(run);
    return shown(notes);
  };
  EXPECT_EQ(told(),
            "12 files are of types that are not ticked; 3 names were left out; 5 files are outside "
            "the dates; the code page lacks a character of the criteria. [Read Unicode text]; "
            "[2 files were not read]");
  run = {.unread = 1, .nothing_listed = true, .left_out = {1, 1, 0}};
  EXPECT_EQ(told(), "1 file, but not of a ticked type; 1 name was left out; [1 file was not read]");
  run.nothing_listed = false;
  EXPECT_EQ(told(), "[1 file was not read]");
  run = {.nothing_listed = true};
  EXPECT_EQ(told(), "");
}

TEST(WindowNote, ARunThatLastsNamesItsFolder) {
  WindowNote notes;
  notes.run_goes_on(0.9, "C:\\a\\");
  EXPECT_EQ(shown(notes), "");
  for (const double seconds : {1.0, -86398.0}) {  // midnight
    const std::string folder = "C:\\" + std::to_string(seconds);
    notes.run_goes_on(seconds, folder);
    EXPECT_EQ(shown(notes), folder);
  }
  notes.run_goes_on(2, "");
  EXPECT_NE(shown(notes), "") << "the walk is over, the run not yet";
}

TEST(WindowNote, AFolderIsShortenedToItsBeginningAndItsLastFolders) {
  const auto shorten = [](const std::string& path, std::size_t room) {
    return shortened_path(
        path, [room](const std::string& text) { return to_utf16(text).size() <= room; });
  };
  const std::string path = "C:/docs/2024/письма/май/";
  EXPECT_EQ(shorten(path, 24), path);
  EXPECT_EQ(shorten(path, 23), "C:/…/2024/письма/май/");
  EXPECT_EQ(shorten(path, 20), "C:/…/письма/май/");
  EXPECT_EQ(shorten(path, 15), "C:/…/май/");
  EXPECT_EQ(shorten(path, 8), "…/май/");
  EXPECT_EQ(shorten(path, 4), "…ай/");
  EXPECT_EQ(shorten(path, 0), "…");
  EXPECT_EQ(shorten("//server/share/docs/a/", 21), "//server/share/…/a/");
  EXPECT_EQ(shorten("/docs/a/", 6) + shorten("C:/", 1), "/…/a/C:/");
}

TEST(SearchChain, TellsHowTheListCameToBe) {
  SearchChain chain;
  EXPECT_EQ(chain.text(), "");
  chain.new_search("invoice");
  EXPECT_EQ(chain.text(), "");
  chain.narrowed("contract");
  EXPECT_EQ(chain.text(), "invoice, then contract");
  chain.new_search("");
  std::string accented;
  for (int i = 0; i < 60; ++i) accented += "é";
  chain.narrowed(accented);
  chain.narrowed(accented + "é");
  EXPECT_EQ(chain.text(), "all files, then " + accented + ", then " + accented + "…");
  for (const char* word : {"a", "b\r\n", "c", "d", "e"}) chain.narrowed(word);
  EXPECT_EQ(chain.text(), "all files, …, then a, then b  , then c, then d, then e");
  chain.new_search("new");
  chain.narrowed("list");
  EXPECT_EQ(chain.text(), "new, then list");
}

TEST(WindowNote, LinksStayWhereTextsAreLeftOut) {
  const Note note{
      {{"A"}, {"B", NoteLink::read_unicode_text, "read"}, {"C"}, {"", NoteLink{}, "d"}}};
  const std::string lines[] = {"[read]; [d]", "A; … [read]; [d]", "A; B [read]; …; [d]",
                               "A; B [read]; C; [d]"};
  for (std::size_t texts = 0; texts < std::size(lines); ++texts) {
    EXPECT_EQ(line(note, texts), lines[texts]);
  }
  EXPECT_EQ(note_texts(note), "A; B; C");
}

TEST(ClipboardText, AppendsBelowTheCeilingAndEndsLinesOfNames) {
  std::string accented;
  for (int i = 0; i < 64989; ++i) accented += "é";
  EXPECT_EQ(appended_text(accented, "0123456789"), accented + "0123456789");
  EXPECT_EQ(appended_text(accented, "0123456789x"), std::nullopt);
  EXPECT_EQ(copied_names_text({"C:\\a"}), "C:\\a");
  EXPECT_EQ(copied_names_text({"C:\\a", "C:\\b"}), "C:\\a\r\nC:\\b\r\n");
}

TEST(FontSizes, StepsFromAnyStoredSizeWhichIsOfferedInItsPlace) {
  const std::array<double, 3> cases[] = {
      // a size, the larger and the smaller one
      {6, 7, 6}, {28, 36, 26}, {9.75, 11, 9}, {71.5, 72, 48}, {2160, 72, 72}, {-1e300, 6, 6}};
  for (const auto& [points, larger, smaller] : cases) {
    EXPECT_EQ(larger_size(points), larger) << points;
    EXPECT_EQ(smaller_size(points), smaller) << points;
  }
  EXPECT_TRUE(std::isfinite(larger_size(NAN) + smaller_size(NAN)));

  const auto offered = [](double points) {
    std::string texts;
    for (const double size : offered_sizes(points)) texts += size_text(size) + " ";
    return texts;
  };
  const std::string usual = "6 7 8 9 10 11 12 14 16 18 20 22 24 26 28 36 48 72 ";
  EXPECT_EQ(offered(9.75), "6 7 8 9 9.75 " + usual.substr(8));
  for (const double points : {10.0, -1.0, double{NAN}}) EXPECT_EQ(offered(points), usual);
}

TEST(StartFolder, IsTheArgumentAsOneFolder) {
  EXPECT_EQ(start_folder("") + start_folder("\\"), "\\");
  EXPECT_EQ(start_folder("C:"), "C:\\");
  EXPECT_EQ(start_folder("C:\""), "C:\\") << "how \"C:\\\" reaches a program";
  EXPECT_EQ(start_folder("\"C:\\my docs\""), "C:\\my docs");
  EXPECT_EQ(start_folder(" C:/docs// "), " C:/docs// ");
  EXPECT_EQ(start_folder("C:/docs\\/"), "C:/docs");
}

TEST(FolderText, NamesAFolderAsPeopleWriteIt) {
  const PathPorts ports{
      [](const std::string& text) { return text == "%HOME%\\a" ? std::string("C:\\me\\a") : text; },
      [](const std::string& path) { return "<" + path + ">"; }};
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {" \"\" ", ""},
      {"\t\"%HOME%\\a\" ", "<C:\\me\\a>"},
      {"\"C:\\my docs\"\\in/", "<C:\\my docs\\in>"},
      {"c:", "<C:\\>"},
      {"//server/share/", "<\\\\server\\share>"},
      {"docs", "docs"},
      {"C:docs", "C:docs"},
      {"/docs", "\\docs"}};
  for (const auto& [text, path] : cases) EXPECT_EQ(path_from_text(text, ports), path) << text;
}

}  // namespace
}  // namespace tallowmere
