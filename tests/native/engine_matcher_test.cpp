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
    EXPECT_FALSE(files.open("", "f").has_value());
    SystemError error;
    const MatchOutcome result =
        TextMatcher(search, page(), kernel).match_open_file(files, go_on, error);
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

TEST(Matcher, ReadsOnlyWhatItMust) {
  Case any("cat");
  load_search_criteria(any.search, any.input, page());
  MemoryFiles files;
  files.add("f", std::string(5 * chunk, '.')).breaks_at = 3 * chunk;
  SystemError error;
  TextMatcher matcher(any.search, page());
  ASSERT_FALSE(files.open("", "f"));
  EXPECT_EQ(matcher.match_open_file(files, go_on, error), MatchOutcome::failed);
  EXPECT_EQ(error.text, "Data error");

  int asked = 0;
  ASSERT_FALSE(files.open("", "f"));
  EXPECT_EQ(matcher.match_open_file(
                files, [&] { return ++asked < 2; }, error),
            MatchOutcome::stopped);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(files.opened, files.closed);

  int reads = 0;
  files.on_read = [&] { ++reads; };
  files.add("small", std::string(chunk, '.'));
  ASSERT_FALSE(files.open("", "small"));
  EXPECT_EQ(matcher.match_open_file(files, go_on, error), MatchOutcome::no_match);
  EXPECT_EQ(reads, 1);
}

TEST(Matcher, CarriesNothingFromOneFileToTheNext) {
  Case both("needle cat", search_and);
  load_search_criteria(both.search, both.input, page());
  TextMatcher matcher(both.search, page());
  MemoryFiles files;
  files.add("first", with(with(std::string(chunk, '.'), 5, "needle"), chunk - 3, "nee"));
  files.add("second", with(with(std::string(2 * chunk, '.'), chunk, "dle"), 9, "cat"));
  SystemError error;
  for (const char* name : {"first", "second"}) {
    ASSERT_FALSE(files.open("", name));
    EXPECT_EQ(matcher.match_open_file(files, go_on, error), MatchOutcome::no_match) << name;
  }
}

/// Draws criteria and a file whose interesting parts lie around the seams of the chunks.
class RandomCase {
 public:
  explicit RandomCase(std::mt19937& random) : random_(random) {}

  std::string word() {
    static const std::string letters = "abAB\xC9\xE9\x9F\xFF_1 ";
    std::string text(1 + pick(pick(8) == 0 ? 40 : 4), ' ');
    for (char& c : text) c = letters[pick(letters.size() - 1)];
    return text;
  }

  std::string file() {
    static const std::string letters = "abAB\xC9\xE9\x9F\xFF_1  ";
    const std::size_t sizes[] = {pick(60), chunk - 1 + pick(3), chunk + pick(60),
                                 2 * chunk + pick(60)};
    std::string text(sizes[pick(4)], '.');
    const auto scribble = [&](std::size_t middle) {
      for (std::size_t i = middle > 50 ? middle - 50 : 0; i < middle + 50 && i < text.size(); ++i) {
        if (pick(8) != 0) text[i] = letters[pick(letters.size())];
      }
    };
    if (pick(2) == 0) scribble(0);
    scribble(chunk);
    scribble(2 * chunk);
    if (pick(2) == 0) scribble(text.size());
    return text;
  }

  CriteriaInput criteria() {
    CriteriaInput input;
    input.search_type = static_cast<int>(pick(4));
    input.match_case = pick(2) == 0;
    input.prox_before = static_cast<int>(pick(2) == 0 ? pick(8) : pick(1000));
    input.prox_after = static_cast<int>(pick(2) == 0 ? pick(8) : pick(1000));
    input.prox_all = pick(2) == 0;
    std::string bytes;
    for (std::size_t i = 0, count = 1 + pick(pick(6) == 0 ? 12 : 3); i < count; ++i) {
      if (i > 0) bytes += ' ';
      bytes += pick(2) == 0 ? "\"" + word() + "\"" : word();
    }
    for (const char c : bytes) append_page_byte(input.criteria, static_cast<unsigned char>(c));
    return input;
  }

 private:
  std::size_t pick(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

  static void append_page_byte(std::string& text, unsigned char byte) {
    const char16_t c = page().to_unicode(byte);
    if (c < 0x80) {
      text += static_cast<char>(c);
    } else {
      text += static_cast<char>(0xC0 | c >> 6);
      text += static_cast<char>(0x80 | (c & 0x3F));
    }
  }

  std::mt19937& random_;
};

TEST(Matcher, AgreesWithTheLiteralOneAroundTheSeams) {
  std::mt19937 random(test_seed());
  RandomCase draw(random);
  int matched[4] = {};
  int missed[4] = {};
  for (int round = 0; round < 3000; ++round) {
    Case test("");
    test.input = draw.criteria();
    const std::string text = draw.file();
    const bool fast = test.outcome(text) == MatchOutcome::match;
    ++(fast ? matched : missed)[test.search.search_type];
    ASSERT_EQ(fast, LiteralMatcher(test.search, page()).matches(text))
        << "round " << round << " criteria " << test.search.criteria << " type "
        << test.search.search_type << " size " << text.size();
    ASSERT_EQ(fast, test.outcome(text, Kernel::scalar) == MatchOutcome::match) << "round " << round;
  }
  // The draw is worth something only when every type sees both answers.
  for (int type = 0; type < 4; ++type) {
    EXPECT_GT(matched[type], 10) << "type " << type;
    EXPECT_GT(missed[type], 10) << "type " << type;
  }
}

}  // namespace
}  // namespace tallowmere
