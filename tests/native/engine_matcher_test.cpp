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

CompiledSearch compile(const CriteriaInput& input) {
  SearchCriteria search;
  load_search_criteria(search, input);
  return CompiledSearch(search, page());
}

CriteriaInput input(const std::string& criteria, int type, int before = 10, int after = 10,
                    bool all = false) {
  return {criteria, type, false, before, after, all};
}

MatchOutcome outcome(TextMatcher& matcher, MemoryFiles& files, const std::string& name,
                     const std::function<bool()>& go_on) {
  const auto file = files.reader();
  EXPECT_FALSE(file->open("", name).has_value());
  SystemError error;
  const MatchOutcome result = matcher.match_open_file(*file, go_on, error);
  EXPECT_EQ(files.opened, files.closed);
  EXPECT_EQ(error.text, result == MatchOutcome::failed ? "Data error" : "");
  return result;
}

bool matches(TextMatcher& matcher, const std::string& text) {
  MemoryFiles files;
  files.add("f", text);
  return outcome(matcher, files, "f", [] { return true; }) == MatchOutcome::match;
}

/// `text` with `part` put over it at a 0-based position.
std::string with(std::string text, std::size_t at, const std::string& part) {
  return text.replace(at, part.size(), part);
}

const std::string two_chunks(2 * chunk, '.');

/// The rules in words; all that follows from them is compared with the literal matcher below.
TEST(Matcher, WhatMatches) {
  const std::string e = "\xE9";
  const std::string lacking = "\xE4\xB8\xAD";  // no character of the code page
  const std::string seam = with(two_chunks, chunk - 2, "needle");
  const std::string short_end = with(two_chunks, chunk - 2, "cat").substr(0, chunk + 1);
  std::string many;  // so many terms that they are looked for in two passes
  for (char c = 'a'; c < 'a' + 16; ++c) many += std::string("\"q") + c + "\" ";
  const struct {
    CriteriaInput input;
    std::string text;
    bool found;
  } cases[] = {
      {input("cat dog", search_and), "a dog and concat", false},
      {input("cat", search_or), "cats " + e + "cat cat" + e, false},
      {{"Cat", search_or, true}, "cat CAT", false},
      {input("\xC3\x89t\xC3\xA9", search_or), "l'" + e + "T\xC9!", true},
      {input("a cat", search_phrase), "was A CATalogue", true},
      {input(lacking, search_phrase), std::string("?\0", 2), false},
      {input(lacking + " cat", search_and), "cat", false},
      {input(many + "\"x" + lacking + "\"", search_or), std::string("x\0", 2), false},
      {input("zz needle", search_or), seam, true},
      {input("cat", search_near), "cat", true},
      // Without criteria every file matches, without text only that.
      {input("\"\"", search_and), "", true},
      {input("\"\" zzz", search_near, 0, 0), "x", true},
      // AND finds at a seam only its last term, and only when the others came in an earlier chunk.
      {input("needle cat", search_and), with(seam, 5, "cat"), false},
      // A term that ends with the file in a last chunk shorter than it is skipped.
      {input("cat", search_or), short_end, false},
      {input("cat", search_phrase), short_end, true},
      // The words' neighbours are those in the file, beyond a seam too.
      {input("cat", search_or), with(two_chunks, chunk - 3, "cats"), false},
      // NEAR: so many characters before the first word and after it.
      {input("cat dog owl", search_near, 5, 8), "........ cat ... dog", true},
      {input("cat dog owl", search_near, 5, 8), "........ cat .... dog", false},
      {input("cat dog owl", search_near, 5, 8, true), "............ dog  cat owl", true},
      // Before the beginning of the file the window keeps its length and reaches further on.
      {input("cat dog", search_near, 5, 8), "cat ........ dog", true},
      {input("cat dog", search_near, 5, 8), "cat ......... dog", false},
      // The window cuts words: one cut is whole there.
      {input("cat dog", search_near, 5, 5), std::string(20, '.') + "hotdog..cat", true},
      // Across a seam the window is one byte further right.
      {input("cat dog", search_near, 5, 8), with(two_chunks, chunk - 1, "cat......dog"), true},
      {input("cat dog", search_near, 5, 8), with(two_chunks, chunk - 1, "cat.......dog"), false},
  };
  for (const auto& [criteria, text, found] : cases) {
    const CompiledSearch search = compile(criteria);
    TextMatcher matcher(search);
    EXPECT_EQ(matches(matcher, text), found)
        << criteria.criteria << " type " << criteria.search_type << " in " << text.substr(0, 40);
    EXPECT_EQ(matches_literally(search, page(), text), found) << criteria.criteria;
  }
}

TEST(Matcher, ReadsOnlyWhatItMust) {
  const CompiledSearch search = compile(input("cat", search_or));
  TextMatcher matcher(search);
  MemoryFiles files;
  files.add("f", std::string(5 * chunk, '.')).breaks_at = 3 * chunk;
  files.add("small", std::string(chunk, '.'));
  int asked = 0, reads = 0;
  files.on_read = [&] { ++reads; };
  EXPECT_EQ(outcome(matcher, files, "small", [] { return false; }), MatchOutcome::no_match);
  EXPECT_EQ(reads, 1);
  EXPECT_EQ(outcome(matcher, files, "f", [] { return true; }), MatchOutcome::failed);
  EXPECT_EQ(outcome(matcher, files, "f", [&] { return ++asked < 2; }), MatchOutcome::stopped);
  EXPECT_EQ(asked, 2);
}

TEST(Matcher, AsksWithinAChunkWhenThereAreManyTerms) {
  std::string found, missing;
  for (int i = 0; i < 200; ++i) {
    found += "\"a\" ";
    missing += " b" + std::to_string(i);
  }
  for (const auto& criteria : {input(found + "b", search_and), input(missing, search_or),
                               input("a" + missing, search_near)}) {
    const CompiledSearch search = compile(criteria);
    TextMatcher matcher(search);
    MemoryFiles files;
    files.add("f", "a b a");
    EXPECT_EQ(outcome(matcher, files, "f", [] { return false; }), MatchOutcome::stopped)
        << criteria.search_type;
  }
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
      input.criteria += from_page_bytes(words_.back(), page());
      if (pick(25) == 0) input.criteria += "\xE4\xB8\xAD";  // no character of the page
      if (quoted && pick(20) != 0) input.criteria += '"';
    }
    return input;
  }

  std::string file() {
    const std::size_t sizes[] = {pick(60), chunk - 1 + pick(3), chunk + pick(60),
                                 2 * chunk + pick(60)};
    std::string text(sizes[pick(4)], '.');
    const bool sparse = pick(2) == 0;
    for (const std::size_t middle : {std::size_t{0}, chunk, 2 * chunk, text.size()}) {
      if (pick(3) != 0) sparse ? place_words(text, middle) : scribble(text, middle);
    }
    return text;
  }

 private:
  std::size_t pick(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

  std::string word() {
    const std::size_t most = pick(8) == 0 ? 40 : 4;
    // Now and then one that no chunk holds.
    std::string text(pick(300) == 0 ? chunk - 2 + pick(9) : 1 + pick(most), ' ');
    for (char& c : text) c = letters[pick(letters.size() - 2)];
    return text;
  }

  /// Fills a stretch with letters, so that there are many occurrences.
  void scribble(std::string& text, std::size_t middle) {
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

  const std::string letters = "abAB\xC9\xE9\x9F\xFF_1  ";
  std::mt19937& random_;
  std::size_t range_ = 0;
  std::vector<std::string> words_;
};

TEST(Matcher, AgreesWithTheLiteralOneAroundTheSeams) {
  std::mt19937 random(test_seed());
  RandomCase draw(random);
  int answers[4][2] = {};
  for (int round = 0; round < 1500; ++round) {
    const CriteriaInput criteria = draw.criteria();
    // Two matchers share what was compiled, and take several files each: none of them must leave
    // anything to the next.
    const CompiledSearch search = compile(criteria);
    TextMatcher one(search), other(search);
    for (int number = 0; number < 6; ++number) {
      const std::string text = draw.file();
      const bool expected = matches_literally(search, page(), text);
      ++answers[search.search_type][expected];
      ASSERT_EQ(matches(number % 3 == 2 ? other : one, text), expected)
          << "round " << round << " criteria " << criteria.criteria << " type "
          << search.search_type << " size " << text.size();
    }
  }
  // The draw is worth something only when every type sees both answers.
  for (const auto& of_type : answers) EXPECT_GT(std::min(of_type[0], of_type[1]), 100);
}

}  // namespace
}  // namespace tallowmere
