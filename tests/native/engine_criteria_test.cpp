#include <gtest/gtest.h>

#include "engine/compiled_search.h"

namespace tallowmere {
namespace {

SearchCriteria load(const std::string& text, int type, bool match_case = false) {
  SearchCriteria search;
  load_search_criteria(search, {text, type, match_case, 10, 20});
  return search;
}

CompiledSearch compile(const std::string& text, int type, bool match_case = false) {
  return CompiledSearch(load(text, type, match_case), CodePage::windows_1252());
}

TEST(Criteria, SplitsAtBlanksAndQuotes) {
  static constexpr std::pair<const char*, const char*> cases[] = {
      // As typed, and the terms: those that also match inside words in brackets.
      {"\"big dog\" cat", "[big dog]|cat"},
      {"\"ab\"cd ef", "[ab]|cd|ef"},
      {"a\"b c\"d", "a\"b|c\"d"},
      {"one\ttwo three", "one\ttwo|three"},
      // With no space after it, what follows the closing quote of the last term is not a term.
      {"\"ab\"cd", "[ab]"},
      {"\"", "\""},
      {"\"\" cat", "[]|cat"},
      {"Cat \xC3\x89T\xC3\x89 \xC5\xA0", "cat|\xE9t\xE9|\x9A"},
  };
  for (const auto& [typed, expected] : cases) {
    const CompiledSearch search = compile(typed, search_and);
    std::string line;
    for (std::size_t i = 0; i < search.terms.size(); ++i) {
      line += i > 0 ? "|" : "";
      line += search.whole_word[i] ? search.terms[i] : "[" + search.terms[i] + "]";
    }
    EXPECT_EQ(line, expected) << typed;
  }
  EXPECT_EQ(compile("Cat", search_and, true).terms[0], "Cat");
}

TEST(Criteria, TrimsTheEndOnlyAndKeepsPhrasesAsTyped) {
  EXPECT_EQ(load("  cat   dog  ", search_or).criteria, "  cat   dog");
  EXPECT_EQ(load("   ", search_near).criteria, "");
  EXPECT_EQ(load(" \"X\" ", search_phrase).criteria, " \"X\" ");
  EXPECT_EQ(compile(" \"X\" ", search_phrase).terms[0], " \"x\" ");
}

TEST(Criteria, CharactersTheCodePageLacksMatchNothing) {
  const CompiledSearch search = compile("\xE4\xB8\xADx ok ? \xE2\x82\xAC", search_or);
  EXPECT_EQ(search.representable, (std::vector<bool>{false, true, true, true}));
  EXPECT_EQ(search.terms[3], "\x80");
}

TEST(CodePage, LowersAccentedLettersAndLeavesTheRest) {
  const CodePage page = CodePage::windows_1252();
  // E acute, Y diaeresis, the multiplication sign, sharp s
  const std::string letters = "\xC9\x9F\xD7\xDFZ[@", lower = "\xE9\xFF\xD7\xDFz[@";
  for (std::size_t i = 0; i < letters.size(); ++i) {
    EXPECT_EQ(page.lower(static_cast<Byte>(letters[i])), static_cast<Byte>(lower[i]));
  }
}

}  // namespace
}  // namespace tallowmere
