#include "viewer/view_scroll.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "tests/native/viewing.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

/// A viewer that shows a file from its beginning.
struct Scrolling : Viewing {
  explicit Scrolling(const std::string& text, int columns = 40, int lines = 10, bool words = false,
                     bool unicode = false)
      : Viewing(text, {"hit"}, "f.txt", unicode) {
    face.columns = columns;
    face.page = lines;
    face.wrap_at_blanks = words;
    load();
  }

  ViewScroll scroll{viewer, face};
  /// Bytes for a character of the text box.
  int widest() const { return shown().is_unicode() ? 3 : 1; }
  int jumps = 0;  ///< steps of walk that were not of whole lines without breaks

  /// The file position at which the view begins.
  std::int64_t top() const {
    return shown().file_position(face.line_index(face.first_visible_line()));
  }
  bool at_start() const { return shown().chunk_start == 1 && face.first_visible_line() == 0; }
  bool at_end() const {
    return shown().last_chunk && face.first_visible_line() + face.page >= face.line_count();
  }

  /// Scrolls in steps to the end (+) or the start (-) of the file. What stays on view must be
  /// exactly `step` lines away when `exact`, and otherwise go on in its direction.
  void walk(int step, bool exact) {
    const auto end_reached = [&] { return step > 0 ? at_end() : at_start(); };
    for (int count = 0; !end_reached(); ++count) {
      ASSERT_LT(count, 20000) << "never reaches the end";
      const auto before = face.lines_on_view();
      const std::int64_t top_before = top();
      scroll.scroll_lines(step);
      ASSERT_EQ(std::tuple(face.scroll_value == scroll_maximum, face.scroll_value == 0),
                std::tuple(at_end(), at_start()));
      ASSERT_EQ(face.redraw_held, 0);
      const std::int64_t moved = step > 0 ? top() - top_before : top_before - top();
      // A view as long as a chunk has nothing beside it to go on with.
      ASSERT_TRUE(moved > 0 || (face.page >= 140 && (step < 0 || at_end()))) << top_before;
      ASSERT_TRUE(exact || face.page >= 300 ||
                  moved <= (std::abs(step) + 1) * face.columns * widest());
      jumps += moved % face.columns != 0;
      if (!exact || end_reached()) continue;
      const auto after = face.lines_on_view();
      ASSERT_EQ(after.size(), before.size());
      const auto shift = std::min(before.size(), static_cast<std::size_t>(std::abs(step)));
      const auto& [low, high] = step > 0 ? std::tie(after, before) : std::tie(before, after);
      ASSERT_TRUE(std::equal(high.begin() + shift, high.end(), low.begin())) << top_before;
    }
  }
};

/// A text of several scripts, in which some letters stand for others.
std::string in_unicode(const std::string& text, TextEncoding encoding) {
  std::u32string codes(encoding == TextEncoding::utf8 ? U"" : U"\uFEFF");
  for (const char c : text) {
    const char32_t code = static_cast<unsigned char>(c);
    codes += c == 'e' || c == 'x' ? U'\U0001F600'
             : c == 'f'           ? U'中'
             : c > 'h'            ? code + 0x3D0
                                  : code;
  }
  return encode(codes, encoding);
}

class ViewScrollTest : public testing::Test {
 protected:
  std::mt19937 random{test_seed()};

  /// Paragraphs of up to `longest` bytes with endings of all kinds, or of the one kind given.
  std::string random_text(std::size_t size, std::size_t longest, int kind) {
    static constexpr std::string_view endings[] = {
        "\r\n", "\n", "\r", std::string_view("\0", 1), "\n\n", "\r\n\r\n", "\r\r\n"};
    std::string text;
    while (text.size() < size) {
      for (std::size_t left = random() % (longest + 1); left > 0; --left) {
        text += random() % 8 == 0 ? ' ' : static_cast<char>('a' + random() % 26);
      }
      text += endings[kind < 0 ? random() % std::size(endings) : static_cast<std::size_t>(kind)];
    }
    return text;
  }
};

// Steps of a line and of a page; long and short paragraphs; line breaks that crowd a chunk. Without
// line breaks the last chunk, whose place is fixed, may wrap differently: the view may then be off
// by less than a line, but goes on. So may a view as long as a chunk.
TEST_F(ViewScrollTest, TextIsContinuousThroughTheFile) {
  const std::string solid(70000, 'x');
  std::string breaks, words;
  for (int word = 0; word < 10000; ++word) {
    words += std::to_string(word * 7919) + " ";
    breaks += std::to_string(word) + "\n ";
  }
  const struct {
    std::string text;
    int columns, page, step;
    bool by_words, exact, unicode = false;
  } cases[] = {
      {random_text(70000, 300, -1), 40, 10, 2, false, true},
      {random_text(200000, 1500, -1), 40, 10, 9, true, true},
      {random_text(150000, 20, 1), 40, 25, 24, false, true},
      {random_text(70000, 4, 1), 40, 20, 5, false, true},
      {random_text(70000, 200, 2), 40, 10, 3, true, true},
      {random_text(200000, 400, -1), 40, 50, 200, true, true},
      {random_text(90000, 0, 1), 40, 10, 9, false, true},
      {random_text(60000, 1500, 0), 40, 10, 1, false, true},
      {in_unicode(random_text(70000, 300, -1), TextEncoding::utf8), 40, 10, 2, false, true, true},
      {in_unicode(random_text(90000, 1500, -1), TextEncoding::utf16_le), 40, 10, 9, true, true,
       true},
      {in_unicode(random_text(40000, 4, 1), TextEncoding::utf16_be), 40, 20, 5, false, true, true},
      {in_unicode(solid, TextEncoding::utf8), 41, 10, 5, false, false, true},
      {words, 40, 10, 9, true, false},
      {words, 40, 10, 9, false, false},
      {solid, 200, 300, 5, false, false},
      {breaks, 200, 140, 20, false, false}};
  for (const auto& [text, columns, page, step, by_words, exact, unicode] : cases) {
    SCOPED_TRACE(testing::Message() << text.size() << "/" << page << "/" << step);
    Scrolling view(text, columns, page, by_words, unicode);
    ASSERT_EQ(view.shown().is_unicode(), unicode);
    ASSERT_NO_FATAL_FAILURE(view.walk(step, exact));
    view.jumps = 0;
    ASSERT_NO_FATAL_FAILURE(view.walk(-step, exact));
    EXPECT_TRUE(exact || by_words || page > 10 || view.jumps <= 2) << view.jumps;
    EXPECT_TRUE(view.face.texts_set < std::ssize(text) / 400 + 10 || !exact) << "loads too often";
  }
}

TEST_F(ViewScrollTest, ThumbReachesEveryPlace) {
  Scrolling view(random_text(1000000, 200, -1));
  for (const int value : {1, 77777, 99999, 50000, 50001, 3}) {
    view.scroll.scroll_to(value);
    EXPECT_NEAR(view.face.scroll_value, value, 100);
    const auto place = static_cast<double>(view.top());
    EXPECT_NEAR(place, value * 10.0, 1000);
    view.scroll.scroll_to(view.face.scroll_value);
    EXPECT_NEAR(static_cast<double>(view.top()), place, 40) << value;
  }
  view.scroll.scroll_to(scroll_maximum);
  EXPECT_TRUE(view.at_end() && view.face.scroll_value == scroll_maximum);
  view.scroll.scroll_to(0);
  EXPECT_TRUE(view.at_start() && view.face.scroll_value == 0);
}

TEST_F(ViewScrollTest, GoesThroughAFileOfTenGigabytes) {
  for (const bool unicode : {false, true}) {
    Scrolling view("x", 60, 10, false, unicode);
    MemoryFiles::File& file = view.files.add("/f.txt", "");
    const std::int64_t unit = unicode ? 2 : 1, mark = unicode ? 2 : 0;
    const std::int64_t lines = 200'000'000 / unit;
    file.facts.size = mark + lines * 50 * unit;
    file.byte_at = [=](std::size_t at) {  // numbered lines of 50 characters
      if (at < static_cast<std::size_t>(mark)) return static_cast<unsigned char>(0xFF - at);
      const std::size_t character = at / static_cast<std::size_t>(unit) - (unicode ? 1 : 0);
      if (unicode && at % 2 == 1) return static_cast<unsigned char>(character % 50 == 20 ? 4 : 0);
      std::string line = std::to_string(character / 50);
      if (static_cast<std::int64_t>(character / 50) + 2 == lines) line += " hit";
      const std::size_t column = character % 50;
      return static_cast<unsigned char>(column < line.size() ? line[column]
                                        : column < 48        ? ' '
                                                             : "\r\n"[column - 48]);
    };
    view.load();  // as changed
    ASSERT_EQ(view.shown().is_unicode(), unicode);
    const auto first = [&] { return std::stoll(view.face.lines_on_view().front()); };
    view.scroll.scroll_to(scroll_maximum / 2);
    const std::int64_t middle = first();
    EXPECT_NEAR(static_cast<double>(middle), static_cast<double>(lines) / 2, 2000);
    view.scroll.scroll_lines(2000);
    view.scroll.scroll_lines(-5000);
    EXPECT_EQ(first(), middle - 3000);
    view.scroll.go_to_end(false);
    view.scroll.scroll_lines(-3000);
    // The last line is empty.
    EXPECT_EQ(first(), lines - view.face.page + 1 - 3000);
    view.load();
    EXPECT_EQ(view.find(false), FindResult::found);
    EXPECT_EQ(view.hit_at(),
              mark + ((lines - 2) * 50 + std::ssize(std::to_string(lines - 2)) + 1) * unit + 1);
  }
}

TEST_F(ViewScrollTest, SelectionStaysOrLeavesWithItsChunk) {
  Scrolling view(random_text(200000, 100, 0));
  int first = view.shown().character_at(20000);
  while (view.shown().is_break(first) || view.shown().is_break(first - 1)) ++first;
  view.face.select(first, 30);
  const std::int64_t start = view.hit_at();
  while (view.shown().chunk_start == 1) view.scroll.scroll_pages(1);
  EXPECT_EQ(view.hit_at(), start);
  while (view.shown().chunk_start <= 20100) view.scroll.scroll_pages(1);
  EXPECT_EQ(view.face.selected.length, 0);
}

// As the text box does it: each key moves the caret by a line, and the view after it.
TEST_F(ViewScrollTest, KeysExtendTheSelectionAcrossChunks) {
  Scrolling view(random_text(100000, 100, 0));
  FakeFace& face = view.face;
  for (const bool down : {true, false}) {
    int line = down ? 600 : 2 * face.page;
    face.select(face.line_index(line), 0);
    face.set_first_visible_line(line);
    const std::int64_t anchor = view.shown().file_position(face.selected.start);
    while ((view.shown().chunk_start == 1) == down) {
      view.scroll.make_room(down, face.caret_first);
      const TextSelection now = face.selected;
      const int end = now.start + now.length;
      const int fixed = down ? now.start : end;
      ASSERT_EQ(view.shown().file_position(fixed), anchor);
      ASSERT_TRUE(now.length == 0 || face.caret_first == !down);
      line = face.line_from_char(down ? end : now.start) + (down ? 1 : -1);
      ASSERT_TRUE(line >= 0 && line + face.page <= face.line_count());
      face.select(fixed, face.line_index(line) - fixed);
      face.set_first_visible_line(line);
    }
  }
  view.scroll.go_to_end(false);
  EXPECT_TRUE(view.at_end() && face.selected.start == std::ssize(face.text));
  view.scroll.go_to_start(false);
  EXPECT_TRUE(view.at_start() && face.selected == TextSelection{});
}

TEST_F(ViewScrollTest, TroubleEndsTheStep) {
  Scrolling view(std::string(100000, 'x'));
  view.files.add("/f.txt", std::string(100000, 'x'), ticks_per_second).breaks_at = 50000;
  for (int count = 0; count < 500; ++count) view.scroll.scroll_pages(1);
  EXPECT_FALSE(view.viewer.loaded());
  view.scroll.scroll_to(500);
  view.scroll.make_room(true, false);
  view.scroll.go_to_end(false);
  EXPECT_TRUE(view.host.messages.size() == 1 && view.face.redraw_held == 0);

  Scrolling changed(std::string(100000, 'y'), 40, 10, false, true);
  changed.files.add("/f.txt", "new text \xE9.", 5);
  EXPECT_EQ(changed.viewer.encoding(), TextEncoding::utf8);
  changed.scroll.scroll_to(scroll_maximum / 2);
  EXPECT_EQ(changed.face.text + std::to_string(changed.host.messages.size()), "new text \xE9.1");
  EXPECT_EQ(changed.viewer.encoding(), TextEncoding::code_page);
}

}  // namespace
}  // namespace tallowmere
