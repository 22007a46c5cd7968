#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "engine/unicode.h"
#include "launch/key_script.h"
#include "launch/launch_command.h"
#include "launch/script_player.h"
#include "launch/window_title.h"
#include "shell/clipboard_text.h"

namespace tallowmere {
namespace {

struct CommandCase {
  std::string command, program, app;
};

TEST(LaunchCommand, ProgramsOfAssociations) {
  const CommandCase cases[] = {
      {"C:\\Apps\\editor.exe %1", "C:\\Apps\\editor", "editor"},
      {"\"C:\\My Apps\\WORDPAD.EXE\" /x \"%1\"", "C:\\My Apps\\WORDPAD", "wordpad"},
      {"C:\\A\\first.EXE.exe %1", "C:\\A\\first.EXE", "first.exe"},
      {"C:\\A\\Mixed.Exe %1", "C:\\A\\Mixed", "mixed"},
      {"notepad.exe", "notepad", "notepad"},
      {"\"C:\\A\\tool\" %1", "C:\\A\\tool", "tool"},
      {"C:\\A\\run.bat %1", "C:\\A\\run.bat %1", "run.bat %1"},
      {"\"%1\" %*", "%1", "%1"},
      {"\"", "", ""},
      {"", "", ""},
  };
  for (const CommandCase& entry : cases) {
    EXPECT_EQ(program_path(entry.command), entry.program) << entry.command;
    EXPECT_EQ(app_base_name(program_path(entry.command)), entry.app) << entry.command;
  }
}

TEST(LaunchCommand, WhatIsStarted) {
  EXPECT_EQ(data_command_line("C:\\Apps\\editor", "C:\\d\\-x %1 & b.txt"),
            "C:\\Apps\\editor \"C:\\d\\-x %1 & b.txt\"");
  EXPECT_EQ(data_command_line("C:\\My Apps\\ed", "C:\\a"), "\"C:\\My Apps\\ed\" \"C:\\a\"");
  EXPECT_EQ(program_command_line("C:\\My Apps\\a.exe"), "\"C:\\My Apps\\a.exe\"");
  EXPECT_EQ(program_file("C:\\A\\run.bat %1"), "C:\\A\\run.bat %1.exe");

  const std::pair<std::string, bool> files[] = {{"C:\\d\\a.b.exe", true},
                                                {"C:\\d\\REPORT.EXE", false},
                                                {"C:\\my.exe\\readme", false},
                                                {"C:\\d\\exe", false},
                                                {"C:\\d\\a.exe.", false}};
  for (const auto& [path, runs] : files) EXPECT_EQ(is_program(file_extension(path)), runs) << path;

  std::istringstream types(
      "EXE bat Cmd COM js jse vbs vbe wsf wsh hta ps1 scr pif msi lnk url reg CpL");
  for (std::string type; types >> type;) EXPECT_TRUE(runs_when_opened(type)) << type;
  for (const char* type : {"", "txt", "c", "html", "ba", "batch", "json", "bat "}) {
    EXPECT_FALSE(runs_when_opened(type)) << type;
  }
}

TEST(KeyScript, Escaping) {
  const std::pair<std::string, std::string> cases[] = {
      {"50%", "+5+0{%}"},
      {"a+B (c)", "a{+}+B+ {(}c{)}"},
      {"[x]{^~}", "{[}x{]}{{}{^}{~}{}}"},
      {"é É ß 中😀", "é+ +É+ +ß+ +中+😀"},
      {"", ""},
  };
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
  const std::vector<KeyEvent> expected = {{NamedKey::none, 's', false, true},
                                          {NamedKey::enter},
                                          {NamedKey::none, 'f', true},
                                          {NamedKey::escape},
                                          {NamedKey::f4},
                                          {NamedKey::none, '}'},
                                          {NamedKey::none, 'X', true, true, true}};
  EXPECT_EQ(parse_keys("%s~^f{ESC}{F4}{}}^%+X"), expected);
  parse_keys("{");
  parse_keys("a{}");
}

/// One line for a script: windows in <>, waits as numbers, "!" behind a step that waits.
std::string script_line(std::string_view app, const FindRequest& request) {
  std::string line;
  for (const ScriptStep& step : build_script(app, request)) {
    switch (step.kind) {
      case ScriptStep::Kind::activate:
        line += "<" + step.text + ">";
        break;
      case ScriptStep::Kind::wait:
        line += std::to_string(step.seconds).substr(0, 3);
        break;
      default:
        line += step.text + (step.kind == ScriptStep::Kind::send_wait ? "!" : "");
    }
    line += ' ';
  }
  return line;
}

TEST(KeyScript, ScriptsOfTheKnownEditors) {
  const FindRequest all{"a1", true, true};
  const FindRequest plain{"a", false, false};
  EXPECT_EQ(script_line("wordpad", all), "<WordPad> 1.4 ^f 0.4 a+1 %w %c ~! 1.4 {ESC}! ");
  EXPECT_EQ(script_line("write", all), "<Write> {ESC} 1.4 %n~ 0.4 a+1 %w %c ~! 1.4 {ESC}! ");
  EXPECT_EQ(script_line("notepad", all), "<Notepad> %s~ a+1 %c ~! 1.5 <Notepad> {ESC}! ");
  EXPECT_EQ(script_line("cardfile", all),
            "<Cardfile> %sf~ a+1 %c ~{ESC}{ESC}! <Cardfile> {F4} a+1 ~{ESC}! ");
  EXPECT_EQ(script_line("msworks", all), "<Microsoft Works> %ef a+1 %w %c ~! ");
  EXPECT_EQ(script_line("wordpad", plain), "<WordPad> 1.4 ^f 0.4 a ~! 1.4 {ESC}! ");
  EXPECT_EQ(script_line("Notepad", all), "");
  EXPECT_EQ(script_line("notepad", {"", true, true}), "");
}

TEST(KeyScript, WhatIsToBeFound) {
  const CodePage page = CodePage::windows_1252();
  const auto request = [&](std::string criteria, SearchType type, bool match_case = false) {
    SearchCriteria search;
    CriteriaInput input;
    input.criteria = std::move(criteria);
    input.search_type = type;
    input.match_case = match_case;
    load_search_criteria(search, input);
    const FindRequest found = find_request(search, page);
    return found.text + (found.whole_word ? "|w" : "") + (found.match_case ? "|c" : "");
  };
  EXPECT_EQ(request(" Über alles", search_and), "über|w");
  EXPECT_EQ(request("\"Big dog\" cat", search_near, true), "Big dog|c");
  EXPECT_EQ(request(" \"x\" ", search_phrase), " \"x\" ");
  EXPECT_EQ(request("\r\n\tone\r\ntwo", search_phrase), "one") << "no Find dialog takes two lines";
  EXPECT_EQ(request("  ", search_or), "");
  EXPECT_EQ(request("\"\"", search_or), "");
  EXPECT_EQ(find_request({}, page).text, "") << "no search was run yet";
}

TEST(WindowTitle, Matching) {
  EXPECT_EQ(match_title("NOTEPAD", "Notepad"), TitleMatch::exact);
  EXPECT_EQ(match_title("Notepad - a.txt", "Notepad"), TitleMatch::begins_with);
  EXPECT_EQ(match_title("a.txt - Wine Wordpad", "WordPad"), TitleMatch::ends_with);
  EXPECT_EQ(match_title("My Notepad files", "Notepad"), TitleMatch::none);
  EXPECT_EQ(match_title("", "Notepad"), TitleMatch::none);
  EXPECT_GT(TitleMatch::begins_with, TitleMatch::ends_with);
}

TEST(WindowTitle, WhichWindowsOfAnEditorMayGetKeys) {
  const auto suits = [](WindowOwner owner, std::string_view title, std::string_view file) {
    return match_editor_window(owner, title, "Notepad", file) != TitleMatch::none;
  };
  constexpr auto started = WindowOwner::started, same = WindowOwner::same_program;
  EXPECT_TRUE(suits(started, "Untitled - Notepad", "a.txt")) << "its own window";
  EXPECT_FALSE(suits(started, "a.txt - Editor", "a.txt"));
  EXPECT_FALSE(suits(WindowOwner::other_program, "a.txt - Notepad", "a.txt"));

  const std::pair<std::string, std::string> fitting[] = {
      {"a.txt - Notepad", "a.txt"},
      {"*A.TXT - NOTEPAD", "a.txt"},
      {"Notepad - [a.txt]", "a.txt"},
      {"C:\\b\\a.txt (read only) - Notepad", "a.txt"},
      {"notepad - Notepad", "notepad"},
      {"Notepad.ini - Notepad", "notepad.ini"},
      {"b a.txt, a.txt - a.txt - Notepad", "a.txt"}};
  for (const auto& [title, file] : fitting) EXPECT_TRUE(suits(same, title, file)) << title;
  const std::pair<std::string, std::string> others[] = {
      {"b.txt - Notepad", "a.txt"},      {"data.txt - Notepad", "a.txt"},
      {"b a.txt - Notepad", "a.txt"},    {"a.txt.bak - Notepad", "a.txt"},
      {"Untitled - Notepad", "notepad"}, {"Notepad", "notepad"},
      {"a.txt - Editor", "a.txt"},       {"a.txt - Notepad", ""}};
  for (const auto& [title, file] : others) EXPECT_FALSE(suits(same, title, file)) << title;
}

/// An editor that answers as `reactions` say: pressing a key brings its target to the front.
class FakeStage : public KeyStage {
 public:
  Activation try_activate(std::string_view) override {
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

struct StageCase {
  const char* name;
  std::function<void(FakeStage&)> set;
  ScriptEnd end;
  std::string typed;
  double longest;  ///< seconds that the script may take
};

TEST(ScriptPlayer, TypesIntoTheFindDialogAndNowhereElse) {
  const StageCase cases[] = {
      {"all goes well, if slowly", [](FakeStage& s) { s.window_comes = 1009; }, ScriptEnd::done,
       "s~ab~", 30},
      {"the window never comes", [](FakeStage& s) { s.window_comes = 1e9; }, ScriptEnd::no_window,
       "", 11},
      {"it runs as administrator", [](FakeStage& s) { s.activated = Activation::refused; },
       ScriptEnd::higher_rights, "", 1},
      {"the user keeps Shift down", [](FakeStage& s) { s.released_at = 1e9; }, ScriptEnd::keys_held,
       "", 11},
      {"the user is elsewhere", [](FakeStage& s) { s.lost_at = 0; }, ScriptEnd::lost_window, "", 3},
      {"the user leaves while it searches", [](FakeStage& s) { s.lost_at = 1001; },
       ScriptEnd::lost_window, "s~ab~", 4},
      {"it hangs before it opens its menu", [](FakeStage& s) { s.hangs_after = "s"; },
       ScriptEnd::no_answer, "s", 6},
      {"it searches for long", [](FakeStage& s) { s.hangs_after = "s~ab~"; }, ScriptEnd::done,
       "s~ab~", 12},
      {"Alt+S opens no menu", [](FakeStage& s) { s.menu_opens = false; }, ScriptEnd::no_dialog, "s",
       3},
      {"the menu opens no dialog", [](FakeStage& s) { s.after_menu = KeyTarget::window; },
       ScriptEnd::no_dialog, "s~", 3},
      {"a message opens instead", [](FakeStage& s) { s.after_menu = KeyTarget::dialog; },
       ScriptEnd::no_dialog, "s~", 3},
      {"the program ends", [](FakeStage& s) { s.ends_at = 1001; }, ScriptEnd::interrupted, "s~ab~",
       2},
  };
  for (const StageCase& entry : cases) {
    FakeStage stage;
    entry.set(stage);
    ScriptPlayer player(stage);
    const ScriptEnd end = player.play(build_script("notepad", {"ab", false, false}));
    EXPECT_EQ(end, entry.end) << entry.name;
    EXPECT_EQ(stage.typed, entry.typed) << entry.name;
    EXPECT_LE(stage.now - 1000, entry.longest) << entry.name;
    EXPECT_EQ(script_status(end, player.title()).empty(),
              end == ScriptEnd::done || end == ScriptEnd::interrupted);
  }
}

TEST(ClipboardText, AppendStaysBelowTheCeiling) {
  EXPECT_EQ(appended_text("old", "new"), "oldnew");
  EXPECT_EQ(appended_text(std::string(64990, 'x'), std::string(10, 'y')), std::nullopt);
  EXPECT_TRUE(appended_text(std::string(64989, 'x'), std::string(10, 'y')));
  std::string accented;
  for (int i = 0; i < 64989; ++i) accented += "é";
  EXPECT_TRUE(appended_text(accented, "0123456789")) << "characters count, not bytes";
}

TEST(ClipboardText, FileNames) {
  EXPECT_EQ(copied_names_text({}), "");
  EXPECT_EQ(copied_names_text({"C:\\a"}), "C:\\a");
  EXPECT_EQ(copied_names_text({"C:\\a", "C:\\b", "C:\\c"}), "C:\\a\r\nC:\\b\r\nC:\\c\r\n");
}

}  // namespace
}  // namespace tallowmere
