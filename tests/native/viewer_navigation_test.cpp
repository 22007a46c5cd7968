#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "tests/native/literal_viewer.h"
#include "tests/support/fake_viewer.h"
#include "tests/support/memory_files.h"
#include "tests/support/seed.h"
#include "viewer/file_viewer.h"
#include "viewer/hit_navigation.h"

namespace tallowmere {
namespace {

using namespace std::string_literals;

/// Files of which nothing can be learned any more.
class LosableFiles : public MemoryFiles {
 public:
  bool gone = false;

  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) const override {
    return MemoryFiles::facts(folder, gone ? "gone" : name, facts);
  }
};

/// A viewer of the second row of its list.
struct Viewing {
  CodePage page = CodePage::windows_1252();
  LosableFiles files;
  ResultList results;
  FakeFace face;
  FakeHost host;
  SearchCriteria search;
  FileViewer viewer{results, files, face, host};
  HitNavigation navigation{viewer, face, host};
  std::unique_ptr<HitFinder> finder;

  explicit Viewing(const std::string& text, const CriteriaInput& input = {"hit"},
                   const std::string& name = "f.txt") {
    files.add("/" + name, text, ticks_per_second);
    results.add_file_row("/", "other", {ticks_per_second, 1});
    results.add_file_row("/", name, {ticks_per_second, std::ssize(text)});
    load_search_criteria(search, input);
    finder = std::make_unique<HitFinder>(search, page,
                                         [this](std::int64_t position, std::int64_t length) {
                                           return viewer.read_window(position, length);
                                         });
  }

  Viewing& open() {
    EXPECT_TRUE(viewer.viewfile(1));
    return *this;
  }
  FindResult find(bool forward = true) {
    return forward ? navigation.find_next(*finder) : navigation.find_prev(*finder);
  }
  void load(std::int64_t start, std::int64_t position) {
    int line = 0;
    viewer.load_text_chunk(start, position, line);
  }
  std::int64_t hit_at() const { return viewer.shown_chunk().file_position(face.selected.start); }
};

using Messages = std::vector<std::string>;

constexpr char modified[] = "! File Has Changed: The file has been modified since last accessed.";
constexpr char no_data[] = "! Cannot Get Data: Data error - encountered while trying to GET DATA.";

/// Dots with a word at each 1-based place.
std::string dots(std::size_t size, const std::vector<std::size_t>& places,
                 const std::string& word = "hit") {
  std::string text(size, '.');
  for (const std::size_t at : places) text.replace(at - 1, word.size(), word);
  return text;
}

// --- against the literal viewer

class Draw {
 public:
  explicit Draw(std::mt19937& random) : random_(random) {}

  std::size_t pick(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
  bool one_in(std::size_t count) { return pick(count) == 0; }

  CriteriaInput criteria() {
    range_ = 1 + pick(one_in(2) ? 20 : 3000);
    const auto before = static_cast<int>(pick(range_)), after = static_cast<int>(pick(range_));
    CriteriaInput input{"", static_cast<int>(pick(4)), one_in(2), before, after, one_in(2)};
    words_.clear();
    for (std::size_t count = 1 + pick(3); words_.size() < count;) {
      std::string word(1 + pick(one_in(5) ? 300 : 4), ' ');
      for (char& c : word) c = "abAB_"[pick(5)];
      if (one_in(12)) word += "\r\n";
      const std::string quote = one_in(2) ? "\"" : "";
      input.criteria += quote + word + quote + " ";
      words_.push_back(word);
    }
    if (input.search_type == search_phrase) input.criteria = words_.back();
    if (one_in(15)) input.criteria += "\"\"";
    return input;
  }

  /// Stretches of text, of line breaks and of binary.
  std::string file() {
    const std::string kinds[] = {"xyz. ", "xy\r\n", "\n", "\r\nx", "x\0y\0\0\x01\xE9"s, "\0"s};
    const std::size_t wild = one_in(4) ? 6 : 1 + pick(3);
    const std::size_t sizes[] = {1 + pick(60), 31000 + pick(3), 31000 + pick(31000),
                                 62000 + pick(9), 62000 + pick(70000)};
    std::string text(sizes[pick(std::size(sizes))], '.');
    for (std::size_t at = 0; at < text.size();) {
      const std::string& letters = kinds[pick(wild)];
      for (std::size_t left = pick(2000); left > 0 && at < text.size(); --left) {
        text[at++] = letters[pick(letters.size())];
      }
    }
    for (std::size_t left = pick(9); left > 0; --left) plant(text);
    return text;
  }

 private:
  /// Some words of the criteria near a seam, near an end of the file or anywhere.
  void plant(std::string& text) {
    const std::size_t size = text.size();
    const std::size_t places[] = {
        0, size, 31000, 62000, size - std::min<std::size_t>(size, 31000), pick(size)};
    std::size_t at = places[pick(std::size(places))] + pick(20);
    at -= std::min<std::size_t>(at, pick(one_in(2) ? 20 : 320));
    for (std::size_t left = 1 + pick(4); left > 0 && at < size; --left) {
      std::string placed = words_[pick(words_.size())];
      if (one_in(4)) placed += 'a';
      if (one_in(2) && placed[0] == 'A') placed[0] = 'a';
      placed.resize(std::min(placed.size(), size - at));
      text.replace(at, placed.size(), placed);
      at += placed.size() + pick(one_in(2) ? 3 : range_ + 3);
    }
  }

  std::mt19937& random_;
  std::vector<std::string> words_;
  std::size_t range_ = 1;
};

void expect_agreement(const Viewing& real, const LiteralViewer& literal) {
  const Chunk& place = real.viewer.shown_chunk();
  ASSERT_EQ(place.chunk_start, literal.chunk_start);
  ASSERT_EQ(place.file_location, literal.file_location);
  ASSERT_EQ(place.last_chunk, literal.last_chunk);
  ASSERT_FALSE(real.viewer.chunk_pending());
  ASSERT_EQ(real.face.selected.start, literal.sel_start);
  ASSERT_EQ(real.face.selected.length, literal.sel_length);
  ASSERT_EQ(real.host.beeps, literal.beeps);
  ASSERT_EQ(std::ssize(real.host.messages), literal.misses);
  ASSERT_TRUE(real.face.text == literal.text1 &&
              real.viewer.shown_chunk().chunk_text == literal.text1);
}

TEST(HitNavigation, AgreesWithTheLiteralViewer) {
  std::mt19937 random(test_seed());
  Draw draw(random);
  int found = 0, wrapped = 0, missed = 0;
  for (int round = 0; round < 40; ++round) {
    const CriteriaInput input = draw.criteria();
    const std::string text = draw.file();
    Viewing real(text, input);
    LiteralViewer literal(text, real.open().search, real.page);
    for (int step = 0; step < 20; ++step) {
      const std::size_t kind = draw.pick(step == 0 ? 6 : 10);
      if (kind < 6) {
        real.find(kind < 3);
        literal.find(kind < 3);
      } else if (kind < 8) {  // scrolled to somewhere else
        const Position start = static_cast<Position>(draw.pick(text.size() + 20)) - 9;
        const auto position = static_cast<Position>(draw.pick(31000) + 20);
        real.load(start, position);
        literal.load_text_chunk(start, position);
      } else {  // the caret set by the user
        literal.sel_start = static_cast<Position>(draw.pick(literal.text1.size() + 1));
        literal.sel_length = 0;
        real.face.select(static_cast<int>(literal.sel_start), 0);
      }
      ASSERT_NO_FATAL_FAILURE(expect_agreement(real, literal))
          << "round " << round << " step " << step << " criteria " << input.criteria;
      found += real.face.selected.length > 0;
    }
    wrapped += literal.beeps;
    missed += literal.misses;
    EXPECT_EQ(real.files.opened, real.files.closed);
  }
  EXPECT_TRUE(found > 50 && wrapped > 5 && missed > 5);
}

// --- where hits are found

TEST(HitNavigation, EveryHitIsVisitedInBothDirections) {
  for (const std::size_t size : {9, 31000, 31001, 62000, 93001}) {
    std::vector<std::size_t> hits;
    for (std::size_t at = 1; at + 2 <= size; at += 3) {
      if (at == 1 || size - at < 7 || (at + 5) % 31000 < 9) hits.push_back(at);
    }
    for (const auto& places : {hits, {1}, {size - 2}, {size / 2}}) {
      SCOPED_TRACE(testing::Message() << size << " " << places.front());
      Viewing view(dots(size, places));
      view.open();
      const std::size_t count = places.size();
      for (std::size_t step = 0; step <= 2 * count; ++step) {
        const std::size_t index = step <= count ? step % count : 2 * count - step;
        ASSERT_EQ(view.find(step <= count), FindResult::found);
        ASSERT_EQ(view.hit_at(), static_cast<std::int64_t>(places[index]));
        ASSERT_EQ(view.face.selected_text(), "hit");
        ASSERT_EQ(view.host.beeps, (step >= count) + (step > count));
        ASSERT_EQ(view.face.redraw_held, 0);
      }
    }
  }
}

TEST(HitNavigation, NearWindowsReachOverSeamsAndEndWithTheFile) {
  const struct {
    std::size_t cat, first_dog, last_dog;  ///< where the other word is near enough
  } cases[] = {
      {1000, 995, 1008},
      {30991, 30986, 30999},  // the window goes one byte over the seam
      {30998, 30993, 31006},  // ends the first chunk
      {30999, 30994, 31007},  // begins the second
      {31003, 30998, 31011},
      {31004, 30999, 31012},
      {6, 1, 14},
      {3, 6, 14},  // cut off by the beginning of the file, the window reaches further behind
      {69990, 69985, 69998},
      {69994, 69989, 69998},
  };
  for (const auto& [cat, first_dog, last_dog] : cases) {
    for (const std::size_t dog : {first_dog - 1, first_dog, last_dog, last_dog + 1}) {
      if (dog == 0 || dog > 69998 || (dog < cat + 3 && cat < dog + 3)) continue;
      Viewing view(dots(70000, {cat}, "cat").replace(dog - 1, 3, "dog"),
                   {"\"cat\" \"dog\"", search_near, false, 5, 8, false});
      const bool near = dog >= first_dog && dog <= last_dog;
      ASSERT_EQ(view.open().find(), near ? FindResult::found : FindResult::not_found)
          << cat << " " << dog;
    }
  }
}

TEST(HitNavigation, WindowsDoNotMakeTheFileBeReadOverAndOver) {
  std::string text;
  while (text.size() < 3000000) text += "the weather will be the same tomorrow ";
  for (const bool forward : {true, false}) {
    Viewing view(text, {"the absentee", search_near, false, 110, 110, false});
    view.open().load(1, 1);
    int reads = 0;
    view.files.on_read = [&] { ++reads; };
    EXPECT_EQ(view.find(forward), FindResult::not_found);
    EXPECT_LT(reads, 8);
  }
}

TEST(HitNavigation, CriteriaOfAllLengths) {
  const std::string chunk(31000, 'n');
  const std::string no_hit =
      "Cannot Highlight Search Criteria: Selected file does not contain search criteria.";
  const struct {
    std::string text;
    CriteriaInput input;
    std::int64_t hit;  ///< 0: none
    bool told;
  } cases[] = {
      {std::string(20, '.') + chunk + std::string(30, '.'), {chunk}, 21, false},
      {chunk + chunk + "hit", {"\"n" + chunk + "\" \"hit\"", search_or}, 62001, false},
      {chunk + chunk, {chunk + "n"}, 0, true},
      {"some text", {""}, 0, false},
      {"x", {"\"\"", search_or}, 0, true},
      {std::string(70000, '\n'), {"hit"}, 0, true},
  };
  for (const auto& [text, input, hit, told] : cases) {
    Viewing view(text, input);
    EXPECT_EQ(view.open().find(), hit ? FindResult::found : FindResult::not_found);
    EXPECT_EQ(view.hit_at(), hit ? hit : 1);
    EXPECT_TRUE(view.face.is_enabled);
    EXPECT_EQ(view.host.messages, told ? Messages{no_hit} : Messages{});
  }
}

TEST(HitFinder, SelectionsThatRepeatTheCriteria) {
  const auto repeats = [](const CriteriaInput& input, const char* selection) {
    return Viewing("x", input).finder->repeats_criteria(selection);
  };
  EXPECT_TRUE(repeats({"A cat", search_phrase}, "a CAT"));
  EXPECT_FALSE(repeats({"A cat", search_phrase, true}, "a CAT"));
  EXPECT_FALSE(repeats({"A cat", search_phrase}, "cat"));
  EXPECT_TRUE(repeats({"A cat", search_near}, "CAT"));
  EXPECT_FALSE(repeats({"A cat \"\"", search_or}, ""));
}

// --- what shows

TEST(FileViewer, WriteFileShowsItsHeaderOnALineOfItsOwn) {
  Viewing view("1\xBE" + std::string(126, '\1') + "text hit", {"hit"}, "f.wri");
  view.open().find();
  EXPECT_EQ(view.face.lines_on_view().back(), "text hit");
  EXPECT_EQ(view.face.selected_text(), "hit");
  EXPECT_EQ(view.hit_at(), 134);
}

TEST(FileViewer, ScrollValuesRoundHalvesToEven) {
  Viewing view(dots(64, {}));
  view.open().load(1, 1);
  for (const auto& [start, value, end_value] :
       {std::tuple{0, 1562, 4688}, {4, 7812, 10938}, {64, 100000, 100000}}) {
    view.face.select(start, 2);
    view.viewer.update_scroll_value();
    EXPECT_EQ(view.face.scroll_value, value);
    view.viewer.backward_scroll_value();
    EXPECT_EQ(view.face.scroll_value, end_value);
  }
}

TEST(HitNavigation, TheBeginningOfALongFileShowsWhileItIsSearched) {
  Viewing view("beginning" + dots(31000 * 80, {31000 * 79}));
  view.face.scroll_value = 777;  // of the file before
  std::string early, late;
  view.host.on_go_on = [&] {
    (view.host.steps_asked < 60 ? early : late) =
        view.face.text.substr(0, 9) + std::to_string(view.face.scroll_value);
  };
  EXPECT_EQ(view.open().find(), FindResult::found);
  EXPECT_EQ(early + "|" + late, "777|beginning0");
  EXPECT_EQ(view.hit_at(), 31000 * 79 + 9);
}

// --- interruptions and trouble

TEST(HitNavigation, AStoppedStepLeavesTheViewAsItWas) {
  Viewing view(dots(400000, {100000, 390000}));
  view.open().find();
  for (const bool forward : {true, false}) {
    const std::string text = view.face.text;
    const TextSelection selection = view.face.selected;
    view.host.steps_allowed = view.host.steps_asked + 2;
    ASSERT_EQ(view.find(forward), FindResult::stopped);
    EXPECT_FALSE(view.viewer.chunk_pending());
    EXPECT_TRUE(view.face.text == text && view.viewer.shown_chunk().chunk_text == text);
    EXPECT_EQ(view.face.selected, selection);
    view.host.steps_allowed = 1 << 30;
    ASSERT_EQ(view.find(forward), FindResult::found);
    EXPECT_EQ(view.hit_at(), forward ? 390000 : 100000);
    EXPECT_EQ(view.host.beeps, 0);
  }

  Viewing fresh(dots(400000, {390000}));
  fresh.host.steps_allowed = 2;
  EXPECT_EQ(fresh.open().find(), FindResult::stopped);
  EXPECT_EQ(fresh.face.text, dots(31000, {}));
  EXPECT_TRUE(fresh.face.is_enabled && fresh.host.messages.empty());
  fresh.host.steps_allowed = 1 << 30;
  EXPECT_EQ(fresh.find(), FindResult::found);
}

void expect_cleared(const Viewing& view) {
  EXPECT_EQ(view.results.viewed_index, -2);
  EXPECT_EQ(view.face.text, "");
  EXPECT_FALSE(view.viewer.loaded() || view.face.is_enabled);
  EXPECT_EQ(view.host.cleared, 1);
}

TEST(FileViewer, FilesThatChangeOrFail) {
  const std::string old = dots(100000, {50, 90000});
  const std::string denied = "Access is denied - encountered while trying to ";
  const std::string cannot_open = "! Cannot Open File: " + denied + "OPEN /f.txt.";
  const std::string cannot_get = "! Cannot Get Data: " + denied + "GET DATA.";
  const std::string zero_bytes = "! Cannot View File: File contains zero bytes.";
  const struct {
    std::string how, text;
    Messages on_opening, on_view;
    std::int64_t hit;  ///< 0: none, the viewer is empty
  } cases[] = {
      {"gone", "", {cannot_open}, {cannot_open}, 0},
      {"locked", old, {cannot_open}, {cannot_get}, 0},
      {"broken", old, {no_data}, {no_data}, 0},
      {"empty", "", {zero_bytes}, {modified, zero_bytes}, 0},
      {"grown", dots(200000, {95000}), {}, {modified}, 95000},
      {"shrunk", dots(40, {20}), {}, {modified}, 20},
      {"touched", dots(100000, {7}), {}, {modified}, 7},
  };
  for (const auto& [how, text, on_opening, on_view, hit] : cases) {
    for (const std::string when : {"opening", "next", "prev"}) {
      SCOPED_TRACE(how + " on " + when);
      Viewing view(old);
      if (when != "opening") view.open().find();
      const bool same = text == old;
      const Ticks date = (same ? 1 : 5) * ticks_per_second;
      auto& file = view.files.add("/f.txt", text, date);
      view.files.gone = how == "gone";
      file.unreadable = how == "locked" || how == "gone";
      if (how == "broken") file.breaks_at = 0;

      EXPECT_TRUE(when != "opening" || view.viewer.viewfile(1) || hit == 0);
      EXPECT_EQ(view.find(when != "prev"), hit ? FindResult::found : FindResult::no_file);
      EXPECT_EQ(view.host.messages, when == "opening" ? on_opening : on_view);
      EXPECT_EQ(view.results.record(1),
                (FileRecord{"f.txt", how == "gone" ? 0 : date, "/", std::ssize(text)}));
      EXPECT_EQ(view.host.corrected, same ? 0 : 1);
      EXPECT_EQ(view.host.beeps, 0);
      EXPECT_LE(view.files.opened, view.files.closed);
      if (hit == 0) {
        expect_cleared(view);
      } else {
        EXPECT_EQ(view.hit_at(), hit);
        EXPECT_EQ(view.viewer.file_length(), std::ssize(text));
        EXPECT_EQ(view.host.selected_rows.size(), when == "opening" ? 0u : 1u);
      }
    }
  }
}

TEST(HitNavigation, AFileChangedJustBeforeItsBeginningShows) {
  for (const int call : {10, 63, 64, 65}) {
    Viewing view(dots(31000 * 70, {}));
    view.host.on_go_on = [&] {
      if (view.host.steps_asked != call) return;
      view.files.add("/f.txt", dots(100000, {4}), 9 * ticks_per_second);
    };
    EXPECT_EQ(view.open().find(), FindResult::found) << call;
    EXPECT_EQ(view.host.messages, Messages{modified});
    EXPECT_EQ(view.hit_at(), 4);
  }
}

TEST(FileViewer, WhatLiesBeforeADefectShows) {
  const std::string text = dots(3000000, {100000});
  Viewing view(text);
  view.files.add("/f.txt", text, ticks_per_second).breaks_at = 500000;
  EXPECT_EQ(view.open().find(), FindResult::found);
  EXPECT_EQ(view.find(), FindResult::no_file);
  EXPECT_EQ(view.host.messages, Messages{no_data});
  expect_cleared(view);
}

}  // namespace
}  // namespace tallowmere
