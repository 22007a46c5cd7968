#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>
#include <set>
#include <tuple>

#include "tests/native/literal_viewer.h"
#include "tests/native/viewing.h"
#include "tests/support/seed.h"
#include "viewer/hit_counter.h"
#include "viewer/hit_ordinal.h"

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

/// The text of a test in an encoding: some of its characters stand for others.
std::string encoded(const std::string& text, TextEncoding encoding) {
  if (encoding == TextEncoding::code_page) return text;
  std::u32string codes;
  for (const char c : text) {
    const std::size_t at = "aA_xy\xE9\xBE"s.find(c);
    codes += at == std::string::npos ? static_cast<unsigned char>(c) : U"жЖ😀中é\xD800\xDC00"[at];
  }
  return encode(codes, encoding);
}

class Draw {
 public:
  explicit Draw(std::mt19937& random) : random_(random) {}

  TextEncoding encoding = TextEncoding::code_page;

  std::size_t pick(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
  bool one_in(std::size_t count) { return pick(count) == 0; }

  CriteriaInput criteria() {
    for (int& range : ranges_) range = static_cast<int>(pick(one_in(4) ? 3000 : 20));
    CriteriaInput input{"",       static_cast<int>(pick(4)), one_in(2), ranges_[0], ranges_[1],
                        one_in(2)};
    words_.clear();
    for (std::size_t count = 1 + pick(3); words_.size() < count;) {
      std::string word(1 + pick(one_in(5) ? 300 : 4), ' ');
      for (char& c : word) c = "abAB_."[pick(6)];
      if (one_in(6)) word += "\r\n";
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
    const std::string kinds[] = {
        "xyz. ", "xy\r\n", "\n", "\r\nx", "x\0y\0\0\x01\xE9"s, "\0\n\r\t~\x7F\x1F"s};
    const std::size_t wild = one_in(3) ? 6 : 1 + pick(3);
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
    if (one_in(4)) text.replace(0, 2, "1\xBE");  // as a Windows Write file begins
    return text;
  }

 private:
  /// Some words of the criteria near a seam, near an end of the file or anywhere.
  void plant(std::string& text) {
    const std::size_t size = text.size();
    const std::size_t places[] = {
        0, size, 31000, 62000, size - std::min<std::size_t>(size, 31000), pick(size)};
    std::size_t at = places[pick(std::size(places))] + pick(20);
    if (encoding != TextEncoding::code_page) {  // those are bytes
      std::map<char, std::size_t> lengths;
      for (const char c : text) lengths.emplace(c, 0);
      for (auto& [c, length] : lengths) length = encoded({c}, encoding).size();
      std::size_t character = 0;
      for (std::size_t bytes = 3; bytes < at && character < size; ++character) {
        bytes += lengths[text[character]];
      }
      at = character;
    }
    at -= std::min<std::size_t>(at, pick(one_in(2) ? 20 : 320));
    for (std::size_t left = 1 + pick(4); left > 0 && at < size; --left) {
      std::string placed = words_[pick(words_.size())];
      if (one_in(4)) placed += 'a';
      if (one_in(2) && placed[0] == 'A') placed[0] = 'a';
      placed.resize(std::min(placed.size(), size - at));
      text.replace(at, placed.size(), placed);
      // Often where a window of NEAR ends.
      const auto range = static_cast<std::size_t>(ranges_[pick(2)]);
      at += placed.size() + (one_in(3) ? pick(3) : range - std::min(range, pick(6)));
    }
  }

  std::mt19937& random_;
  std::vector<std::string> words_;
  int ranges_[2] = {};  ///< of NEAR
};

void expect_agreement(const Viewing& real, const LiteralViewer& literal) {
  const Chunk& chunk = real.shown();
  const TextSelection& selected = real.face.selected;
  ASSERT_EQ(std::tuple(chunk.chunk_start, chunk.file_location, chunk.last_chunk),
            std::tuple(literal.chunk_start, literal.file_location, literal.last_chunk));
  ASSERT_EQ(std::tuple(selected.start, selected.length, real.host.beeps),
            std::tuple(literal.sel_start, literal.sel_length, literal.beeps));
  ASSERT_EQ(std::ssize(real.host.messages), literal.misses);
  std::u16string units;
  for (const char32_t code : literal.text1) {
    if (code > 0xFFFF && code != no_character)
      units += static_cast<char16_t>(0xD7C0 + (code >> 10));
    units += static_cast<char16_t>(code == no_character ? 0xD800
                                   : code > 0xFFFF      ? 0xDC00 + (code & 0x3FF)
                                                        : code);
  }
  if (chunk.is_unicode()) {
    ASSERT_TRUE(real.face.units == units && chunk.units == units);
  } else {
    const std::string bytes(literal.text1.begin(), literal.text1.end());
    ASSERT_TRUE(real.face.text == bytes && chunk.chunk_text == bytes);
  }
  ASSERT_EQ(real.face.redraw_held, 0);
}

/// The marks of a view are the hits that Find Next meets there.
void expect_marks(Viewing& real, int from, int to, int& marked) {
  const int length = real.shown().length();
  std::string expected(static_cast<std::size_t>(length), ' ');
  std::string marks = expected;
  const auto put = [](std::string& into, int start, int end) {
    for (; start < std::min(end, static_cast<int>(into.size())); ++start)
      into[static_cast<std::size_t>(start)] = '#';
  };
  for (std::int64_t at = std::max(from - 700, 1); at <= to;) {
    const Hit hit = find_in_chunk(real.viewer, real.shown(), *real.finder, at, true);
    if (hit.position == 0) break;
    const auto start = static_cast<int>(hit.position - 1);
    put(expected, start, real.shown().behind_characters(start, hit.length));
    at = hit.position + 1;
  }
  int last_end = -1;
  HitMarks all;
  real.files.on_open = [] { ADD_FAILURE() << "reads while the box paints"; };
  const auto stretches = all.between(real.viewer, *real.finder, from, to);
  real.files.on_open = {};
  for (const auto& [start, count] : stretches) {
    ASSERT_GT(start, last_end);
    put(marks, start, last_end = start + count);
    ++marked;
  }
  const auto in_view = [&](const std::string& text) {
    return text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
  };
  ASSERT_EQ(in_view(marks), in_view(expected));
}

TEST(HitNavigation, AgreesWithTheLiteralViewer) {
  std::mt19937 random(test_seed());
  Draw draw(random);
  int found = 0, wrapped = 0, missed = 0, marked = 0;
  for (int round = 0; round < 120; ++round) {
    draw.encoding = static_cast<TextEncoding>(std::max(round % 6 - 2, 0));
    const bool unicode = draw.encoding != TextEncoding::code_page;
    CriteriaInput input = draw.criteria();
    if (unicode) input.criteria = encoded(input.criteria, TextEncoding::utf8);
    const std::string marks[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"};
    const std::string text =
        marks[static_cast<int>(draw.encoding)] +
        (unicode && draw.one_in(15) ? "" : encoded(draw.file(), draw.encoding)) +
        (unicode && draw.one_in(3) ? "\xD8" : "");
    const std::string extension = draw.one_in(2) ? "wri" : "txt";
    Viewing real(text, input, "f." + extension, unicode);
    ASSERT_EQ(real.viewer.encoding(), draw.encoding);
    LiteralViewer literal(text, extension, real.search, real.page, draw.encoding);
    for (int step = 0; step < 20; ++step) {
      const std::size_t kind = draw.pick(step == 0 ? 6 : 10);
      if (kind < 6) {
        real.find(kind < 3);
        literal.find(kind < 3);
        ASSERT_EQ(real.face.scroll_value, literal.scroll_value(0));
        real.viewer.backward_scroll_value();
        ASSERT_EQ(real.face.scroll_value, literal.scroll_value(literal.sel_length));
      } else if (kind < 8) {  // scrolled to somewhere else
        const Position start = static_cast<Position>(draw.pick(text.size() + 20)) - 9;
        const auto position = static_cast<Position>(draw.pick(31000) + 20);
        real.load(start, position);
        literal.load_text_chunk(start, position);
      } else {  // the caret set by the user
        literal.sel_start = unit_places(literal.text1)[draw.pick(literal.text1.size() + 1)] - 1;
        literal.sel_length = 0;
        real.face.select(static_cast<int>(literal.sel_start), 0);
      }
      ASSERT_NO_FATAL_FAILURE(expect_agreement(real, literal))
          << "round " << round << " step " << step << " criteria " << input.criteria << " kind "
          << kind;
      found += real.face.selected.length > 0;
      if (!draw.one_in(4)) continue;
      const int from = std::max(real.face.selected.start - static_cast<int>(draw.pick(500)), 0);
      const int to = std::min(from + static_cast<int>(draw.pick(900)), real.shown().length());
      ASSERT_NO_FATAL_FAILURE(expect_marks(real, from, to, marked)) << input.criteria;
    }
    wrapped += literal.beeps;
    missed += literal.misses;
    EXPECT_EQ(real.files.opened, real.files.closed);
  }
  EXPECT_TRUE(found > 50 && wrapped > 5 && missed > 5 && marked > 200);
}

/// The places that Find Next goes through in a file just opened, until it goes round.
std::vector<std::int64_t> walk_through(Viewing& real, const std::function<void()>& after_step) {
  std::set<std::int64_t> places;
  while (real.find() == FindResult::found && real.host.beeps == 0) {
    places.insert(real.hit_at());
    after_step();
  }
  return {places.begin(), places.end()};
}

TEST(HitCounter, CountsWhereFindNextStops) {
  std::mt19937 random(test_seed());
  Draw draw(random);
  int hits = 0;
  for (int round = 0; round < 60; ++round) {
    draw.encoding = static_cast<TextEncoding>(std::max(round % 6 - 2, 0));
    const bool unicode = draw.encoding != TextEncoding::code_page;
    CriteriaInput input = draw.criteria();
    if (unicode) input.criteria = encoded(input.criteria, TextEncoding::utf8);
    const std::string marks[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"};
    const std::string text =
        marks[static_cast<int>(draw.encoding)] + encoded(draw.file(), draw.encoding);
    Viewing real(text, input, "f.wri", unicode);
    if (!HitCounter::can_count(*real.finder, std::ssize(text))) continue;
    HitCounter counter(*real.finder, real.page, draw.encoding, std::ssize(text), "wri");
    HitOrdinal met;
    std::int64_t stop = 0, last = 0;
    const auto go_on = [&] {
      const FilePiece piece = counter.wanted();
      counter.hold(piece, text.substr(static_cast<std::size_t>(piece.position - 1),
                                      static_cast<std::size_t>(piece.length)));
    };
    const auto places = walk_through(real, [&] {
      const HitOrdinal::Place place{real.hit_at(), real.hit_at() + 1};
      met.met(place, real.navigation.last_step(), true, nullptr);
      stop += place.start != std::exchange(last, place.start);
      ASSERT_EQ(met.text(), "hit " + std::to_string(stop)) << input.criteria;
    });
    while (!counter.complete()) {
      if (counter.wanted().length > 0) go_on();
      counter.step();
      for (std::size_t i = 0; i < places.size(); i += 1 + i / 8) {  // known early, known for good
        const std::int64_t known = counter.ordinal(places[i]);
        ASSERT_TRUE(known == 0 || known == static_cast<std::int64_t>(i) + 1);
      }
    }
    ASSERT_EQ(counter.total(), std::ssize(places)) << round << ": " << input.criteria;
    for (std::size_t i = 0; i < places.size(); ++i) {
      ASSERT_EQ(counter.ordinal(places[i]), static_cast<std::int64_t>(i) + 1);
    }
    met.counted(counter);
    const std::string of = " of " + std::to_string(places.size());
    if (!places.empty()) {
      EXPECT_EQ(met.text(), "hit " + std::to_string(places.size()) + of);
    }
    hits += static_cast<int>(places.size());
  }
  EXPECT_GT(hits, 50);
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
