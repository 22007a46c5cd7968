#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "results/result_list.h"
#include "tests/support/fake_viewer.h"
#include "tests/support/memory_files.h"
#include "tests/support/seed.h"
#include "viewer/file_viewer.h"
#include "viewer/view_scroll.h"

namespace tallowmere {
namespace {

/// Numbered lines of 50 bytes, without end.
unsigned char byte_of_lines(std::size_t at) {
  const std::string line = std::to_string(at / 50);
  const std::size_t column = at % 50;
  return static_cast<unsigned char>(column < line.size() ? line[column]
                                    : column < 48        ? ' '
                                                         : "\r\n"[column - 48]);
}

using Lines = std::vector<std::string>;

/// A viewer with a file on view.
class ViewScrollTest : public testing::Test {
 protected:
  void view(std::string text) {
    results.setup_new_list();
    MemoryFiles::File& file = files.add("/f.txt", std::move(text));
    if (huge != 0) {
      file.facts.size = huge;
      file.byte_at = &byte_of_lines;
    }
    results.add_file_row("/f.txt", file.facts);
    ASSERT_TRUE(viewer.viewfile(0));
    std::int64_t position = 1;
    int line = 0;
    ASSERT_EQ(viewer.load_text_chunk(1, position, line), ChunkResult::ok);
  }

  /// The file position at which the view begins.
  std::int64_t top() const {
    return viewer.shown_chunk().file_position(face.line_index(face.first_visible_line()));
  }
  bool at_start() const {
    return viewer.shown_chunk().chunk_start == 1 && face.first_visible_line() == 0;
  }
  bool at_end() const {
    return viewer.shown_chunk().last_chunk &&
           face.first_visible_line() + face.page >= face.line_count();
  }

  /// Scrolls in steps to the end (+) or the start (-) of the file. What stays on view must stand
  /// exactly `step` lines away when `exact`, and otherwise go on in its direction.
  void walk(int step, bool exact) {
    const auto end_reached = [&] { return step > 0 ? at_end() : at_start(); };
    for (int count = 0; !end_reached(); ++count) {
      ASSERT_LT(count, 20000) << "never reaches the end";
      const Lines before = face.lines_on_view();
      const std::int64_t top_before = top();
      scroll.scroll_lines(step);
      ASSERT_EQ(face.redraw_held, 0);
      ASSERT_EQ(face.scroll_value == scroll_maximum, at_end());
      ASSERT_EQ(face.scroll_value == 0, at_start());
      const std::int64_t moved = step > 0 ? top() - top_before : top_before - top();
      // A view as long as a chunk has nothing beside it to go on with.
      ASSERT_TRUE(moved > 0 || (face.page >= 140 && (step < 0 || at_end()))) << top_before;
      ASSERT_TRUE(exact || face.page >= 300 || moved <= (std::abs(step) + 1) * face.columns);
      jumps += moved % face.columns != 0;
      if (exact && !end_reached()) {
        const Lines after = face.lines_on_view();
        ASSERT_EQ(after.size(), before.size());
        const auto shift = std::min(before.size(), static_cast<std::size_t>(std::abs(step)));
        const auto& [low, high] = step > 0 ? std::tie(after, before) : std::tie(before, after);
        ASSERT_TRUE(std::equal(high.begin() + shift, high.end(), low.begin())) << top_before;
      }
    }
  }

  std::mt19937 random{test_seed()};
  int jumps = 0;  ///< steps of walk that were not of whole lines without breaks
  ResultList results;
  MemoryFiles files;
  std::int64_t huge = 0;  ///< the size of the file, when not 0
  FakeFace face;
  FakeHost host;
  FileViewer viewer{results, files, face, host};
  ViewScroll scroll{viewer, face};

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

TEST_F(ViewScrollTest, TextIsContinuousThroughTheFile) {
  // Steps of a line and of a page; long and short paragraphs; line breaks that crowd a chunk.
  const struct {
    std::size_t size, longest;
    int kind, page, step;
    bool wrap_at_blanks;
  } cases[] = {{70000, 300, -1, 10, 2, false}, {200000, 1500, -1, 10, 9, true},
               {70000, 80, 0, 30, 3, true},    {150000, 20, 1, 25, 24, false},
               {70000, 4, 1, 20, 5, false},    {90000, 0, 1, 10, 9, false},
               {70000, 200, 2, 10, 3, true},   {60000, 1500, 0, 10, 1, false},
               {31001, 100, -1, 10, 3, true},  {200000, 400, -1, 50, 200, true}};
  for (const auto& [size, longest, kind, page, step, wrap_at_blanks] : cases) {
    SCOPED_TRACE(testing::Message() << size << "/" << longest << "/" << kind);
    face.page = page;
    face.wrap_at_blanks = wrap_at_blanks;
    face.texts_set = 0;
    ASSERT_NO_FATAL_FAILURE(view(random_text(size, longest, kind)));
    ASSERT_NO_FATAL_FAILURE(walk(step, true));
    ASSERT_NO_FATAL_FAILURE(walk(-step, true));
    EXPECT_LT(face.texts_set, static_cast<int>(size / 400 + 10)) << "loads too often";
  }
}

// Without line breaks the last chunk, whose place is fixed, may wrap differently: the view may then
// be off by less than a line, but goes on.
TEST_F(ViewScrollTest, TextWithoutLineBreaksAndViewsAsLongAsAChunk) {
  std::string words, breaks;
  for (int word = 0; words.size() < 100000; ++word) words += std::to_string(word * 7919) + " ";
  for (int word = 0; breaks.size() < 50000; ++word) breaks += std::to_string(word) + "\n ";
  const std::string solid(70000, 'x');
  const struct {
    const std::string& text;
    int columns, page, step;
    bool wrap_at_blanks;
  } cases[] = {{words, 40, 10, 9, true},      {words, 40, 10, 9, false},
               {breaks, 200, 140, 20, false}, {solid, 200, 140, 5, false},
               {breaks, 200, 300, 40, false}, {solid, 200, 300, 5, false}};
  for (const auto& [text, columns, page, step, wrap_at_blanks] : cases) {
    SCOPED_TRACE(testing::Message() << text.size() << "/" << page);
    face.columns = columns;
    face.page = page;
    face.wrap_at_blanks = wrap_at_blanks;
    ASSERT_NO_FATAL_FAILURE(view(text));
    ASSERT_NO_FATAL_FAILURE(walk(step, false));
    jumps = 0;
    ASSERT_NO_FATAL_FAILURE(walk(-step, false));
    EXPECT_TRUE(page > 10 || wrap_at_blanks || jumps <= 2) << jumps;
  }
}

TEST_F(ViewScrollTest, ThumbReachesEveryPlace) {
  view(random_text(1000000, 200, -1));
  for (const int value : {1, 20000, 77777, 99999, 50000, 50001, 3}) {
    scroll.scroll_to(value);
    EXPECT_NEAR(face.scroll_value, value, 100);
    const auto place = static_cast<double>(top());
    EXPECT_NEAR(place, value * 10.0, 1000);
    scroll.scroll_to(face.scroll_value);
    EXPECT_NEAR(static_cast<double>(top()), place, 40) << value;
  }
  scroll.scroll_to(scroll_maximum);
  EXPECT_TRUE(at_end() && face.scroll_value == scroll_maximum);
  scroll.scroll_to(0);
  EXPECT_TRUE(at_start() && face.scroll_value == 0);
  view("one line");
  scroll.scroll_to(60000);
  scroll.scroll_pages(3);
  EXPECT_EQ(face.scroll_value, 0);
}

TEST_F(ViewScrollTest, GoesThroughAFileOfTenGigabytes) {
  face.columns = 60;
  huge = 10'000'000'000;
  view("");
  const auto first_number = [&] { return std::stoll(face.lines_on_view().front()); };
  scroll.scroll_to(scroll_maximum / 2);
  EXPECT_NEAR(static_cast<double>(first_number()), 1e8, 2000);
  EXPECT_NEAR(face.scroll_value, scroll_maximum / 2, 1);
  const std::int64_t middle = first_number();
  scroll.scroll_lines(2000);
  EXPECT_EQ(first_number(), middle + 2000);
  scroll.scroll_lines(-5000);
  EXPECT_EQ(first_number(), middle - 3000);
  scroll.go_to_end(false);
  EXPECT_EQ(face.scroll_value, scroll_maximum);
  scroll.scroll_lines(-3000);
  // The last line is empty.
  EXPECT_EQ(first_number(), huge / 50 - face.page + 1 - 3000);
}

TEST_F(ViewScrollTest, SelectionStaysOrLeavesWithItsChunk) {
  const std::string text = random_text(200000, 100, 0);
  view(text);
  std::size_t at = 20000;
  while (text[at] == '\n' || text[at + 30] == '\n') ++at;  // not between CR and LF
  face.select(viewer.shown_chunk().character_at(static_cast<std::int64_t>(at) + 1), 30);
  const std::string selected = face.selected_text();
  while (viewer.shown_chunk().chunk_start == 1) scroll.scroll_pages(1);
  EXPECT_EQ(face.selected_text(), selected);
  while (viewer.shown_chunk().chunk_start <= static_cast<std::int64_t>(at) + 30)
    scroll.scroll_pages(1);
  EXPECT_EQ(face.selection().length, 0);
  const int caret = face.line_from_char(face.selection().start);
  EXPECT_LT(std::abs(face.first_visible_line() - caret), 2 * face.page);
}

// As the text box does it: each key moves the caret by a line, and the view after it.
TEST_F(ViewScrollTest, KeysExtendTheSelectionAcrossChunks) {
  view(random_text(100000, 100, 0));
  for (const bool down : {true, false}) {
    int line = down ? 600 : 2 * face.page;
    face.select(face.line_index(line), 0);
    face.set_first_visible_line(line);
    const std::int64_t anchor = viewer.shown_chunk().file_position(face.selection().start);
    while ((viewer.shown_chunk().chunk_start == 1) == down) {
      scroll.make_room(down, face.caret_first);
      const TextSelection now = face.selection();
      const int end = now.start + now.length;
      const int fixed = down ? now.start : end;
      ASSERT_EQ(viewer.shown_chunk().file_position(fixed), anchor);
      ASSERT_TRUE(now.length == 0 || face.caret_first == !down);
      line = face.line_from_char(down ? end : now.start) + (down ? 1 : -1);
      ASSERT_TRUE(line >= 0 && line + face.page <= face.line_count());
      face.select(fixed, face.line_index(line) - fixed);
      face.set_first_visible_line(line);
    }
  }
  scroll.go_to_end(false);
  EXPECT_TRUE(at_end());
  EXPECT_EQ(face.selection(), (TextSelection{static_cast<int>(face.text.size()), 0}));
  scroll.go_to_start(false);
  EXPECT_TRUE(at_start());
  EXPECT_EQ(face.selection(), TextSelection{});
}

TEST_F(ViewScrollTest, TroubleEndsTheStep) {
  view(std::string(100000, 'x'));
  files.add("/f.txt", std::string(100000, 'x')).breaks_at = 50000;
  for (int count = 0; viewer.loaded(); ++count) {
    ASSERT_LT(count, 5000);
    scroll.scroll_pages(1);
  }
  scroll.scroll_to(500);
  scroll.make_room(true, false);
  scroll.go_to_end(false);
  EXPECT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(face.redraw_held, 0);

  view(std::string(100000, 'y'));
  files.add("/f.txt", "new text", 5);
  scroll.scroll_to(scroll_maximum / 2);
  EXPECT_EQ(face.text, "new text");
  EXPECT_EQ(host.messages.size(), 2u);
}

}  // namespace
}  // namespace tallowmere
