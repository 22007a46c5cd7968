// Drives the real program through its windows, for people to look at:
//
//   demo search PROGRAM FOLDER     one search of the folder, described step by step
//   demo pictures PROGRAM FOLDER   every window in turn
//
// It asks for pictures on standard output, as tools/with-pictures describes.

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/resource.h"
#include "dialogs/resource.h"
#include "tools/driver/main_window.h"
#include "tools/driver/settings_key.h"

namespace {

using namespace tallowmere::driver;

enum { all_words, any_word, phrase, near_words };
enum { by_name, by_date, by_size, by_folder };

void say(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

/// Asks for a picture of the window with this caption, or of the screen, and waits until it is
/// taken.
void take_picture(const std::string& name, std::string_view caption = {}) {
  Sleep(500);  // let everything be painted
  say("PICTURE " + name + " " + std::string(caption));
  while (true) {
    const int byte = std::getchar();
    if (byte == '\n' || byte == EOF) return;
  }
}

void use_folder(const std::string& folder) {
  const SettingsKey settings;
  settings.clear();
  settings.set("from_date", "3/1/2001");
  settings.set("to_date", "3/31/2001");
  settings.set("path", folder);
  settings.set("font_name", "Liberation Mono");    // every machine that makes pictures has it
  settings.set("checked", "YNNNNNNYNNYNNNNNYYN");  // all files, subfolders, by name, no sound
  for (int i = 0; i < 5; ++i) {
    const char* const types[] = {"txt", "doc", "htm", "log", "w??"};
    settings.set("user_type" + std::to_string(i + 1), types[i]);
  }
}

void show_state(const MainWindow& program) {
  say("  labels: \"" + program.count_label() + "\"  \"" + program.timing_label() + "\"");
}

void show_list(const MainWindow& program) {
  const ListView list = program.list();
  auto print = [](const std::vector<std::string>& cells) {
    std::printf("  %-26s %-20s %6s  %s\n", cells[0].c_str(), cells[1].c_str(), cells[2].c_str(),
                cells[3].c_str());
  };
  print(list.headers());
  for (const ListView::Row& row : list.rows()) print(row);
  std::fflush(stdout);
}

void sort_by(const MainWindow& program, int column) {
  const ListView list = program.list();
  const std::vector<std::string> before = list.column(0);
  list.click_header(column);
  wait_until([&] { return list.column(0) != before; }, 1000);
}

void show_search(const std::string& path, const std::string& folder) {
  use_folder(folder);
  const MainWindow program(path);
  say("The program is open.");
  show_state(program);

  say("Search is pressed; the criteria are all of the words: lantern oil");
  const Window criteria = program.press_search(new_search_caption);
  program.begin(criteria, all_words, "lantern oil");
  if (!program.wait_for_end()) throw std::runtime_error("the search does not end");
  show_state(program);
  show_list(program);

  say("A click on the header Size:");
  sort_by(program, by_size);
  show_list(program);
  say("A second click reverses:");
  sort_by(program, by_size);
  show_list(program);
  take_picture("search");
  if (!program.quit()) throw std::runtime_error("the program does not end");
}

/// Takes pictures of the dialogs that the criteria dialog opens.
void picture_dialogs(const MainWindow& program, Window criteria) {
  const Window where = program.open(criteria, IDC_SEARCH_WHERE, where_caption);
  take_picture("where", where_caption);
  program.close(where, IDCANCEL);
  const Window dates = program.open(criteria, IDC_SEARCH_DATES, dates_caption);
  dates.child(IDC_DATE_OPTION + 1).click();
  take_picture("dates", dates_caption);
  program.close(dates, IDCANCEL);
  const Window proximity = program.open(criteria, IDC_SEARCH_PROXIMITY, proximity_caption);
  take_picture("proximity", proximity_caption);
  program.close(proximity, IDCANCEL);
}

/// Selects a row and waits until its file shows.
void view_row(const MainWindow& program, int row) {
  const Window box = program.control(IDC_TEXT1);
  program.list().select(row);
  if (!wait_until([&] { return box.is_enabled() && !box.selected_text().empty(); })) {
    throw std::runtime_error("the file does not show");
  }
}

/// Takes pictures of a HyperFind and of the choice of the font.
void picture_viewer(const MainWindow& program) {
  const Window box = program.control(IDC_TEXT1);
  const Window restore = program.control(IDC_CMDRESTORE);
  const std::string wanted = "the ";
  const std::size_t place = box.text().find(wanted);
  if (place == std::string::npos) throw std::runtime_error("the file lacks the text");
  box.select_text(static_cast<int>(place), static_cast<int>(wanted.size()));
  program.control(IDC_CMDHYPER).click();
  if (!wait_until([&] { return restore.is_enabled(); })) {
    throw std::runtime_error("HyperFind does not find");
  }
  take_picture("hyperfind", program.window().text());
  program.window().command(ID_MNUFONTSTYLE);
  const Window fonts = program.program().wait_for_window(fonts_caption);
  take_picture("fonts", fonts_caption);
  program.close(fonts, IDCANCEL);
  program.control(IDC_LABEL2).set_text("");
  restore.click();
  // While the run goes on, Search would stop it.
  if (!program.wait_for_end()) throw std::runtime_error("the criteria are not restored");
}

/// Takes pictures of the copy dialog and of a help screen with an answer.
void picture_actions(const MainWindow& program) {
  program.window().command(ID_MNUCOPY);
  const Window copy = program.program().wait_for_window("Copy Files");
  take_picture("copy", "Copy Files");
  program.close(copy, IDCANCEL);
  program.window().command(ID_MNUQTIPS);
  const Window answers = program.program().wait_for_window("Quick Answers");
  answers.child(IDC_HELP_ITEM + 5).click();
  take_picture("answers", "Quick Answers");
  program.close(answers, IDC_HELP_EXIT);
}

void show_pictures(const std::string& path, const std::string& folder) {
  use_folder(folder);
  SettingsKey().set("leave_out", ".git; *.bak");
  const MainWindow program(path);
  const Window criteria = program.press_search(new_search_caption);
  criteria.child(IDC_SEARCH_OPTION + near_words).click();
  criteria.child(IDC_SEARCH_TEXT).set_text("keeper storm");
  take_picture("criteria", new_search_caption);
  picture_dialogs(program, criteria);
  program.begin(criteria, any_word, "lantern storm");
  if (!program.wait_for_end()) throw std::runtime_error("the search does not end");
  view_row(program, 3);  // with several hits
  take_picture("main", program.window().text());
  picture_viewer(program);
  picture_actions(program);
  const Window prompt = program.press_search(narrow_caption);
  take_picture("narrow", narrow_caption);
  program.close(prompt, IDCANCEL);
  program.quit();
}

}  // namespace

int main(int count, char** arguments) {
  const std::string mode = count == 4 ? arguments[1] : "";
  try {
    if (mode == "search") {
      show_search(arguments[2], arguments[3]);
    } else if (mode == "pictures") {
      show_pictures(arguments[2], arguments[3]);
    } else {
      say("usage: demo search|pictures PROGRAM FOLDER");
      return 2;
    }
  } catch (const std::exception& error) {
    say(std::string("demo: ") + error.what());
    return 1;
  }
  return 0;
}
