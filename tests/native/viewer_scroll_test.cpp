#include <gtest/gtest.h>

#include <random>

#include "results/result_list.h"
#include "tests/support/fake_viewer.h"
#include "tests/support/memory_files.h"
#include "tests/support/seed.h"
#include "viewer/file_viewer.h"
#include "viewer/view_scroll.h"

namespace tallowmere {
namespace {

using Lines = std::vector<std::string>;

/// A viewer with a file on view.
class ViewScrollTest : public testing::Test {
 protected:
  void view(std::string text) {
    results.setup_new_list();
    const MemoryFiles::File& file = files.add("/f.txt", std::move(text));
    results.add_file_row("/f.txt", file.facts);
    ASSERT_TRUE(viewer.viewfile(0));
    std::int64_t position = 1;
    int line = 0;
    ASSERT_EQ(viewer.load_text_chunk(1, position, line), ChunkResult::ok);
  }

  /// The file position at which the view begins.
  std::int64_t top() const {
    return viewer.file_position(face.line_index(face.first_visible_line()));
  }
  bool at_start() const {
    return viewer.place().chunk_start == 1 && face.first_visible_line() == 0;
  }
  bool at_end() const {
    return viewer.place().last_chunk && face.first_visible_line() + face.page >= face.line_count();
  }

  /// Scrolls in steps to the end (+) or the start (-) of the file. What stays on view must stand
  /// exactly `step` lines away, unless the end of the file was reached.
  void walk(int step) {
    const auto end_reached = [&] { return step > 0 ? at_end() : at_start(); };
    for (int count = 0; !end_reached(); ++count) {
      ASSERT_LT(count, 100000) << "never reaches the end";
      const Lines before = face.lines_on_view();
      const std::int64_t top_before = top();
      scroll.scroll_lines(step);
      ASSERT_EQ(step > 0, top() > top_before);
      ASSERT_EQ(face.redraw_held, 0);
      ASSERT_EQ(face.scroll_value == scroll_maximum, at_end());
      ASSERT_EQ(face.scroll_value == 0, at_start());
      if (end_reached()) break;
      ASSERT_NO_FATAL_FAILURE(expect_shifted(before, step)) << top_before;
    }
  }

  void expect_shifted(const Lines& before, int step) {
    const Lines after = face.lines_on_view();
    ASSERT_EQ(after.size(), before.size());
    const auto distance = static_cast<std::size_t>(std::abs(step));
    for (std::size_t i = distance; i < before.size(); ++i) {
      const std::size_t j = i - distance;
      ASSERT_EQ(step > 0 ? after[j] : after[i], step > 0 ? before[i] : before[j]);
    }
  }

  ResultList results;
  MemoryFiles files;
  FakeFace face;
  FakeHost host;
  FileViewer viewer{results, files, face, host};
  ViewScroll scroll{viewer, face};
};

/// Paragraphs of up to `longest` bytes with endings of all kinds, or of the one kind given.
std::string random_text(std::mt19937& random, std::size_t size, int longest, int kind) {
  static constexpr std::string_view endings[] = {
      "\r\n", "\n", "\r", std::string_view("\0", 1), "\n\n", "\r\n\r\n", "\r\r\n"};
  std::uniform_int_distribution<int> any(0, static_cast<int>(std::size(endings)) - 1);
  std::uniform_int_distribution<int> length(0, longest);
  std::string text;
  while (text.size() < size) {
    for (int left = length(random); left > 0; --left) {
      text += random() % 8 == 0 ? ' ' : static_cast<char>('a' + random() % 26);
    }
    text += endings[kind < 0 ? any(random) : kind];
  }
  return text;
}

TEST_F(ViewScrollTest, TextIsContinuousThroughTheFile) {
  std::mt19937 random(test_seed());
  struct Case {
    std::size_t size;
    int longest, kind, page, step;
    bool wrap_at_blanks;
  };
  // Steps of a line and of a page; long and short paragraphs; line breaks that crowd a chunk.
  const Case cases[] = {{100000, 300, -1, 10, 1, false}, {300000, 1500, -1, 10, 9, true},
                        {100000, 80, 0, 30, 1, true},    {300000, 20, 1, 25, 24, false},
                        {80000, 4, 1, 20, 1, false},     {90000, 0, 1, 10, 9, false},
                        {100000, 200, 2, 10, 1, true},   {20000, 100, -1, 10, 1, false},
                        {31001, 100, -1, 10, 3, true},   {300000, 400, -1, 50, 200, true}};
  for (const Case& a : cases) {
    SCOPED_TRACE(testing::Message() << a.size << "/" << a.longest << "/" << a.kind);
    face.page = a.page;
    face.wrap_at_blanks = a.wrap_at_blanks;
    ASSERT_NO_FATAL_FAILURE(view(random_text(random, a.size, a.longest, a.kind)));
    ASSERT_NO_FATAL_FAILURE(walk(a.step));
    ASSERT_NO_FATAL_FAILURE(walk(-a.step));
    EXPECT_LT(face.texts_set, static_cast<int>(a.size / 400 + 10)) << "loads too often";
    face.texts_set = 0;
  }
}

TEST_F(ViewScrollTest, LastChunkBeginsInsideAParagraph) {
  std::string text;
  for (int paragraph = 0; paragraph < 40; ++paragraph) {
    for (int i = 0; i < 1498; ++i) text += static_cast<char>('a' + i / 40 % 26);
    text += "\r\n";
  }
  view(text);
  scroll.go_to_end();
  walk(-1);
}

// Without line breaks the last chunk, whose place is fixed, may wrap differently: the view may then
// be off by less than a line, but goes on.
TEST_F(ViewScrollTest, TextWithoutLineBreaks) {
  std::string text;
  for (int word = 0; text.size() < 400000; ++word) text += std::to_string(word * 7919) + "-";
  for (const bool blanks : {false, true}) {
    if (blanks) std::replace(text.begin(), text.end(), '-', ' ');
    face.wrap_at_blanks = blanks;
    ASSERT_NO_FATAL_FAILURE(view(text));
    for (const int step : {9, -9}) {
      int jumps = 0;
      for (int count = 0; step > 0 ? !at_end() : !at_start(); ++count) {
        ASSERT_LT(count, 2000);
        const std::int64_t before = top();
        scroll.scroll_lines(step);
        const std::int64_t moved = std::abs(top() - before);
        ASSERT_EQ(step > 0, top() > before);
        ASSERT_LE(moved, 10 * face.columns);
        if (moved % face.columns != 0) ++jumps;
      }
      EXPECT_TRUE(blanks || jumps <= 2) << jumps;
    }
  }
}

// Little of a chunk, or nothing, then lies beside what is on view.
TEST_F(ViewScrollTest, ViewAsLongAsAChunk) {
  face.columns = 200;
  std::string text;
  for (int word = 0; text.size() < 90000; ++word) text += std::to_string(word) + "\n ";
  for (const std::string& a : {text, std::string(150000, 'x')}) {
    for (const int page : {140, 300}) {
      face.page = page;
      ASSERT_NO_FATAL_FAILURE(view(a));
      for (const int step : {3, -3}) {
        for (int count = 0; step > 0 ? !at_end() : !at_start(); ++count) {
          ASSERT_LT(count, 20000);
          const std::int64_t before = top();
          scroll.scroll_lines(step);
          ASSERT_TRUE(step < 0 || top() > before || at_end());
          ASSERT_TRUE(page == 300 || std::abs(top() - before) <= 4 * face.columns);
        }
      }
    }
  }
}

TEST_F(ViewScrollTest, ThumbReachesEveryPlace) {
  std::mt19937 random(test_seed());
  const std::string text = random_text(random, 2000000, 200, -1);
  view(text);
  for (const int value : {1, 20000, 77777, 99999, 50000, 50001, 3}) {
    scroll.scroll_to(value);
    EXPECT_NEAR(face.scroll_value, value, 50);
    EXPECT_NEAR(static_cast<double>(top()), value * 20.0, 1000);
    const auto place = static_cast<double>(top());
    scroll.scroll_to(face.scroll_value);
    EXPECT_NEAR(static_cast<double>(top()), place, 40) << value;
  }
  scroll.scroll_to(scroll_maximum);
  EXPECT_TRUE(at_end());
  EXPECT_EQ(face.scroll_value, scroll_maximum);
  scroll.scroll_to(0);
  EXPECT_TRUE(at_start());
  EXPECT_EQ(face.scroll_value, 0);
  view("one line");
  scroll.scroll_to(60000);
  scroll.scroll_pages(3);
  EXPECT_EQ(face.scroll_value, 0);
}

/// One file of 10 GB: numbered lines of 50 bytes.
class HugeFile : public FileSystem {
 public:
  static constexpr std::int64_t size = 10'000'000'000;

  std::optional<SystemError> list_folder(const std::string&, FolderListing&,
                                         const std::function<bool()>&) override {
    return std::nullopt;
  }
  std::optional<SystemError> open(const std::string&, std::string_view) override {
    return std::nullopt;
  }
  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    got = static_cast<std::size_t>(std::min(static_cast<std::int64_t>(wanted), size - at_));
    for (std::size_t i = 0; i < got; ++i, ++at_) {
      const std::string number = std::to_string(at_ / 50);
      const auto column = static_cast<std::size_t>(at_ % 50);
      into[i] =
          column < number.size() ? number[column] : " \r\n"[std::max<std::size_t>(column, 47) - 47];
    }
    return std::nullopt;
  }
  std::optional<SystemError> seek(std::int64_t position) override {
    at_ = position;
    return std::nullopt;
  }
  void close() override {}
  std::optional<SystemError> facts(const std::string&, std::string_view,
                                   FileFacts& facts) override {
    facts = {1, size};
    return std::nullopt;
  }

 private:
  std::int64_t at_ = 0;
};

TEST(ViewScroll, GoesThroughAFileOfTenGigabytes) {
  ResultList results;
  HugeFile files;
  FakeFace face;
  face.columns = 60;
  FakeHost host;
  FileViewer viewer(results, files, face, host);
  ViewScroll scroll(viewer, face);
  results.add_file_row("/huge", FileFacts{1, HugeFile::size});
  ASSERT_TRUE(viewer.viewfile(0));
  std::int64_t position = 1;
  int line = 0;
  ASSERT_EQ(viewer.load_text_chunk(1, position, line), ChunkResult::ok);
  const auto first_number = [&] { return std::stoll(face.lines_on_view().front()); };
  scroll.scroll_to(scroll_maximum / 2);
  EXPECT_NEAR(static_cast<double>(first_number()), 1e8, 2000);
  EXPECT_NEAR(face.scroll_value, scroll_maximum / 2, 1);
  const std::int64_t middle = first_number();
  scroll.scroll_lines(2000);
  EXPECT_EQ(first_number(), middle + 2000);
  scroll.scroll_lines(-5000);
  EXPECT_EQ(first_number(), middle - 3000);
  scroll.go_to_end();
  EXPECT_EQ(face.scroll_value, scroll_maximum);
  scroll.scroll_lines(-3000);
  // The last line is empty.
  EXPECT_EQ(first_number(), HugeFile::size / 50 - face.page + 1 - 3000);
}

TEST_F(ViewScrollTest, SelectionStaysOrLeavesWithItsChunk) {
  std::mt19937 random(test_seed());
  const std::string text = random_text(random, 200000, 100, 0);
  view(text);
  std::size_t at = 20000;
  while (text[at] == '\n' || text[at + 30] == '\n') ++at;  // not between CR and LF
  face.select(viewer.character_at(at + 1), 30);
  const std::string selected = face.selected_text();
  while (viewer.place().chunk_start == 1) scroll.scroll_pages(1);
  EXPECT_EQ(face.selected_text(), selected);
  while (viewer.place().chunk_start <= static_cast<std::int64_t>(at) + 30) {
    scroll.scroll_pages(1);
  }
  EXPECT_EQ(face.selection().length, 0);
  const int caret = face.line_from_char(face.selection().start);
  EXPECT_LT(std::abs(face.first_visible_line() - caret), 2 * face.page);
}

// As the text box does it: each key moves the caret by a line, and the view after it.
TEST_F(ViewScrollTest, KeysExtendTheSelectionAcrossChunks) {
  std::mt19937 random(test_seed());
  view(random_text(random, 100000, 100, 0));
  const int anchor = face.line_index(600);
  const std::int64_t anchor_position = viewer.file_position(anchor);
  face.select(anchor, 0);
  int line = 600;
  while (viewer.place().chunk_start == 1) {
    scroll.make_room(true);
    const TextSelection now = face.selection();
    ASSERT_EQ(viewer.file_position(now.start), anchor_position);
    line = face.line_from_char(now.start + now.length) + 1;
    ASSERT_LE(line + face.page, face.line_count());
    face.select(now.start, face.line_index(line) - now.start);
    face.set_first_visible_line(line);
  }
  // And upwards, with the caret before the anchor.
  face.select(face.line_index(2 * face.page), 0);
  const std::int64_t from = viewer.file_position(face.selection().start);
  face.set_first_visible_line(2 * face.page);
  while (viewer.place().chunk_start != 1) {
    scroll.make_room(false, face.caret_first);
    const TextSelection now = face.selection();
    ASSERT_EQ(viewer.file_position(now.start + now.length), from);
    line = face.line_from_char(now.start) - 1;
    ASSERT_GE(line, 0);
    const int end = now.start + now.length;
    face.select(end, face.line_index(line) - end);
    face.set_first_visible_line(line);
  }
  scroll.go_to_end();
  EXPECT_TRUE(at_end());
  EXPECT_EQ(face.selection(), (TextSelection{static_cast<int>(face.text.size()), 0}));
  scroll.go_to_start();
  EXPECT_TRUE(at_start());
  EXPECT_EQ(face.selection(), TextSelection{});
}

TEST_F(ViewScrollTest, TroubleEndsTheStep) {
  view(std::string(100000, 'x'));
  MemoryFiles::File& file = files.add("/f.txt", std::string(100000, 'x'));
  file.breaks_at = 50000;
  for (int count = 0; viewer.loaded(); ++count) {
    ASSERT_LT(count, 5000);
    scroll.scroll_pages(1);
  }
  EXPECT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(face.redraw_held, 0);
  scroll.scroll_to(500);
  scroll.make_room(true);
  scroll.go_to_end();
  EXPECT_EQ(host.messages.size(), 1u);

  view(std::string(100000, 'y'));
  scroll.scroll_to(500);
  files.add("/f.txt", "new text", 5);
  scroll.scroll_to(scroll_maximum / 2);
  EXPECT_EQ(face.text, "new text");
  EXPECT_EQ(host.messages.size(), 2u);
}

}  // namespace
}  // namespace tallowmere
