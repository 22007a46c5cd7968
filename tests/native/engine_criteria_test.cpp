#include <gtest/gtest.h>

#include "engine/search_criteria.h"

namespace tallowmere {
namespace {

SearchCriteria load(const std::string& text, int type, bool match_case = false) {
  CriteriaInput input;
  input.criteria = text;
  input.search_type = type;
  input.match_case = match_case;
  input.prox_before = 10;
  input.prox_after = 20;
  SearchCriteria search;
  load_search_criteria(search, input, CodePage::windows_1252());
  return search;
}

/// Terms as one line: partial ones in brackets.
std::string terms(const std::string& text) {
  const SearchCriteria search = load(text, search_and);
  EXPECT_EQ(search.last_term + 1, static_cast<int>(search.terms.size()));
  std::string line;
  for (std::size_t i = 0; i < search.terms.size(); ++i) {
    EXPECT_EQ(search.term_len[i], static_cast<int>(search.terms[i].size()));
    if (i > 0) line += '|';
    line += search.whole_word[i] ? search.terms[i] : "[" + search.terms[i] + "]";
  }
  return line;
}

TEST(Criteria, SplitsAtBlanksAndQuotes) {
  EXPECT_EQ(terms("cat"), "cat");
  EXPECT_EQ(terms("  cat   dog  "), "cat|dog");
  EXPECT_EQ(terms("\"big dog\" cat"), "[big dog]|cat");
  EXPECT_EQ(terms("cat \"big dog\""), "cat|[big dog]");
  EXPECT_EQ(terms("\"big dog\"   "), "[big dog]");
  EXPECT_EQ(terms("dog \"cat"), "dog|\"cat");
  EXPECT_EQ(terms("\"ab\"cd ef"), "[ab]|cd|ef");
  EXPECT_EQ(terms("a\"b c\"d"), "a\"b|c\"d");
  EXPECT_EQ(terms("one\ttwo three"), "one\ttwo|three");
  // With no blank behind it, what follows the closing quote of the last term is not a term.
  EXPECT_EQ(terms("\"ab\"cd"), "[ab]");
  EXPECT_EQ(terms("\""), "\"");
  EXPECT_EQ(terms("\"\" cat"), "[]|cat");
}

TEST(Criteria, TrimsTheEndOnlyAndKeepsPhrasesAsTyped) {
  EXPECT_EQ(load("  cat   dog  ", search_or).criteria, "  cat   dog");
  EXPECT_EQ(load(" \"x\" ", search_phrase).criteria, " \"x\" ");
  EXPECT_EQ(load(" \"x\" ", search_phrase).phrase.bytes, " \"x\" ");
  for (const int type : {search_and, search_or, search_near}) {
    EXPECT_EQ(load("   ", type).criteria, "");
    EXPECT_EQ(load("   ", type).max_term_len, 0);
    EXPECT_EQ(load("\"\"", type).max_term_len, 0);
  }
  EXPECT_EQ(load("   ", search_phrase).max_term_len, 3);
  EXPECT_EQ(load("", search_phrase).max_term_len, 0);
}

TEST(Criteria, MeasuresTermsAndTheWindow) {
  const SearchCriteria search = load("cat elephant ox", search_near);
  EXPECT_EQ(search.max_term_len, 8);
  EXPECT_EQ(search.window_len, 3 + 10 + 20);
  EXPECT_EQ(search.last_term, 2);
  EXPECT_EQ(load("big red dog", search_phrase).max_term_len, 11);
  EXPECT_EQ(load("big red dog", search_phrase).last_term, -1);
}

TEST(Criteria, FoldsCaseInTheCodePage) {
  EXPECT_EQ(load("Cat \xC3\x89T\xC3\x89 \xC5\xA0", search_and).terms,
            (std::vector<std::string>{"cat", "\xE9t\xE9", "\x9A"}));
  EXPECT_EQ(load("Cat", search_and, true).terms[0], "Cat");
  EXPECT_TRUE(load("Cat", search_and, true).match_case);
  EXPECT_FALSE(load("Cat", search_and, true).ignore_case);
}

TEST(Criteria, CharactersTheCodePageLacksMatchNothing) {
  const SearchCriteria search = load(
      "\xE4\xB8\xAD"
      "x ok ?",
      search_or);
  EXPECT_EQ(search.representable, (std::vector<bool>{false, true, true}));
  EXPECT_EQ(search.term_len[0], 2);
  EXPECT_EQ(search.terms[0].find('?'), std::string::npos);
  EXPECT_FALSE(load("\xF0\x9F\x98\x80", search_phrase).phrase.representable);
  EXPECT_EQ(load("\xE2\x82\xAC", search_phrase).phrase.bytes, "\x80");
}

TEST(CodePage, LowersAccentedLettersAndLeavesTheRest) {
  const CodePage page = CodePage::windows_1252();
  EXPECT_EQ(page.lower(0xC9), 0xE9);  // E acute
  EXPECT_EQ(page.lower(0x8A), 0x9A);  // S caron
  EXPECT_EQ(page.lower(0x9F), 0xFF);  // Y diaeresis
  EXPECT_EQ(page.lower(0xD7), 0xD7);  // multiplication sign
  EXPECT_EQ(page.lower(0xDF), 0xDF);  // sharp s
  EXPECT_EQ(page.lower('Z'), 'z');
  EXPECT_EQ(page.lower('['), '[');
  EXPECT_EQ(page.to_unicode(0x80), 0x20AC);
  EXPECT_EQ(page.from_unicode(0x20AC), 0x80);
  EXPECT_FALSE(page.from_unicode(0x4E2D).has_value());
}

}  // namespace
}  // namespace tallowmere
