#include <gtest/gtest.h>

#include <tuple>

#include "tests/native/literal_viewer.h"
#include "tests/native/viewing.h"

namespace tallowmere {
namespace {

using namespace std::string_literals;

using Messages = std::vector<std::string>;

constexpr char modified[] = "! File Has Changed: The file has been modified since last accessed.";
constexpr char no_hit[] =
    "Cannot Highlight Search Criteria: Selected file does not contain search criteria.";
constexpr char no_data[] = "! Cannot Get Data: Data error - encountered while trying to GET DATA.";

/// Dots with a hit at each 1-based place.
std::string dots(std::size_t size, const std::vector<std::size_t>& places) {
  std::string text(size, '.');
  for (const std::size_t at : places) text.replace(at - 1, 3, "hit");
  return text;
}

TEST(HitNavigation, NearWindowsReachOverSeams) {
  for (const auto& [cat, dog, near] : {std::tuple{30991, 30999, true},
                                       {30991, 31000, false},
                                       {31003, 30998, true},
                                       {31003, 30997, false}}) {
    std::string text(70000, '.');
    text.replace(cat - 1, 3, "cat").replace(dog - 1, 3, "dog");
    Viewing view(text, {"\"cat\" \"dog\"", search_near, false, 5, 8, false});
    EXPECT_EQ(view.find() == FindResult::found, near) << cat << "," << dog;
    // Half as many characters of two bytes and a mark are in a chunk.
    std::u32string units(U"\uFEFF" + std::u32string(text.begin() + 15501, text.end()));
    std::ranges::replace(units, U'.', U'ж');
    Viewing unicode(encode(units, TextEncoding::utf16_be),
                    {"\"cat\" \"dog\"", search_near, false, 5, 8, false}, "f.txt", true);
    EXPECT_EQ(unicode.find() == FindResult::found, near) << cat << "," << dog;
  }
}

TEST(HitNavigation, WindowsDoNotMakeTheFileBeReadOverAndOver) {
  std::string text;
  while (text.size() < 3000000) text += "the weather will be the same tomorrow ";
  for (const bool forward : {true, false}) {
    Viewing view(text, {"the absentee", search_near, false, 110, 110, false});
    view.load();
    int reads = 0;
    view.files.on_read = [&] { ++reads; };
    EXPECT_EQ(view.find(forward), FindResult::not_found);
    EXPECT_LT(reads, 8);
  }
}

TEST(HitNavigation, CriteriaOfAllLengths) {
  const std::string chunk(31000, 'n');
  const std::tuple<std::string, CriteriaInput, std::int64_t, Messages> cases[] = {
      {std::string(20, '.') + chunk + std::string(30, '.'), {chunk}, 21, {}},
      {chunk + chunk + "hit", {"\"n" + chunk + "\" \"hit\"", search_or}, 62001, {}},
      {chunk + chunk, {chunk + "n"}, 0, {no_hit}},
      {"some text", {""}, 0, {}},
      {"?\0 ? a"s, {"\xE4\xB8\xAD", search_or}, 0, {no_hit}},  // not in the code page
      {"x", {"\"\"", search_or}, 0, {no_hit}}};
  for (const auto& [text, input, hit, messages] : cases) {
    Viewing view(text, input);
    EXPECT_EQ(view.find(), hit ? FindResult::found : FindResult::not_found);
    EXPECT_EQ(view.hit_at(), hit ? hit : 1);
    EXPECT_TRUE(view.face.is_enabled);
    EXPECT_EQ(view.host.messages, messages);
  }
}

TEST(HitFinder, SelectionsThatRepeatTheCriteria) {
  for (const auto& [type, match_case, selection, repeats] :
       {std::tuple{search_phrase, false, "a CAT", true},
        {search_phrase, true, "a CAT", false},
        {search_phrase, false, "cat", false},
        {search_near, false, "CAT", true}}) {
    EXPECT_EQ(Viewing("x", {"A cat", type, match_case}).finder->repeats_criteria(selection),
              repeats);
  }
}

TEST(HitNavigation, AStepBackBeginsBehindAllTheLineBreaksOfTheFirstChunk) {
  // No other chunk holds the hit.
  Viewing view(std::string(1400, '\n') + dots(91500, {29480}));
  view.find();
  EXPECT_EQ(view.find(false), FindResult::found);
  EXPECT_EQ(std::pair(view.hit_at(), view.host.beeps), std::pair(std::int64_t{30880}, 1));
}

TEST(HitNavigation, TheBeginningOfALongFileShowsWhileItIsSearched) {
  Viewing view("beginning" + dots(31000 * 80, {31000 * 79}));
  view.face.scroll_value = 777;  // of the file before
  std::string early, late;
  view.host.on_go_on = [&] {
    (view.host.steps_asked < 60 ? early : late) =
        view.face.text.substr(0, 9) + std::to_string(view.face.scroll_value);
  };
  EXPECT_EQ(view.find(), FindResult::found);
  EXPECT_EQ(early + "|" + late, "777|beginning0");
  EXPECT_EQ(view.hit_at(), 31000 * 79 + 9);
}

TEST(HitNavigation, AStoppedStepLeavesTheViewAsItWas) {
  Viewing view(dots(400000, {100000, 390000}));
  const auto stopped_step = [&](bool forward) {
    view.host.steps_allowed = view.host.steps_asked + 2;
    EXPECT_EQ(view.find(forward), FindResult::stopped);
    EXPECT_TRUE(view.face.is_enabled && view.face.text == view.shown().chunk_text);
    view.host.steps_allowed = 1 << 30;
    return std::pair(view.shown().chunk_start, view.face.selected);
  };
  EXPECT_EQ(stopped_step(true), std::pair(std::int64_t{1}, TextSelection{})) << "just opened";
  view.find();
  for (const bool forward : {true, false}) {
    const auto before = std::pair(view.shown().chunk_start, view.face.selected);
    EXPECT_EQ(stopped_step(forward), before);
    ASSERT_EQ(view.find(forward), FindResult::found);
    EXPECT_EQ(view.hit_at(), forward ? 390000 : 100000);
  }
  EXPECT_EQ(std::pair(view.host.beeps, view.host.messages), std::pair(0, Messages{}));
}

bool is_cleared(const Viewing& view) {
  return view.results.viewed_index == -2 && view.host.cleared == 1 && !view.viewer.loaded() &&
         !view.face.is_enabled && view.face.text.empty();
}

TEST(FileViewer, FilesThatChangeOrFail) {
  const std::string old = dots(100000, {50, 90000});
  const std::string denied = "Access is denied - encountered while trying to ";
  const std::string missing =
      "! Cannot Open File: File not found - encountered while trying to OPEN /f.txt.";
  const std::string no_open = "! Cannot Open File: " + denied + "OPEN /f.txt.";
  const std::string no_get = "! Cannot Get Data: " + denied + "GET DATA.";
  const std::string no_bytes = "! Cannot View File: File contains zero bytes.";
  const struct {
    std::string how, text;
    Messages on_opening, on_view;
    std::int64_t hit;  ///< 0: none, the viewer is empty
  } cases[] = {{"gone", "", {missing}, {missing}, 0},
               {"locked", old, {no_open}, {no_get}, 0},
               {"broken", old, {no_data}, {no_data}, 0},
               {"empty", "", {no_bytes}, {modified, no_bytes}, 0},
               {"grown", dots(200000, {95000}), {}, {modified}, 95000},
               {"shrunk", dots(40, {20}), {}, {modified}, 20},
               {"touched", dots(100000, {7}), {}, {modified}, 7}};
  for (const auto& [how, text, on_opening, on_view, hit] : cases) {
    for (const std::string when : {"opening", "next", "prev"}) {
      SCOPED_TRACE(how + " on " + when);
      Viewing view(old);
      const bool opening = when == "opening", same = text == old;
      if (!opening) view.find();
      const Ticks date = (how == "gone" ? 0 : same ? 1 : 5) * ticks_per_second;
      auto& file = view.files.add("/f.txt", text, date);
      file.unreadable = how == "locked";
      if (how == "broken") file.breaks_at = 0;
      if (how == "gone") view.files.remove("/f.txt");
      EXPECT_TRUE(!opening || view.viewer.viewfile(1) || hit == 0);
      EXPECT_EQ(view.find(when != "prev"), hit ? FindResult::found : FindResult::no_file);
      EXPECT_EQ(view.host.messages, opening ? on_opening : on_view);
      EXPECT_EQ(view.results.record(1), (FileRecord{"f.txt", date, "/", std::ssize(text)}));
      EXPECT_EQ(view.host.corrected, same ? 0 : 1);
      EXPECT_LE(view.files.opened, view.files.closed);
      EXPECT_EQ(is_cleared(view), hit == 0);
      EXPECT_TRUE(hit == 0 || (view.hit_at() == hit && view.host.rows_selected == !opening));
    }
  }
}

TEST(HitNavigation, AFileChangedJustBeforeItsBeginningShows) {
  for (const int call : {10, 63, 64, 65}) {
    Viewing view(dots(31000 * 120, {}));
    view.host.on_go_on = [&] {
      if (view.host.steps_asked != call) return;
      view.files.add("/f.txt", dots(100000, {4}), 9 * ticks_per_second);
    };
    EXPECT_EQ(view.find(), FindResult::found) << call;
    EXPECT_EQ(view.host.messages, Messages{modified});
    EXPECT_EQ(view.hit_at(), 4);
  }
}

TEST(FileViewer, WhatLiesBeforeADefectShows) {
  Viewing view(dots(3000000, {100000}));
  view.files.add("/f.txt", dots(3000000, {100000}), ticks_per_second).breaks_at = 500000;
  EXPECT_EQ(view.find(), FindResult::found);
  EXPECT_EQ(view.find(), FindResult::no_file);
  EXPECT_EQ(view.host.messages, Messages{no_data});
  EXPECT_TRUE(is_cleared(view));
}

}  // namespace
}  // namespace tallowmere
