#include <gtest/gtest.h>

#include <random>

#include "engine/text_matcher.h"
#include "tests/native/literal_matcher.h"
#include "tests/support/memory_files.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

constexpr std::size_t chunk = FileChunks::chunk_size;

const CodePage& page() {
  static const CodePage value = CodePage::windows_1252();
  return value;
}

bool go_on() {
  return true;
}

struct Case {
  CriteriaInput input;
  SearchCriteria search;

  explicit Case(std::string criteria, int type = search_or, bool match_case = false) {
    input.criteria = std::move(criteria);
    input.search_type = type;
    input.match_case = match_case;
    input.prox_before = 10;
    input.prox_after = 10;
  }

  MatchOutcome outcome(const std::string& text, Kernel kernel = Kernel::fastest) {
    load_search_criteria(search, input, page());
    MemoryFiles files;
    files.add("f", text);
    const auto file = files.reader();
    EXPECT_FALSE(file->open("", "f").has_value());
    SystemError error;
    const MatchOutcome result =
        TextMatcher(search, page(), kernel).match_open_file(*file, go_on, error);
    EXPECT_EQ(files.opened, files.closed);
    return result;
  }

  bool matches(const std::string& text) { return outcome(text) == MatchOutcome::match; }
};

bool matches(const std::string& criteria, int type, const std::string& text) {
  return Case(criteria, type).matches(text);
}

/// `text` with `part` put over it at a 0-based position.
std::string with(std::string text, std::size_t at, const std::string& part) {
  return text.replace(at, part.size(), part);
}

TEST(Matcher, TermsAndWholeWords) {
  EXPECT_TRUE(matches("cat dog", search_and, "a DOG and a Cat"));
  EXPECT_FALSE(matches("cat dog", search_and, "a dog and concat"));
  EXPECT_TRUE(matches("\"cat\" dog", search_and, "a dog and concat"));
  EXPECT_TRUE(matches("cat dog", search_or, "hot dog"));
  EXPECT_FALSE(matches("cat", search_or,
                       "cats \xE9"
                       "cat cat\xC0"));
  EXPECT_TRUE(matches("cat", search_or, "_cat_"));
  EXPECT_TRUE(matches("abc", search_or, "abc123"));
  EXPECT_TRUE(matches("cat", search_or, "cat"));
  EXPECT_FALSE(Case("Cat", search_or, true).matches("cat CAT"));
  EXPECT_TRUE(matches("\xC3\x89t\xC3\xA9", search_or, "l'\xE9T\xC9!"));
  EXPECT_TRUE(matches("a cat", search_phrase, "was A CATalogue"));
  EXPECT_FALSE(matches("\xE4\xB8\xAD", search_phrase, "? \x3F"));
  EXPECT_TRUE(matches("\xE4\xB8\xAD cat", search_or, "cat"));
  EXPECT_FALSE(matches("\xE4\xB8\xAD cat", search_and, "cat"));
}

TEST(Matcher, EmptyCriteriaAndEmptyFiles) {
  for (const int type : {search_and, search_or, search_near}) {
    EXPECT_TRUE(matches("  ", type, ""));
    EXPECT_TRUE(matches("\"\"", type, "x"));
    EXPECT_FALSE(matches("x", type, ""));
  }
  EXPECT_TRUE(matches("", search_phrase, ""));
  EXPECT_FALSE(matches(" ", search_phrase, ""));
  EXPECT_TRUE(matches("\"\" zzz", search_or, "x"));
  EXPECT_FALSE(matches("\"\" zzz", search_or, ""));
  Case nothing_around("\"\" zzz", search_near);
  nothing_around.input.prox_before = nothing_around.input.prox_after = 0;
  EXPECT_TRUE(nothing_around.matches("x"));
}

TEST(Matcher, OccurrencesAcrossTheSeamOfTwoChunks) {
  const std::string text(2 * chunk, '.');
  const std::string seam = with(text, chunk - 2, "needle");
  EXPECT_TRUE(matches("needle", search_or, seam));
  EXPECT_TRUE(matches("needle", search_phrase, seam));
  EXPECT_TRUE(matches("needle", search_near, seam));
  EXPECT_TRUE(matches("needle", search_and, seam));
  EXPECT_FALSE(matches("needle", search_or, with(seam, chunk - 3, "x")));
  // AND finds only its last term there, and only when the others came in an earlier chunk.
  EXPECT_TRUE(matches("cat needle", search_and, with(seam, 5, "cat")));
  EXPECT_FALSE(matches("needle cat", search_and, with(seam, 5, "cat")));
  EXPECT_FALSE(matches("cat needle", search_and, with(seam, chunk + 50, "cat")));
  // A term that ends with the file in a last chunk shorter than it is passed over; not so a phrase.
  const std::string short_end = with(text, chunk - 2, "cat").substr(0, chunk + 1);
  EXPECT_FALSE(matches("cat", search_or, short_end));
  EXPECT_TRUE(matches("cat", search_phrase, short_end));
  EXPECT_TRUE(matches("cat", search_or, short_end + "."));
}

TEST(Matcher, WholeWordsAtTheEndsOfChunksSeeTheirNeighbours) {
  const std::string text(2 * chunk, '.');
  const std::string ends_first = with(text, chunk - 3, "cat");
  EXPECT_TRUE(matches("cat", search_or, ends_first));
  EXPECT_FALSE(matches("cat", search_or, with(ends_first, chunk, "s")));
  const std::string begins_second = with(text, chunk, "cat");
  EXPECT_TRUE(matches("cat", search_or, begins_second));
  EXPECT_FALSE(matches("cat", search_or, with(begins_second, chunk - 1, "s")));
  EXPECT_TRUE(matches("cat", search_or, with(text, 2 * chunk - 3, "cat")));
}

TEST(Matcher, NearWindows) {
  Case any("cat dog owl", search_near);
  any.input.prox_before = 5;
  any.input.prox_after = 8;
  EXPECT_TRUE(any.matches("........ cat ... dog"));
  EXPECT_FALSE(any.matches("........ cat .... dog"));
  EXPECT_TRUE(any.matches("............ dog  cat"));
  EXPECT_FALSE(any.matches("............ dog   cat"));
  // Before the beginning of the file the window keeps its length and reaches further behind.
  EXPECT_TRUE(any.matches("cat ........ dog"));
  EXPECT_FALSE(any.matches("cat ......... dog"));
  any.input.prox_all = true;
  EXPECT_FALSE(any.matches("............ dog  cat"));
  EXPECT_TRUE(any.matches("............ dog  cat owl"));
  // The window takes in the first word itself, and cuts words at its ends.
  EXPECT_TRUE(matches("cat cat", search_near, "one cat"));
  EXPECT_TRUE(
      matches("cat dog", search_near, std::string(30, '.') + "cat" + std::string(7, '.') + "dogs"));
}

TEST(Matcher, NearWindowsAtASeam) {
  Case near("cat dog", search_near);
  near.input.prox_before = 5;
  near.input.prox_after = 8;
  const std::string text(2 * chunk, '.');
  const auto matches = [&](std::size_t cat, std::size_t dog) {
    return near.matches(with(with(text, cat, "cat"), dog, "dog"));
  };
  EXPECT_TRUE(matches(chunk - 3, chunk + 5));
  EXPECT_FALSE(matches(chunk - 3, chunk + 6));
  EXPECT_TRUE(matches(chunk, chunk - 5));
  EXPECT_FALSE(matches(chunk, chunk - 6));
  EXPECT_TRUE(matches(chunk, chunk + 8));
  EXPECT_FALSE(matches(chunk, chunk + 9));
  // Across the seam the window stands one byte further right.
  EXPECT_TRUE(matches(chunk - 1, chunk + 8));
  EXPECT_FALSE(matches(chunk - 1, chunk + 9));
  EXPECT_TRUE(matches(chunk - 1, chunk - 5));
  EXPECT_FALSE(matches(chunk - 1, chunk - 6));
  // What later windows of the chunk held is no answer for those at the seam.
  const std::string lone = with(with(text, chunk - 1, "cat"), chunk + 100, "cat");
  EXPECT_TRUE(near.matches(with(lone, chunk + 5, "dog")));
  // A word cut by the beginning of its window is whole there.
  EXPECT_TRUE(near.matches(std::string(20, '.') + "hotdog..cat"));
  EXPECT_FALSE(near.matches(std::string(20, '.') + "hotdog.cat"));
}

TEST(Matcher, AnyOfManyTerms) {
  std::string many;
  for (char c = 'a'; c < 'a' + 16; ++c) many += std::string("\"q") + c + "\" ";
  EXPECT_FALSE(matches(many + "cat dog", search_or, "concat dogs"));
  EXPECT_TRUE(matches(many + "cat dog", search_or, "concat dog"));
  EXPECT_TRUE(matches(many + "cat dog", search_or, "aqpb"));
  // A character that the page lacks is not the zero byte.
  EXPECT_FALSE(matches(many + "\"x\xE4\xB8\xAD\"", search_or, std::string("x\0", 2)));
}

TEST(Matcher, ReadsOnlyWhatItMust) {
  Case any("cat");
  load_search_criteria(any.search, any.input, page());
  MemoryFiles files;
  files.add("f", std::string(5 * chunk, '.')).breaks_at = 3 * chunk;
  const auto file = files.reader();
  SystemError error;
  TextMatcher matcher(any.search, page());
  ASSERT_FALSE(file->open("", "f"));
  EXPECT_EQ(matcher.match_open_file(*file, go_on, error), MatchOutcome::failed);
  EXPECT_EQ(error.text, "Data error");

  int asked = 0;
  ASSERT_FALSE(file->open("", "f"));
  EXPECT_EQ(matcher.match_open_file(
                *file, [&] { return ++asked < 2; }, error),
            MatchOutcome::stopped);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(files.opened, files.closed);

  int reads = 0;
  files.on_read = [&] { ++reads; };
  files.add("small", std::string(chunk, '.'));
  ASSERT_FALSE(file->open("", "small"));
  EXPECT_EQ(matcher.match_open_file(*file, go_on, error), MatchOutcome::no_match);
  EXPECT_EQ(reads, 1);
}

TEST(Matcher, AsksWithinAChunkWhenThereAreManyTerms) {
  std::string many_found = "a";
  std::string many_missing = "a";
  for (int i = 0; i < 200; ++i) {
    many_found += " \"a\"";
    many_missing += " b";
    many_missing += std::to_string(i);
  }
  for (const auto& [criteria, type] : {std::pair{many_found + " b", search_and},
                                       {many_missing.substr(1), search_or},
                                       {many_missing, search_near}}) {
    Case many(criteria, type);
    load_search_criteria(many.search, many.input, page());
    TextMatcher matcher(many.search, page());
    MemoryFiles files;
    files.add("f", "a b a");
    const auto file = files.reader();
    SystemError error;
    ASSERT_FALSE(file->open("", "f"));
    EXPECT_EQ(matcher.match_open_file(
                  *file, [] { return false; }, error),
              MatchOutcome::stopped)
        << type;
    EXPECT_EQ(files.opened, files.closed);
  }
}

TEST(Matcher, CarriesNothingFromOneFileToTheNext) {
  Case both("needle cat", search_and);
  load_search_criteria(both.search, both.input, page());
  TextMatcher matcher(both.search, page());
  MemoryFiles files;
  files.add("first", with(with(std::string(chunk, '.'), 5, "needle"), chunk - 3, "nee"));
  files.add("second", with(with(std::string(2 * chunk, '.'), chunk, "dle"), 9, "cat"));
  const auto file = files.reader();
  SystemError error;
  for (const char* name : {"first", "second"}) {
    ASSERT_FALSE(file->open("", name));
    EXPECT_EQ(matcher.match_open_file(*file, go_on, error), MatchOutcome::no_match) << name;
  }
}

TEST(Matcher, TermsLongerThanAChunk) {
  const std::string name(chunk + 10, 'n');
  for (const int type : {search_and, search_or, search_near}) {
    EXPECT_FALSE(matches("\"" + name + "\"", type, name + std::string(chunk, '.'))) << type;
    EXPECT_TRUE(matches("\"" + name + "\"", type, std::string(50, '.') + name + "..")) << type;
  }
  EXPECT_TRUE(matches(name, search_phrase, name));
  // The window of such an anchor stands ten bytes further left, less the one that every anchor at
  // a seam has it further right.
  Case near("\"" + name + "\" \"dog\"", search_near);
  near.input.prox_after = 20;
  const std::string before = std::string(500, '.') + name;
  EXPECT_TRUE(near.matches(before + std::string(8, '.') + "dog"));
  EXPECT_TRUE(LiteralMatcher(near.search, page()).matches(before + std::string(8, '.') + "dog"));
  EXPECT_FALSE(near.matches(before + std::string(9, '.') + "dog"));
  EXPECT_FALSE(LiteralMatcher(near.search, page()).matches(before + std::string(9, '.') + "dog"));
}

/// Draws criteria and files whose interesting parts lie around the seams of the chunks.
class RandomCase {
 public:
  explicit RandomCase(std::mt19937& random) : random_(random) {}

  CriteriaInput criteria() {
    CriteriaInput input;
    input.search_type = static_cast<int>(pick(4));
    input.match_case = pick(2) == 0;
    range_ = pick(2) == 0 ? 8 : pick(60);
    input.prox_before = static_cast<int>(pick(8) == 0 ? 1000 : pick(range_));
    input.prox_after = static_cast<int>(pick(8) == 0 ? 1000 : pick(range_));
    input.prox_all = pick(2) == 0;
    words_.clear();
    const std::size_t counts[] = {1, 1 + pick(3), 2 + pick(4), 16 + pick(30)};
    for (std::size_t i = 0, count = counts[pick(pick(4) == 0 ? 4 : 3)]; i < count; ++i) {
      if (i > 0) input.criteria += ' ';
      const bool quoted = pick(2) == 0;
      words_.push_back(quoted && pick(12) == 0 ? "" : word());
      if (quoted) input.criteria += '"';
      for (const char c : words_.back()) append_page_byte(input.criteria, c);
      if (pick(25) == 0) input.criteria += "\xE4\xB8\xAD";  // no character of the page
      if (quoted) input.criteria += '"';
    }
    return input;
  }

  std::string file() {
    const std::size_t sizes[] = {pick(60), chunk - 1 + pick(3), chunk + pick(60),
                                 2 * chunk + pick(60)};
    std::string text(sizes[pick(4)], '.');
    const bool sparse = pick(2) == 0;
    for (const std::size_t middle : {std::size_t{0}, chunk, 2 * chunk, text.size()}) {
      if (pick(3) == 0) continue;
      if (sparse) {
        place_words(text, middle);
      } else {
        scribble(text, middle);
      }
    }
    return text;
  }

 private:
  std::size_t pick(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

  std::string word() {
    static const std::string letters = "abAB\xC9\xE9\x9F\xFF_1 ";
    std::string text(1 + pick(pick(8) == 0 ? 40 : 4), ' ');
    for (char& c : text) c = letters[pick(letters.size() - 1)];
    return text;
  }

  /// Fills a stretch with letters, so that there are many occurrences.
  void scribble(std::string& text, std::size_t middle) {
    static const std::string letters = "abAB\xC9\xE9\x9F\xFF_1  ";
    for (std::size_t i = middle > 50 ? middle - 50 : 0; i < middle + 50 && i < text.size(); ++i) {
      if (pick(8) != 0) text[i] = letters[pick(letters.size())];
    }
  }

  /// Puts single words of the criteria down, so that one byte more or less decides.
  void place_words(std::string& text, std::size_t middle) {
    static const std::string neighbours = "ab\x9F\xFF_";
    std::size_t at = middle;
    for (std::size_t i = 0, count = 1 + pick(3); i < count; ++i) {
      std::string placed = words_[pick(pick(2) == 0 ? 1 : words_.size())];
      if (pick(3) == 0) placed += neighbours[pick(neighbours.size())];
      if (pick(3) == 0) placed.insert(0, 1, neighbours[pick(neighbours.size())]);
      const std::size_t reach = i == 0 ? placed.size() + 3 : range_ + placed.size() + 3;
      at += pick(reach + 2);
      at -= std::min(at, pick(reach));
      for (std::size_t k = 0; k < placed.size() && at + k < text.size(); ++k) {
        text[at + k] = placed[k];
      }
    }
  }

  static void append_page_byte(std::string& text, char byte) {
    const char16_t c = page().to_unicode(static_cast<unsigned char>(byte));
    if (c < 0x80) {
      text += static_cast<char>(c);
    } else {
      text += static_cast<char>(0xC0 | c >> 6);
      text += static_cast<char>(0x80 | (c & 0x3F));
    }
  }

  std::mt19937& random_;
  std::size_t range_ = 0;
  std::vector<std::string> words_;
};

TEST(Matcher, AgreesWithTheLiteralOneAroundTheSeams) {
  std::mt19937 random(test_seed());
  RandomCase draw(random);
  int matched[4] = {};
  int missed[4] = {};
  for (int round = 0; round < 1500; ++round) {
    SearchCriteria search;
    load_search_criteria(search, draw.criteria(), page());
    // One matcher for several files: none of them must leave anything to the next.
    TextMatcher fastest(search, page());
    TextMatcher scalar(search, page(), Kernel::scalar);
    for (int number = 0; number < 4; ++number) {
      const std::string text = draw.file();
      const bool expected = LiteralMatcher(search, page()).matches(text);
      ++(expected ? matched : missed)[search.search_type];
      MemoryFiles files;
      files.add("f", text);
      const auto file = files.reader();
      for (TextMatcher* matcher : {&fastest, &scalar}) {
        SystemError error;
        ASSERT_FALSE(file->open("", "f"));
        const bool found = matcher->match_open_file(*file, go_on, error) == MatchOutcome::match;
        ASSERT_EQ(found, expected)
            << "round " << round << " criteria " << search.criteria << " type "
            << search.search_type << " size " << text.size() << " scalar " << (matcher == &scalar);
      }
    }
  }
  // The draw is worth something only when every type sees both answers.
  for (int type = 0; type < 4; ++type) {
    EXPECT_GT(matched[type], 100) << "type " << type;
    EXPECT_GT(missed[type], 100) << "type " << type;
  }
}

}  // namespace
}  // namespace tallowmere
