#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/journeys/journey.h"
#include "tools/driver/text.h"

namespace tallowmere::driver {
namespace {

class Actions : public Journey {
 protected:
  /// Files that all hold the word, and the program that has found them.
  std::unique_ptr<MainWindow> found(const Names& names) {
    for (const std::string& name : names) write(name, "needle in " + name);
    set_folder_settings();
    auto program = start();
    EXPECT_TRUE(program->search(phrase, "needle"));
    EXPECT_EQ(program->list().column(0), names);
    return program;
  }

  std::string content(const std::string& name) const {
    std::ifstream file(std::filesystem::path(to_wide(folder() + name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  static bool comes_to_list(const MainWindow& program, const Names& names) {
    return wait_until([&] { return program.list().column(0) == names; });
  }
  static bool comes_to_viewer(const MainWindow& program, const std::string& name) {
    return wait_until([&] {
      return program.window().text() == " " + name + " - Tallowmere 32" &&
             program.control(IDC_TEXT1).selected_text() == "needle";
    });
  }
  /// Gives a command and waits for the window that it opens.
  static Window ask(const MainWindow& program, int command, std::string_view caption) {
    program.window().command(command);
    return program.program().wait_for_window(caption);
  }
  /// Moves the focus to the list.
  static void focus_list(const MainWindow& program) {
    ASSERT_TRUE(program.window().bring_to_front());
    program.window().key(VK_ESCAPE);
    ASSERT_TRUE(wait_until([&] { return program.window().has_focus(program.list()); }));
  }
  /// Begins to rename the selected row in the list, which has the focus. Returns the text box.
  static Window type_label(const MainWindow& program, std::string_view name) {
    program.list().key(VK_F2);
    EXPECT_TRUE(wait_until([&] { return program.list().label_editor().is_visible(); }));
    const Window editor = program.list().label_editor();
    editor.set_text(name);
    return editor;
  }
};

TEST_F(Actions, CopiesOneFileUnderANewNameAndMovesSeveral) {
  const auto program = found({"a.txt", "b.txt", "c.txt"});
  program->list().select(0);
  const Window copy = ask(*program, ID_MNUCOPY, "Copy Files");
  ASSERT_TRUE(copy);
  copy.child(IDC_COPY_FOLDER).set_text(folder() + "new\\deep");
  copy.child(IDC_COPY_NAME).set_text("d.txt");
  ASSERT_TRUE(program->close(copy, IDOK));
  ASSERT_TRUE(wait_until([&] { return content("new\\deep\\d.txt") == "needle in a.txt"; }));
  EXPECT_EQ(content("a.txt"), "needle in a.txt");

  program->list().select(2);
  const Window move = ask(*program, ID_MNUMOVE, "Move Files");
  ASSERT_TRUE(move);
  EXPECT_FALSE(move.child(IDC_COPY_NAME).is_enabled());
  const std::string moved = folder() + "moved\\";
  move.child(IDC_COPY_FOLDER).set_text(moved);
  ASSERT_TRUE(program->close(move, IDOK));
  EXPECT_TRUE(wait_until([&] {
    return program->list().column(3) == Names{moved, folder(), moved};
  }));
  EXPECT_EQ(content("moved\\a.txt") + content("moved\\c.txt"), "needle in a.txtneedle in c.txt");
  EXPECT_EQ(content("a.txt") + content("b.txt") + content("c.txt"), "needle in b.txt");
}

TEST_F(Actions, RenamesInTheDialogAndInTheList) {
  const auto program = found({"a.txt", "b.txt", "c.txt"});
  program->list().select(0);
  ASSERT_TRUE(comes_to_viewer(*program, "a.txt"));
  const Window dialog = ask(*program, ID_MNURENAME, "Rename File");
  ASSERT_TRUE(dialog);
  dialog.child(IDC_RENAME_NEW).set_text("z.txt");
  ASSERT_TRUE(program->close(dialog, IDOK));
  ASSERT_TRUE(comes_to_list(*program, {"b.txt", "c.txt", "z.txt"}));
  EXPECT_TRUE(wait_until([&] { return program->list().selected() == std::vector<int>{2}; }));
  EXPECT_TRUE(comes_to_viewer(*program, "z.txt"));

  focus_list(*program);
  type_label(*program, "never.txt").key(VK_ESCAPE);
  ASSERT_TRUE(wait_until([&] { return !program->list().label_editor(); }));
  type_label(*program, "y.txt").key(VK_RETURN);
  // Sorting by the same key again reverses the list, here as from the menu.
  ASSERT_TRUE(comes_to_list(*program, {"y.txt", "c.txt", "b.txt"}));
  EXPECT_TRUE(comes_to_viewer(*program, "y.txt"));
  EXPECT_EQ(content("y.txt"), "needle in a.txt");
  EXPECT_EQ(content("z.txt") + content("never.txt"), "");
}

// The end of a rename moves the rows: what ends it must not take another file for the renamed one.
TEST_F(Actions, ACommandInTheMiddleOfARenameMeansTheSameFile) {
  const auto program = found({"a.txt", "b.txt", "c.txt"});
  program->window().command(ID_MNUSORT);  // sorts; the next times it reverses
  program->list().select(2);
  focus_list(*program);
  type_label(*program, "d.txt");
  program->list().click_header(0);
  ASSERT_TRUE(comes_to_list(*program, {"a.txt", "b.txt", "d.txt"}));
  EXPECT_EQ(content("d.txt"), "needle in c.txt");

  type_label(*program, "e.txt");
  const Window question = ask(*program, ID_MNUDELETE, "Delete Files");
  ASSERT_TRUE(question);
  EXPECT_TRUE(message_box_text(question).starts_with("Delete \"" + folder() + "e.txt\" from"));
  ASSERT_TRUE(program->close(question, IDYES));
  ASSERT_TRUE(comes_to_list(*program, {"b.txt", "a.txt"}));
  EXPECT_EQ(content("a.txt") + content("b.txt"), "needle in a.txtneedle in b.txt");
  EXPECT_EQ(content("d.txt") + content("e.txt"), "");
}

TEST_F(Actions, RemovesAndDeletes) {
  const auto program = found({"a.txt", "b.txt", "c.txt", "d.txt"});
  const auto answer = [&](Window question, int button) {
    ASSERT_TRUE(question);
    EXPECT_TRUE(program->close(question, button));
  };
  program->list().select(0);
  answer(ask(*program, ID_MNUREMOVE, "Remove Files"), IDYES);
  ASSERT_TRUE(comes_to_list(*program, {"b.txt", "c.txt", "d.txt"}));
  EXPECT_NE(content("a.txt"), "");
  EXPECT_TRUE(comes_to_viewer(*program, "b.txt"));

  focus_list(*program);
  program->list().key(VK_DELETE);
  answer(program->program().wait_for_window("Delete Files"), IDYES);
  ASSERT_TRUE(comes_to_list(*program, {"c.txt", "d.txt"}));
  EXPECT_EQ(content("b.txt"), "");
  EXPECT_TRUE(comes_to_viewer(*program, "c.txt"));

  focus_list(*program);
  press_key('A', VK_CONTROL);
  ASSERT_TRUE(wait_until([&] { return program->list().selected().size() == 2; }));
  answer(ask(*program, ID_MNUDELETE, "Delete Files"), IDYES);
  ASSERT_TRUE(comes_to_list(*program, {}));
  EXPECT_EQ(content("c.txt") + content("d.txt"), "");
  EXPECT_EQ(program->count_label(), "0 file(s) matched out of 4");
  EXPECT_TRUE(wait_until([&] { return !program->control(IDC_TEXT1).is_enabled(); }));
}

TEST_F(Actions, CarriesNamesAndTextAway) {
  const auto program = found({"a.txt", "b.txt"});
  const auto comes = [](const std::string& text) {
    return wait_until([&] { return clipboard_text() == text; });
  };
  program->list().select(1);
  ASSERT_TRUE(comes_to_viewer(*program, "b.txt"));
  const Window box = program->control(IDC_TEXT1);
  box.select_text(0, 6);
  program->window().command(ID_MNUCOPYTOCLIPBOARD);
  EXPECT_TRUE(comes("needle")) << clipboard_text();
  box.select_text(6, 5);
  program->window().command(ID_MNUAPPENDTOCLIPBOARD);
  EXPECT_TRUE(comes("needle in b")) << clipboard_text();

  box.select_text(6, 5);
  program->window().command(ID_MNUAPPENDTOCLIPBOARD);
  EXPECT_TRUE(comes("needle in b")) << clipboard_text();

  ASSERT_TRUE(program->window().bring_to_front());
  program->window().ask_for_menu(program->list());
  ASSERT_TRUE(wait_until([&] { return program->window().shows_menu(); }));
  press_key('O');  // of "C&opy Name", where "E&xit" is otherwise
  EXPECT_TRUE(comes(folder() + "b.txt")) << clipboard_text();
  ASSERT_TRUE(wait_until([&] { return !program->window().shows_menu(); }));

  focus_list(*program);
  program->list().select(0);
  press_key('C', VK_CONTROL);
  EXPECT_TRUE(comes(folder() + "a.txt\r\n" + folder() + "b.txt\r\n")) << clipboard_text();

  press_key('F', VK_MENU);
  ASSERT_TRUE(wait_until([&] { return program->window().shows_menu(); }));
  press_key('X');
  EXPECT_TRUE(program->program().wait_for_exit());
}

TEST_F(Actions, AFolderAsArgumentIsTheOneThatIsSearched) {
  write("other\\wrong.txt", "needle");
  write("two words\\right.txt", "needle");
  set_folder_settings();
  settings().set("path", folder() + "other\\");
  const MainWindow program(own_folder() + "Tallowmere32.exe", "\"" + folder() + "two words\"");
  ASSERT_TRUE(program.search(phrase, "needle"));
  EXPECT_EQ(program.list().column(3), Names{folder() + "two words\\"});
}

}  // namespace
}  // namespace tallowmere::driver
