#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>

#include "tests/native/literal_viewer.h"
#include "tests/support/fake_viewer.h"
#include "tests/support/memory_files.h"
#include "tests/support/seed.h"
#include "viewer/file_viewer.h"
#include "viewer/hit_navigation.h"

namespace tallowmere {
namespace {

using namespace std::string_literals;

const CodePage& page() {
  static const CodePage value = CodePage::windows_1252();
  return value;
}

/// Files that can vanish, and count what is read of them.
class LosableFiles : public MemoryFiles {
 public:
  bool gone = false;
  std::size_t bytes_read = 0;

  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    auto error = MemoryFiles::read(into, wanted, got);
    bytes_read += got;
    return error;
  }

  std::optional<SystemError> open(const std::string& folder, std::string_view name) override {
    if (gone) return SystemError{2, "File not found"};
    return MemoryFiles::open(folder, name);
  }
  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) override {
    if (gone) return SystemError{2, "File not found"};
    return MemoryFiles::facts(folder, name, facts);
  }
};

class Host : public FakeHost {
 public:
  std::function<void(int)> on_go_on;  ///< with the number of the call

  bool go_on() override {
    const bool on = FakeHost::go_on();
    if (on_go_on) on_go_on(steps_asked);
    return on;
  }
};

/// A viewer of the file "/f.txt", the second row of its list.
struct Viewing {
  LosableFiles files;
  ResultList results;
  FakeFace face;
  Host host;
  SearchCriteria search;
  FileViewer viewer{results, files, face, host};
  HitNavigation navigation{viewer, face, host};
  std::unique_ptr<HitFinder> finder;

  explicit Viewing(const std::string& text, const std::string& criteria = "hit",
                   int type = search_phrase, const std::string& name = "f.txt") {
    files.add("/" + name, text, ticks_per_second);
    results.add_file_row("/", "other", {ticks_per_second, 1});
    results.add_file_row("/", name, {ticks_per_second, std::ssize(text)});
    CriteriaInput input;
    input.criteria = criteria;
    input.search_type = type;
    input.prox_before = input.prox_after = 10;
    look_for(input);
  }

  void look_for(const CriteriaInput& input) {
    load_search_criteria(search, input, page());
    finder = std::make_unique<HitFinder>(search, page(),
                                         [this](std::int64_t position, std::int64_t length) {
                                           return viewer.read_window(position, length);
                                         });
  }

  Viewing& open() {
    EXPECT_TRUE(viewer.viewfile(1));
    return *this;
  }
  FindResult next() { return navigation.find_next(*finder); }
  FindResult prev() { return navigation.find_prev(*finder); }
  void load(std::int64_t start, std::int64_t position) {
    int line = 0;
    viewer.load_text_chunk(start, position, line);
  }
  std::int64_t hit_at() const { return viewer.file_position(face.selected.start); }
  std::string last_message() const { return host.messages.empty() ? "" : host.messages.back(); }
};

constexpr char no_hit[] =
    "Cannot Highlight Search Criteria: Selected file does not contain search criteria.";
constexpr char modified[] = "! File Has Changed: The file has been modified since last accessed.";

/// Dots with `hit` at each 1-based place.
std::string dots(std::size_t size, const std::vector<std::size_t>& hits) {
  std::string text(size, '.');
  for (const std::size_t at : hits) text.replace(at - 1, 3, "hit");
  return text;
}

// --- against the literal viewer

class Draw {
 public:
  explicit Draw(std::mt19937& random) : random_(random) {}

  std::size_t pick(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

  CriteriaInput criteria() {
    CriteriaInput input;
    input.search_type = static_cast<int>(pick(4));
    input.match_case = pick(2) == 0;
    range_ = 1 + pick(pick(2) == 0 ? 20 : 3000);
    input.prox_before = static_cast<int>(pick(range_));
    input.prox_after = static_cast<int>(pick(range_));
    input.prox_all = pick(2) == 0;
    words_.clear();
    for (std::size_t count = 1 + pick(3); words_.size() < count;) {
      const bool quoted = pick(2) == 0;
      words_.push_back(word());
      if (input.search_type == search_phrase) {
        input.criteria = words_.back();
      } else {
        input.criteria += (quoted ? "\"" : "") + words_.back() + (quoted ? "\" " : " ");
      }
    }
    if (pick(15) == 0) input.criteria += "\"\"";
    return input;
  }

  std::string file() {
    const std::size_t sizes[] = {1 + pick(60), 31000 + pick(3), 31000 + pick(31000),
                                 62000 + pick(9), 62000 + pick(70000)};
    std::string text(sizes[pick(std::size(sizes))], '.');
    scribble(text);
    for (std::size_t left = pick(9); left > 0; --left) plant(text);
    return text;
  }

 private:
  std::string word() {
    std::string text(1 + pick(pick(5) == 0 ? 300 : 4), ' ');
    for (char& c : text) c = "abAB_"[pick(5)];
    if (pick(12) == 0) text += "\r\n";
    return text;
  }

  /// Stretches of text, of line breaks and of binary.
  void scribble(std::string& text) {
    const std::string kinds[] = {"xyz. ", "xy\r\n", "\n", "\r\nx", "x\0y\0\0\x01\xE9"s, "\0"s};
    const std::size_t wild = pick(4) == 0 ? 6 : 1 + pick(3);
    for (std::size_t at = 0; at < text.size();) {
      const std::string& letters = kinds[pick(wild)];
      for (std::size_t left = pick(2000); left > 0 && at < text.size(); --left) {
        text[at++] = letters[pick(letters.size())];
      }
    }
  }

  /// Some words of the criteria near a seam, near an end of the file or anywhere.
  void plant(std::string& text) {
    const std::size_t size = text.size();
    const std::size_t places[] = {
        0, size, 31000, 62000, size - std::min<std::size_t>(size, 31000), pick(size)};
    std::size_t at = places[pick(std::size(places))] + pick(20);
    at -= std::min<std::size_t>(at, pick(pick(2) == 0 ? 20 : 320));
    for (std::size_t left = 1 + pick(4); left > 0 && at < size; --left) {
      std::string placed = words_[pick(words_.size())];
      if (pick(4) == 0) placed += 'a';
      if (pick(2) == 0) placed[0] = static_cast<char>(page().lower(static_cast<Byte>(placed[0])));
      placed.resize(std::min(placed.size(), size - at));
      text.replace(at, placed.size(), placed);
      at += placed.size() + pick(pick(2) == 0 ? 3 : range_ + 3);
    }
  }

  std::mt19937& random_;
  std::vector<std::string> words_;
  std::size_t range_ = 1;
};

testing::AssertionResult agree(const Viewing& real, const LiteralViewer& literal) {
  const ChunkPlace& place = real.viewer.place();
  const auto compare = [](const char* what, std::int64_t left, std::int64_t right) {
    return testing::AssertionFailure() << what << " " << left << ", literally " << right;
  };
  if (place.chunk_start != literal.chunk_start)
    return compare("chunk_start", place.chunk_start, literal.chunk_start);
  if (place.file_location != literal.file_location)
    return compare("file_location", place.file_location, literal.file_location);
  if (place.last_chunk != literal.last_chunk || real.viewer.chunk_pending)
    return compare("last_chunk", place.last_chunk, literal.last_chunk);
  if (real.face.selected.start != literal.sel_start)
    return compare("sel_start", real.face.selected.start, literal.sel_start);
  if (real.face.selected.length != literal.sel_length)
    return compare("sel_length", real.face.selected.length, literal.sel_length);
  if (real.host.beeps != literal.beeps) return compare("beeps", real.host.beeps, literal.beeps);
  if (std::ssize(real.host.messages) != literal.misses)
    return compare("messages", std::ssize(real.host.messages), literal.misses);
  if (real.face.text != literal.text1) return testing::AssertionFailure() << "text";
  if (real.viewer.chunk_text() != literal.text1) return testing::AssertionFailure() << "chunk_text";
  return testing::AssertionSuccess();
}

TEST(HitNavigation, AgreesWithTheLiteralViewer) {
  std::mt19937 random(test_seed());
  Draw draw(random);
  int found[4] = {}, wrapped = 0, missed = 0;
  for (int round = 0; round < 150; ++round) {
    const CriteriaInput input = draw.criteria();
    const std::string text = draw.file();
    Viewing real(text);
    real.look_for(input);
    real.open();
    LiteralViewer literal(text, "txt", real.search, page());
    std::string steps;
    for (int step = 0; step < 20; ++step) {
      const auto size = draw.pick(5) == 0 ? text.size() : std::size_t{0};
      if (size != 0 && step > 0) {  // scrolled to somewhere else
        const auto start = static_cast<std::int64_t>(draw.pick(size) + 1);
        const auto position = static_cast<std::int64_t>(draw.pick(31000) + 1);
        real.load(start, position);
        literal.load_text_chunk(start, position);
        steps += "S" + std::to_string(start) + "," + std::to_string(position);
      } else if (draw.pick(6) == 0 && step > 0) {  // the caret set by the user
        literal.sel_start = static_cast<std::int64_t>(draw.pick(literal.text1.size() + 1));
        literal.sel_length = 0;
        real.face.select(static_cast<int>(literal.sel_start), 0);
        steps += "C" + std::to_string(literal.sel_start);
      } else if (draw.pick(2) == 0) {
        steps += "N";
        real.next();
        literal.find_next();
      } else {
        steps += "P";
        real.prev();
        literal.find_prev();
      }
      ASSERT_TRUE(agree(real, literal))
          << "round " << round << " size " << text.size() << " type " << input.search_type
          << " criteria " << input.criteria << " steps " << steps;
      found[input.search_type] += real.face.selected.length > 0;
    }
    wrapped += literal.beeps;
    missed += literal.misses;
    EXPECT_EQ(real.files.opened, real.files.closed);
  }
  for (const int count : found) EXPECT_GT(count, 50);
  EXPECT_GT(wrapped, 50);
  EXPECT_GT(missed, 50);
}

// --- where hits are found

TEST(HitNavigation, EveryHitIsVisitedInBothDirections) {
  std::mt19937 random(test_seed());
  std::string text(100000, '.');
  for (const std::size_t seam : {0, 31000, 62000, 69000, 93000, 99990}) {
    for (std::size_t at = seam - std::min<std::size_t>(seam, 10); at < seam + 10; ++at) {
      if (random() % 2 == 0) text[at] = "ab"[random() % 2];
    }
  }
  std::vector<std::int64_t> expected;
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    const std::string two = text.substr(at, 2);
    if (two == "ab" || two == "ba") expected.push_back(static_cast<std::int64_t>(at + 1));
  }
  Viewing view(text, "\"ab\" \"ba\"", search_or);
  view.open();
  for (const std::int64_t at : expected) {
    ASSERT_EQ(view.next(), FindResult::found);
    ASSERT_EQ(view.hit_at(), at);
    ASSERT_EQ(view.host.beeps, 0);
  }
  view.next();
  EXPECT_EQ(view.hit_at(), expected.front());
  for (std::size_t left = expected.size(); left-- > 0;) {
    ASSERT_EQ(view.prev(), FindResult::found);
    ASSERT_EQ(view.hit_at(), expected[left]);
    ASSERT_EQ(view.host.beeps, 2);
  }
}

TEST(HitNavigation, FirstAndLastByteAndChunksAtTheEnd) {
  for (const std::size_t size : {6, 31000, 31001, 62000, 93001}) {
    const auto last = static_cast<std::int64_t>(size) - 2;
    Viewing view(dots(size, {1, size - 2}));
    view.open();
    for (const auto& [forward, at, beeps] : {std::tuple{false, std::int64_t{1}, 0},
                                             {true, last, 0},
                                             {true, 1, 1},
                                             {false, last, 2},
                                             {false, 1, 2}}) {
      ASSERT_EQ(forward ? view.next() : view.prev(), FindResult::found) << size;
      ASSERT_EQ(view.hit_at(), at) << size;
      ASSERT_EQ(view.face.selected_text(), "hit");
      ASSERT_EQ(view.host.beeps, beeps) << size;
      if (at == last) {
        ASSERT_EQ(view.viewer.place().chunk_start, std::max<std::int64_t>(last + 2 - 30999, 1));
        ASSERT_TRUE(view.viewer.place().last_chunk);
      }
    }
    EXPECT_EQ(view.face.redraw_held, 0);
  }
}

TEST(HitNavigation, ASingleHitIsFoundAgainRoundTheEnd) {
  for (const std::size_t size : {100, 31000, 31001, 100000}) {
    for (const std::size_t at : {std::size_t{1}, size / 2, size - 2}) {
      Viewing view(dots(size, {at}));
      view.open();
      for (int step = 0; step < 5; ++step) {
        ASSERT_EQ(step < 3 ? view.next() : view.prev(), FindResult::found);
        ASSERT_EQ(view.hit_at(), static_cast<std::int64_t>(at)) << size;
        ASSERT_EQ(view.host.beeps, step) << size << " " << at;
      }
    }
  }
}

TEST(HitNavigation, HitsAreFoundWhereverTheViewWasScrolledTo) {
  for (const std::int64_t start : {2, 100, 20000, 29001}) {
    for (const std::size_t hit : {1, 120, 5000, 28000, 45000, 59998}) {
      for (const bool forward : {true, false}) {
        Viewing view(dots(60000, {hit}));
        view.open().load(start, 50);
        EXPECT_EQ(forward ? view.next() : view.prev(), FindResult::found)
            << start << " " << hit << " " << forward;
        EXPECT_EQ(view.hit_at(), static_cast<std::int64_t>(hit));
      }
    }
  }
}

TEST(HitNavigation, OfTermsAtOnePlaceTheLaterWinsForwardsAndTheEarlierBackwards) {
  for (const auto& [criteria, next, prev] :
       {std::tuple{"\"ab\" \"abc\"", 3, 2}, {"\"abc\" \"ab\"", 2, 3}}) {
    Viewing view("..abc..", criteria, search_and);
    view.open().next();
    EXPECT_EQ(view.face.selected, (TextSelection{2, next}));
    view.prev();
    EXPECT_EQ(view.face.selected, (TextSelection{2, prev}));
  }
}

TEST(HitNavigation, NearWindowsReachOverSeamsAndEndWithTheFile) {
  const struct {
    std::size_t cat, first_dog, last_dog;  ///< where the other word is near enough
  } cases[] = {
      {1000, 995, 1008},
      {30998, 30993, 31006},  // ends the first chunk
      {30999, 30994, 31007},  // begins the second
      {31003, 30998, 31011},
      {31004, 30999, 31012},
      {3, 6, 14},  // cut off by the beginning of the file, the window reaches further behind
      {69990, 69985, 69998},
      {69994, 69989, 69998},
  };
  for (const auto& [cat, first_dog, last_dog] : cases) {
    for (std::size_t dog = std::max<std::size_t>(cat, 9) - 8; dog <= cat + 12; ++dog) {
      if ((dog < cat + 3 && cat < dog + 3) || dog + 2 > 70000) continue;
      std::string text(70000, '.');
      text.replace(cat - 1, 3, "cat").replace(dog - 1, 3, "dog");
      Viewing view(text);
      view.look_for({"\"cat\" \"dog\"", search_near, false, 5, 8, false});
      const bool near = dog >= first_dog && dog <= last_dog;
      ASSERT_EQ(view.open().next(), near ? FindResult::found : FindResult::not_found)
          << cat << " " << dog;
    }
  }
}

TEST(HitNavigation, WindowsDoNotMakeTheFileBeReadOverAndOver) {
  std::string text;
  while (text.size() < 6000000) text += "the weather will be the same tomorrow ";
  for (const bool forward : {true, false}) {
    Viewing view(text);
    view.look_for({"the absentee", search_near, false, 110, 110, false});
    view.open();
    if (!forward) view.load(1, 1);
    view.files.bytes_read = 0;
    EXPECT_EQ(forward ? view.next() : view.prev(), FindResult::not_found);
    EXPECT_LT(view.files.bytes_read, 2 * text.size());
  }
}

TEST(HitNavigation, CriteriaAsLongAsAChunkAndLonger) {
  const std::string chunk(31000, 'n');
  Viewing fits(std::string(20, '.') + chunk + std::string(30, '.'), chunk);
  EXPECT_EQ(fits.open().next(), FindResult::found);
  EXPECT_EQ(fits.hit_at(), 21);
  Viewing longer(chunk + chunk + "hit", "\"n" + chunk + "\" \"hit\"", search_or);
  EXPECT_EQ(longer.open().next(), FindResult::found);
  EXPECT_EQ(longer.hit_at(), 62001);
  Viewing never(chunk + chunk, chunk + "n");
  EXPECT_EQ(never.open().next(), FindResult::not_found);
  EXPECT_EQ(never.last_message(), no_hit);
}

TEST(HitNavigation, NothingToFind) {
  Viewing empty("some text", "");
  EXPECT_EQ(empty.open().next(), FindResult::not_found);
  EXPECT_EQ(empty.face.text, "some text");
  EXPECT_TRUE(empty.face.is_enabled && empty.host.messages.empty());
  EXPECT_EQ(Viewing("x", "\"\"", search_or).open().next(), FindResult::not_found);

  Viewing line_feeds(std::string(70000, '\n'));
  line_feeds.open().load(50000, 9);
  EXPECT_EQ(line_feeds.next(), FindResult::not_found);
  EXPECT_EQ(line_feeds.host.messages, std::vector<std::string>{no_hit});
  EXPECT_EQ(line_feeds.face.text.size(), 3001u);
  EXPECT_EQ(line_feeds.face.selected, TextSelection{});
  EXPECT_EQ(line_feeds.viewer.place().chunk_start, 1);
  EXPECT_EQ(line_feeds.host.beeps, 0);
}

TEST(HitFinder, SelectionsThatRepeatTheCriteria) {
  const auto repeats = [](const char* criteria, int type, bool match_case, const char* selection) {
    Viewing view("x");
    view.look_for({criteria, type, match_case, 0, 0, false});
    return view.finder->repeats_criteria(selection);
  };
  EXPECT_TRUE(repeats("A cat", search_phrase, false, "a CAT"));
  EXPECT_FALSE(repeats("A cat", search_phrase, true, "a CAT"));
  EXPECT_FALSE(repeats("A cat", search_phrase, false, "cat"));
  EXPECT_TRUE(repeats("A cat", search_near, false, "CAT"));
  EXPECT_FALSE(repeats("A cat", search_or, true, "CAT"));
  EXPECT_FALSE(repeats("A cat \"\"", search_or, false, ""));
}

// --- what shows

TEST(FileViewer, WriteFileShowsItsHeaderOnALineOfItsOwn) {
  Viewing view("1\xBE" + std::string(126, '\1') + "text hit", "hit", search_phrase, "f.wri");
  view.open().next();
  EXPECT_EQ(view.face.line_count(), 5);  // the header wraps at 40 columns
  EXPECT_EQ(view.face.line_text(4), "text hit");
  EXPECT_EQ(view.face.selected_text(), "hit");
  EXPECT_EQ(view.hit_at(), 134);
}

TEST(FileViewer, PlacesChunksWithinTheFile) {
  const struct {
    std::int64_t size, asked, position, start, caret;
  } cases[] = {{31000, 1, 10, 1, 9},   {31000, 2, 10, 1, 10}, {31001, 2, 10, 2, 9},
               {31001, 1, 10, 1, 9},   {50, 40, 5, 1, 43},    {90000, 80000, 5, 59001, 21003},
               {90000, -5, 100, 1, 94}};  // going back, one more character is looked at
  for (const auto& [size, asked, position, start, caret] : cases) {
    Viewing view(std::string(static_cast<std::size_t>(size), '.'));
    view.open().load(asked, position);
    EXPECT_EQ(view.viewer.place().chunk_start, start) << size << " " << asked;
    EXPECT_EQ(view.viewer.place().last_chunk, start + 31000 > size) << size << " " << asked;
    EXPECT_EQ(view.face.selected.start, caret) << size << " " << asked;
    EXPECT_EQ(std::ssize(view.face.text), std::min<std::int64_t>(size, 31000));
  }
}

TEST(HitNavigation, TheLineOfAHitStandsInTheMiddle) {
  std::string text;
  for (int line = 0; line < 1000; ++line) {
    text += line == 2 || line == 500 || line == 998 ? "a hit\r\n" : "text\r\n";
  }
  Viewing view(text);
  view.open();
  for (const int top : {0, 495, 991}) {
    view.next();
    EXPECT_EQ(view.face.first_visible_line(), top);
  }
}

TEST(FileViewer, ScrollValuesRoundHalvesToEven) {
  Viewing small(dots(64, {}));
  small.open().load(1, 1);
  for (const auto& [start, length, value, end_value] : {std::tuple{0, 0, 1562, 1562},
                                                        {0, 2, 1562, 4688},
                                                        {4, 2, 7812, 10938},
                                                        {64, 0, 100000, 100000}}) {
    small.face.select(start, length);
    small.viewer.update_scroll_value();
    EXPECT_EQ(small.face.scroll_value, value) << start;
    small.viewer.backward_scroll_value();
    EXPECT_EQ(small.face.scroll_value, end_value) << start;
  }
  Viewing large(dots(200000, {}));
  large.open().load(199999, 1);
  large.face.select(999, 1000);
  large.viewer.update_scroll_value();
  EXPECT_EQ(large.face.scroll_value, 85000);
  large.face.enable(false);
  large.face.select(0, 0);
  large.viewer.update_scroll_value();
  EXPECT_EQ(large.face.scroll_value, 85000);
}

TEST(HitNavigation, TheBeginningOfALongFileShowsWhileItIsSearched) {
  Viewing view("beginning" + dots(31000 * 80, {31000 * 79}));
  std::string early, late;
  view.host.on_go_on = [&](int call) { (call < 60 ? early : late) = view.face.text.substr(0, 9); };
  EXPECT_EQ(view.open().next(), FindResult::found);
  EXPECT_EQ(early, "");
  EXPECT_EQ(late, "beginning");
  EXPECT_EQ(view.hit_at(), 31000 * 79 + 9);
}

// --- interruptions and trouble

TEST(HitNavigation, AStoppedStepLeavesTheViewAsItWas) {
  Viewing view(dots(400000, {100000, 390000}));
  view.open().next();
  for (const bool forward : {true, false}) {
    const std::string text = view.face.text;
    const TextSelection selection = view.face.selected;
    const ChunkPlace place = view.viewer.place();
    view.host.steps_allowed = view.host.steps_asked + 2;
    ASSERT_EQ(forward ? view.next() : view.prev(), FindResult::stopped);
    EXPECT_EQ(view.face.text, text);
    EXPECT_EQ(view.viewer.chunk_text(), text);
    EXPECT_EQ(view.face.selected, selection);
    EXPECT_EQ(view.viewer.place().chunk_start, place.chunk_start);
    EXPECT_EQ(view.viewer.place().file_location, place.file_location);
    view.host.steps_allowed = 1 << 30;
    ASSERT_EQ(forward ? view.next() : view.prev(), FindResult::found);
    EXPECT_EQ(view.hit_at(), forward ? 390000 : 100000);
  }
  EXPECT_EQ(view.host.beeps, 0);

  Viewing fresh(dots(400000, {390000}));
  fresh.host.steps_allowed = 2;
  EXPECT_EQ(fresh.open().next(), FindResult::stopped);
  EXPECT_EQ(fresh.face.text, std::string(31000, '.'));
  EXPECT_TRUE(fresh.face.is_enabled);
  fresh.host.steps_allowed = 1 << 30;
  EXPECT_EQ(fresh.next(), FindResult::found);
  EXPECT_TRUE(fresh.host.messages.empty());
}

void expect_cleared(const Viewing& view) {
  EXPECT_FALSE(view.viewer.loaded());
  EXPECT_EQ(view.results.viewed_index, -2);
  EXPECT_EQ(view.face.text, "");
  EXPECT_FALSE(view.face.is_enabled);
  EXPECT_EQ(view.host.cleared, 1);
  EXPECT_LE(view.files.opened, view.files.closed);
}

constexpr char not_found_message[] =
    "! Cannot Open File: File not found - encountered while trying to OPEN /f.txt.";
constexpr char no_data[] = "! Cannot Get Data: Data error - encountered while trying to GET DATA.";

/// Makes the file what a row of a table says.
void change(Viewing& view, const std::string& how) {
  if (how == "gone") view.files.gone = true;
  if (how == "locked" || how == "broken") {
    auto& file = view.files.add("/f.txt", dots(100000, {50, 90000}), ticks_per_second);
    file.unreadable = how == "locked";
    if (how == "broken") file.breaks_at = 0;
  }
  if (how == "empty") view.files.add("/f.txt", "", 5 * ticks_per_second);
  if (how == "grown") view.files.add("/f.txt", dots(200000, {95000}), 5 * ticks_per_second);
  if (how == "shrunk") view.files.add("/f.txt", dots(40, {20}), 5 * ticks_per_second);
  if (how == "touched") view.files.add("/f.txt", dots(100000, {7}), 5 * ticks_per_second);
}

TEST(FileViewer, TroubleOnOpening) {
  const struct {
    const char *how, *message;
    FileRecord row;
  } cases[] = {
      {"gone", not_found_message, {"f.txt", 0, "/", 0}},
      {"locked",
       "! Cannot Open File: Access is denied - encountered while trying to OPEN /f.txt.",
       {"f.txt", ticks_per_second, "/", 100000}},
      {"empty",
       "! Cannot View File: File contains zero bytes.",
       {"f.txt", 5 * ticks_per_second, "/", 0}},
  };
  for (const auto& [how, message, row] : cases) {
    SCOPED_TRACE(how);
    Viewing view(dots(100000, {50, 90000}));
    change(view, how);
    EXPECT_FALSE(view.viewer.viewfile(1));
    EXPECT_EQ(view.host.messages, std::vector<std::string>{message});
    EXPECT_EQ(view.results.record(1), row);
    EXPECT_EQ(view.host.corrected.size(), how == "locked"s ? 0u : 1u);
    expect_cleared(view);
    EXPECT_EQ(view.next(), FindResult::no_file);
    EXPECT_EQ(view.host.messages.size(), 1u);
  }
}

TEST(FileViewer, TroubleWhileViewed) {
  const struct {
    const char* how;
    std::vector<std::string> messages;
    std::int64_t hit, size;  ///< 0: no hit, the viewer is empty
  } cases[] = {
      {"gone", {not_found_message}, 0, 0},
      {"locked",
       {"! Cannot Get Data: Access is denied - encountered while trying to GET DATA."},
       0,
       100000},
      {"broken", {no_data}, 0, 100000},
      {"empty", {modified, "! Cannot View File: File contains zero bytes."}, 0, 0},
      {"grown", {modified}, 95000, 200000},
      {"shrunk", {modified}, 20, 40},
      {"touched", {modified}, 7, 100000},
  };
  for (const auto& [how, messages, hit, size] : cases) {
    for (const bool forward : {true, false}) {
      SCOPED_TRACE(how);
      Viewing view(dots(100000, {50, 90000}));
      view.open().next();
      change(view, how);
      const FindResult result = forward ? view.next() : view.prev();
      EXPECT_EQ(result, hit ? FindResult::found : FindResult::no_file);
      EXPECT_EQ(view.host.messages, messages);
      EXPECT_EQ(view.results.record(1).filesize, size);
      EXPECT_EQ(view.results.record(0).filesize, 1);
      EXPECT_EQ(view.host.beeps, 0);
      EXPECT_EQ(view.files.opened, view.files.closed);
      if (hit == 0) {
        expect_cleared(view);
      } else {
        EXPECT_EQ(view.hit_at(), hit);
        EXPECT_EQ(view.host.selected_rows, std::vector<std::size_t>{1});
        EXPECT_EQ(view.viewer.file_length(), size);
      }
    }
  }
}

TEST(HitNavigation, AFileChangedJustBeforeItsBeginningShows) {
  for (const int call : {10, 63, 64, 65}) {
    Viewing view(dots(31000 * 70, {}));
    view.host.on_go_on = [&](int now) {
      if (now == call) view.files.add("/f.txt", dots(100000, {4}), 9 * ticks_per_second);
    };
    EXPECT_EQ(view.open().next(), FindResult::found) << call << view.last_message();
    EXPECT_EQ(view.host.messages, std::vector<std::string>{modified});
    EXPECT_EQ(view.hit_at(), 4);
  }
}

TEST(FileViewer, WhatLiesBeforeADefectShows) {
  Viewing view(dots(3000000, {100000}));
  view.files.add("/f.txt", dots(3000000, {100000}), ticks_per_second).breaks_at = 500000;
  EXPECT_EQ(view.open().next(), FindResult::found);
  EXPECT_EQ(view.next(), FindResult::no_file);
  EXPECT_EQ(view.last_message(), no_data);
  expect_cleared(view);
}

}  // namespace
}  // namespace tallowmere
