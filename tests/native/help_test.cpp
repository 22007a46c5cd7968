#include "help/help_pages.h"

#include <gtest/gtest.h>

#include "engine/text_matcher.h"
#include "shell/start_folder.h"
#include "tests/support/memory_files.h"

namespace tallowmere {
namespace {

TEST(HelpPages, EveryTopicHasItsAnswer) {
  int links = 0;
  for (const HelpPage& page : {quick_answers(), searching_hints(), criteria_examples()}) {
    for (const HelpItem& item : page.items) {
      EXPECT_NE(item.text, "");
      // "&" would mark a key in the caption of a topic, which is a button.
      EXPECT_TRUE(item.kind == HelpItemKind::paragraph || item.text.find('&') == item.text.npos);
      EXPECT_EQ(item.kind == HelpItemKind::topic, !item.answer.empty()) << item.text;
      links += item.kind == HelpItemKind::link;
    }
  }
  EXPECT_EQ(links, 1);
}

/// What the hints and the examples tell of.
struct Statement {
  const char* criteria;
  int type;
  const char* text;
  bool found;
  int before = 110;
  int after = 110;
  bool all = false;
  bool match_case = false;
};

TEST(HelpPages, TellTheTruthAboutSearching) {
  static constexpr Statement statements[] = {
      {"big dog", search_and, "a dog, not big", true},
      {"big dog", search_and, "a dog", false},
      {"dog hound", search_or, "a hound", true},
      {"big dog", search_phrase, "big dogs", true},
      {"big dog", search_phrase, "big red dog", false},
      {"big dog house", search_near, "big, so to say, house", true, 0, 50},
      {"big dog house", search_near, "a house, big", false, 0, 50},
      {"cat", search_and, "_cat_", true},
      {"cat", search_and, "cat5", true},
      {"cat", search_and, "cats, to concat", false},
      {"\"cat\"", search_and, "to concat", true},
      {"\"big dog\"", search_and, "big dogs", true},
      {"\"big dog\"", search_and, "dog, big", false},
      {"\"big dog\"", search_and, "big\r\ndog", false},
      {"\"cat", search_and, "a \"cat", true},
      {"\"cat", search_and, "a cat", false},
      {"software release upgrade", search_phrase, "software release upgrades", true},
      {"software release upgrade", search_near, "upgrade your software", true},
      {"software release upgrade", search_near, "upgrade your software", false, 110, 110, true},
      {"\"essential utility\" fast \"search engine\"", search_near,
       "essential utility: search engines", true},
      {"\"essential utility\" fast \"search engine\"", search_or, "faster", false},
      {"\"photo\"", search_or, "telephoto", true},
      {"photo", search_or, "telephoto", false},
      {"\"photo\"", search_phrase, "photo", false},
      {"invoice \"2019-\"", search_and, "invoice of 2019-03-31", true},
      {"she said \"yes\"", search_phrase, "then she said \"yes\" to him", true},
      {"she said \"yes\"", search_and, "yesterday she said", true},
      {"Page Turner", search_near, "Page B. Turner", true, 0, 10, false, true},
      {"Page Turner", search_near, "Turner Page", false, 0, 10, false, true},
      {"Page Turner", search_near, "page turner", false, 0, 10, false, true},
      {"", search_phrase, "anything", true},
  };
  const CodePage page = CodePage::windows_1252();
  for (const Statement& statement : statements) {
    SearchCriteria search;
    load_search_criteria(search, {statement.criteria, statement.type, statement.match_case,
                                  statement.before, statement.after, statement.all});
    MemoryFiles files;
    files.add("f", statement.text);
    const auto file = files.reader();
    file->open("", "f");
    SystemError error;
    const CompiledSearch compiled(search, page);
    const MatchOutcome outcome = TextMatcher(compiled).match_open_file(
        *file, [] { return true; }, error);
    EXPECT_EQ(outcome == MatchOutcome::match, statement.found)
        << statement.criteria << " in " << statement.text;
  }
}

TEST(StartFolder, IsTheArgumentAsOneFolder) {
  static constexpr std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"C:\\docs", "C:\\docs"},
      {"C:\\docs\\\\", "C:\\docs"},
      {"C:/my docs/", "C:/my docs"},
      {"\"C:\\my docs\"", "C:\\my docs"},
      {" C:\\docs ", " C:\\docs "},
      {"C:\\docs\"", "C:\\docs"},  // how "C:\docs\" reaches a program
      {"C:", "C:\\"},
      {"C:\\", "C:\\"},
      {"C:\"", "C:\\"},
      {"\\", "\\"},
      {"\\\\server\\share\\", "\\\\server\\share"},
      {"\"\"", ""},
  };
  for (const auto& [argument, folder] : cases)
    EXPECT_EQ(start_folder(argument), folder) << argument;
}

}  // namespace
}  // namespace tallowmere
