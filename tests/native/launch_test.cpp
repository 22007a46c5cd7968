#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/unicode.h"
#include "launch/key_script.h"
#include "launch/launch_command.h"
#include "launch/script_player.h"
#include "launch/window_title.h"

namespace tallowmere {
namespace {

using Row = std::pair<std::string, std::string>;

TEST(LaunchCommand, ProgramsOfAssociations) {
  const struct {
    const char *command, *program, *app;
  } cases[] = {
      {"C:\\Apps\\editor.exe %1", "C:\\Apps\\editor", "editor"},
      {"\"C:\\My Apps\\WORDPAD.EXE\" /x \"%1\"", "C:\\My Apps\\WORDPAD", "wordpad"},
      {"C:\\A\\first.EXE.exe %1", "C:\\A\\first.EXE", "first.exe"},
      {"C:\\A\\run.bat %1", "C:\\A\\run.bat %1", "run.bat %1"},
      {"\"%1\" %*", "%1", "%1"},
      {"\"", "", ""},
  };
  for (const auto& [command, program, app] : cases) {
    EXPECT_EQ(program_path(command), program) << command;
    EXPECT_EQ(app_base_name(program), app) << command;
  }
}

TEST(LaunchCommand, WhatIsStarted) {
  EXPECT_EQ(data_command_line("C:\\Apps\\editor", "C:\\d\\-x %1 & b.txt"),
            "C:\\Apps\\editor \"C:\\d\\-x %1 & b.txt\"");
  EXPECT_EQ(data_command_line("C:\\My Apps\\ed", "C:\\a"), "\"C:\\My Apps\\ed\" \"C:\\a\"");
  EXPECT_EQ(program_command_line("C:\\My Apps\\a.exe"), "\"C:\\My Apps\\a.exe\"");
  EXPECT_EQ(program_file("C:\\A\\run.bat %1"), "C:\\A\\run.bat %1.exe");

  EXPECT_TRUE(is_program(file_extension("C:\\d\\a.b.exe")));
  for (const char* path : {"C:\\d\\REPORT.EXE", "C:\\my.exe\\readme"}) {
    EXPECT_FALSE(is_program(file_extension(path))) << path;
  }
  for (const auto& [type, runs] :
       {std::pair{"EXE", true}, {"CpL", true}, {"", false}, {"ba", false}, {"bat ", false}}) {
    EXPECT_EQ(runs_when_opened(type), runs) << type;
  }
}

TEST(KeyScript, Escaping) {
  const Row cases[] = {{"50%", "+5+0{%}"},
                       {"[x]{^~}", "{[}x{]}{{}{^}{~}{}}"},
                       {"a+B (c)", "a{+}+B+ {(}c{)}"},
                       {"é É ß 中😀", "é+ +É+ +ß+ +中+😀"}};
  for (const auto& [text, keys] : cases) {
    EXPECT_EQ(escape_keys(text), keys);
    std::string typed;
    for (const KeyEvent& event : parse_keys(keys)) {
      EXPECT_TRUE(event.writes()) << text;
      append_utf8(typed, event.character);
    }
    EXPECT_EQ(typed, text) << "what is typed is what was meant";
  }
}

TEST(KeyScript, Notation) {
  EXPECT_EQ(parse_keys("%s^%+X{}}~{ESC}"),
            (std::vector<KeyEvent>{{NamedKey::none, 's', false, true},
                                   {NamedKey::none, 'X', true, true, true},
                                   {NamedKey::none, '}'},
                                   {NamedKey::enter},
                                   {NamedKey::escape}}));
  for (const char* odd : {"{", "a{}"}) parse_keys(odd);
}

TEST(KeyScript, ScriptsOfTheKnownEditors) {
  const auto line = [](std::string_view app, const FindRequest& request) {
    std::string texts;
    for (const ScriptStep& step : build_script(app, request)) texts += step.text + " ";
    return texts;
  };
  const FindRequest all{"a1", true, true};
  EXPECT_EQ(line("wordpad", all), "WordPad  ^f  a+1 %w %c ~  {ESC} ");
  EXPECT_EQ(line("notepad", all), "Notepad %s~ a+1 %c ~  Notepad {ESC} ");
  EXPECT_EQ(line("wordpad", {"a"}), "WordPad  ^f  a ~  {ESC} ");
  for (const char* app : {"write", "cardfile", "msworks"}) EXPECT_NE(line(app, all), "");
  EXPECT_EQ(line("Notepad", all) + line("notepad", {}), "");
}

TEST(KeyScript, WhatIsToBeFound) {
  const CodePage page = CodePage::windows_1252();
  SearchCriteria search;
  const auto request = [&](std::string criteria, SearchType type, bool match_case = false) {
    load_search_criteria(search, {std::move(criteria), type, match_case});
    const FindRequest found = find_request(search, page);
    return found.text + (found.whole_word ? "|w" : "") + (found.match_case ? "|c" : "");
  };
  EXPECT_EQ(request(" Über alles", search_and), "über|w");
  EXPECT_EQ(request("\"Big dog\" cat", search_near, true), "Big dog|c");
  EXPECT_EQ(request(" \"x\" ", search_phrase), " \"x\" ");
  EXPECT_EQ(request("\r\n\tone\r\ntwo", search_phrase), "one") << "no Find dialog takes two lines";
  EXPECT_EQ(request("  ", search_or) + request("\"\"", search_or), "");
  EXPECT_EQ(find_request({}, page).text, "") << "no search was run yet";
  search.unicode_text = true;
  EXPECT_EQ(request("Жук 😀", search_and) + request("\"Ü😀\"", search_or, true), "жук|wÜ😀|c");
  EXPECT_EQ(request("a\xED\xA0\x80", search_and), "a|w") << "up to half a pair";
}

TEST(WindowTitle, WhichWindowsOfAnEditorMayGetKeys) {
  const auto suits = [](WindowOwner owner, std::string_view title, std::string_view file) {
    return match_editor_window(owner, title, "Notepad", file) != TitleMatch::none;
  };
  using enum WindowOwner;
  EXPECT_EQ(match_editor_window(started, "NOTEPAD", "Notepad", "a.txt"), TitleMatch::exact);
  EXPECT_TRUE(suits(started, "Untitled - Notepad", "a.txt")) << "its own window";
  EXPECT_FALSE(suits(started, "a.txt - Editor", "a.txt"));
  EXPECT_FALSE(suits(other_program, "a.txt - Notepad", "a.txt"));
  const Row fitting[] = {{"*A.TXT - NOTEPAD", "a.txt"},
                         {"Notepad - [a.txt]", "a.txt"},
                         {"C:\\b\\a.txt (read only) - Notepad", "a.txt"},
                         {"Notepad.ini - Notepad", "notepad.ini"},
                         {"b a.txt, a.txt - a.txt - Notepad", "a.txt"}};
  for (const auto& [title, file] : fitting) EXPECT_TRUE(suits(same_program, title, file)) << title;
  const Row others[] = {{"data.txt - Notepad", "a.txt"},  {"b a.txt - Notepad", "a.txt"},
                        {"a.txt.bak - Notepad", "a.txt"}, {"Untitled - Notepad", "notepad"},
                        {"Notepad", "notepad"},           {"a.txt - Editor", "a.txt"},
                        {"a.txt - Notepad", ""}};
  for (const auto& [title, file] : others) EXPECT_FALSE(suits(same_program, title, file)) << title;
}

/// An editor in which "%s~" opens the Find dialog, unless a member says otherwise. Times are in
/// seconds.
class FakeStage : public KeyStage {
 public:
  Activation try_activate(std::string_view) override {
    EXPECT_EQ(typed, "") << "a window that lost the front stays behind";
    if (now < window_comes) return Activation::waiting;
    front = KeyTarget::window;
    return activated;
  }
  KeyTarget target() override { return now < lost_at ? front : KeyTarget::elsewhere; }
  bool keyboard_free() override { return now >= released_at; }
  void press(const KeyEvent& event) override {
    EXPECT_NE(target(), KeyTarget::elsewhere);
    if (event.key == NamedKey::enter) typed += '~';
    if (event.character != 0) append_utf8(typed, event.character);
    if (event.alt) front = menu_opens ? KeyTarget::menu : KeyTarget::window;
    if (event.key == NamedKey::enter && front == KeyTarget::menu) front = after_menu;
  }
  bool keys_processed() override { return typed != hangs_after; }
  double seconds() const override { return now; }
  bool pause() override {
    now += 0.1;
    return now < ends_at;
  }

  double now = 1000, window_comes = 0, lost_at = 1e9, released_at = 0, ends_at = 1e9;
  Activation activated = Activation::done;
  bool menu_opens = true;
  std::string hangs_after = "-";
  KeyTarget after_menu = KeyTarget::text_field;
  KeyTarget front = KeyTarget::elsewhere;
  std::string typed;
};

TEST(ScriptPlayer, TypesIntoTheFindDialogAndNowhereElse) {
  using enum ScriptEnd;
  using Stage = FakeStage;
  const struct {
    const char* name;
    void (*set)(Stage&);
    ScriptEnd end;
    const char* typed;
    double longest;  ///< that the script may take
  } cases[] = {
      {"all is well, if slow", [](Stage& s) { s.window_comes = 1009; }, done, "s~ab~", 30},
      {"no window comes", [](Stage& s) { s.window_comes = 1e9; }, no_window, "", 11},
      {"more rights", [](Stage& s) { s.activated = Activation::refused; }, higher_rights, "", 1},
      {"Shift is held down", [](Stage& s) { s.released_at = 1e9; }, keys_held, "", 11},
      {"the user is elsewhere", [](Stage& s) { s.lost_at = 0; }, lost_window, "", 3},
      {"and leaves meanwhile", [](Stage& s) { s.lost_at = 1001; }, lost_window, "s~ab~", 4},
      {"it hangs at its menu", [](Stage& s) { s.hangs_after = "s"; }, no_answer, "s", 6},
      {"it searches for long", [](Stage& s) { s.hangs_after = "s~ab~"; }, done, "s~ab~", 12},
      {"Alt+S opens no menu", [](Stage& s) { s.menu_opens = false; }, no_dialog, "s", 3},
      {"a message", [](Stage& s) { s.after_menu = KeyTarget::dialog; }, no_dialog, "s~", 3},
      {"the program ends", [](Stage& s) { s.ends_at = 1001; }, interrupted, "s~ab~", 2},
  };
  for (const auto& [name, set, expected, typed, longest] : cases) {
    Stage stage;
    set(stage);
    ScriptPlayer player(stage);
    const ScriptEnd end = player.play(build_script("notepad", {"ab", false, false}));
    EXPECT_EQ(end, expected) << name;
    EXPECT_EQ(stage.typed, typed) << name;
    EXPECT_LE(stage.now - 1000, longest) << name;
    EXPECT_EQ(script_status(end, player.title()).empty(), end == done || end == interrupted);
  }
}

}  // namespace
}  // namespace tallowmere
