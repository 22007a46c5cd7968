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

  bool unicode() const { return encoding != TextEncoding::code_page; }
  std::string mark() const {
    const char* const marks[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"};
    return marks[static_cast<int>(encoding)];
  }

  /// Chooses the encoding of a round; returns criteria in it.
  CriteriaInput begin_round(int round) {
    encoding = static_cast<TextEncoding>(std::max(round % 6 - 2, 0));
    CriteriaInput input = criteria();
    if (unicode()) input.criteria = encoded(input.criteria, TextEncoding::utf8);
    return input;
  }

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
    const CriteriaInput input = draw.begin_round(round);
    const bool unicode = draw.unicode();
    const std::string text =
        draw.mark() + (unicode && draw.one_in(15) ? "" : encoded(draw.file(), draw.encoding)) +
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
    const CriteriaInput input = draw.begin_round(round);
    const bool unicode = draw.unicode();
    const std::string text = draw.mark() + encoded(draw.file(), draw.encoding);
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

}  // namespace
}  // namespace tallowmere
