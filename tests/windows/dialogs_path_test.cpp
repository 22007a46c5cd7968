#include "dialogs/frmPath.h"

#include "shell/file_type_choice.h"
#include "tests/windows/dialogs_support.h"
#include "win32/clipboard.h"
#include "win32/fonts.h"
#include "win32/message_loop.h"

namespace tallowmere {
namespace {

class PathTest : public testing::Test {
 protected:
  PathTest() {
    for (const char* folder : {"docs\\old\\", "docs\\New\\", "Empty\\"})
      world.files.add("C:\\" + std::string(folder) + "file", "");
    world.files.folder_errors["C:\\gone\\"] = not_ready;
    SearchCriteria& search = world.search;
    search.drive = "C:\\";
    search.path = "C:\\docs";
    search.user_types = {"*", "txt", "doc", "w??", "", "", ""};
    search.type_checked = {false, true, false, true, false, false, false};
    search.type_descriptions[1] = "Text Document";
    search.leave_out = "*.bak";
    search.online_files = true;
  }
  void open(std::initializer_list<Hand::Step> steps) { world.hand.show(form, steps); }
  std::string rows() {
    std::string text;
    for (int row = 0; row < form.Dir1.count(); ++row) text += form.Dir1.row_text(row) + "|";
    return text;
  }
  /// One sign a check box: x ticked, - greyed, . unticked; ! after it when disabled.
  std::string ticks() {
    std::string text;
    for (const win32::CheckBox& box : form.chkUserFileType) {
      text += ".x-"[static_cast<int>(box.state())];
      if (!box.enabled()) text += '!';
    }
    return text;
  }
  void notify(const win32::Control& control, int code) {
    SendMessageW(form.handle(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control.handle()), code),
                 reinterpret_cast<LPARAM>(control.handle()));
  }
  void open_child(int row) {
    form.Dir1.select(row);
    notify(form.Dir1, LBN_DBLCLK);
  }
  bool shown() { return IsWindowVisible(form.handle()) != FALSE; }

  const SystemError not_ready{21, "The device is not ready"};
  DialogWorld world;
  int summaries = 0;
  frmPath form{world.hand.window(), world.context(), [this] { ++summaries; }};
};

TEST_F(PathTest, OkWritesBackWhatIsShown) {
  open({[&] {
    EXPECT_TRUE(form.Dir1.has_focus());
    EXPECT_EQ(ticks(), "x.x.!.!.!");
    EXPECT_EQ(form.chkUserFileType[0].text(), "Text Document");
    EXPECT_EQ(label_of(form.txtUserFileType[5]), "type 6");
    EXPECT_EQ(label_of(form.txtLeaveOut) + form.txtLeaveOut.text(), "&Leave out:*.bak");
    EXPECT_TRUE(!form.chkHidden.checked() && form.chkOnline.checked());
    form.chkHidden.click();
    form.chkOnline.click();
    form.txtLeaveOut.set_text(std::string(leave_out_limit - 1, '?'));
    type(form.txtLeaveOut, "??");
    form.chkFileType.click();
    EXPECT_EQ(ticks(), "-!-!-!-!-!-!");
    form.chkFileType.click();
    form.txtUserFileType[3].set_text("r&b");
    EXPECT_EQ(ticks(), ".....!.!");
    form.chkUserFileType[1].click();
    form.Command1.click();
  }});
  EXPECT_EQ(world.search.type_checked,
            (std::array<bool, 7>{false, false, true, false, false, false, false}));
  EXPECT_EQ(world.search.user_types[4], "r&b");
  EXPECT_EQ(world.search.leave_out, std::string(leave_out_limit, '?'));
  EXPECT_TRUE(world.search.hidden_files && !world.search.online_files);
  EXPECT_EQ(summaries, 1);
}

TEST_F(PathTest, FoldersAndDrivesOpenOrStayWhereTheyWere) {
  const std::string root = "C:\\|docs|Empty|";
  world.search.path = "C:\\gone";
  open({[&] {
          EXPECT_EQ(rows(), root) << "the program's drive";
          ASSERT_GT(form.Drive1.count(), 1) << "needs a second drive letter";
          const int other = form.Drive1.row_text(0) == "C:\\" ? 1 : 0;
          const std::string drive = form.Drive1.row_text(other).substr(0, 2);
          wchar_t folder[MAX_PATH];  // that drive's current one
          GetFullPathNameW(win32::wide(drive).c_str(), MAX_PATH, folder, nullptr);
          world.files.folder_errors[with_separator(win32::narrow(folder))] = not_ready;
          form.Drive1.select(other);
          notify(form.Drive1, CBN_SELCHANGE);
        },
        [&] {
          EXPECT_TRUE(answer_box(L"Drive Not Ready").starts_with("The device is not ready - "));
        },
        [&] {
          EXPECT_EQ(form.Drive1.row_text(form.Drive1.selected()) + rows(), "C:\\" + root);
          open_child(1);
          EXPECT_EQ(rows(), "C:\\|docs|New|old|");
          form.Command1.click();
        }});
  EXPECT_EQ(world.search.path, "C:\\docs");
}

TEST_F(PathTest, AFolderCanBeTypedAndIsTakenWhenItIsThere) {
  const std::string share = "\\\\server\\share\\";
  world.files.add(share + "in\\file", "");
  world.files.folder_errors["C:\\docs\\old\\file\\"] = not_ready;
  world.search.path = share + "in";
  world.recent_folders.add("C:\\Empty");
  const auto drive = [&] { return form.Drive1.row_text(form.Drive1.selected()); };
  const win32::TextBox& box = form.cboFolder.box();
  const auto enter = [&](const std::string& text) {
    box.focus();
    form.cboFolder.set_text(text);
    press(box, VK_RETURN);
  };
  open({[&] {
    EXPECT_EQ(form.cboFolder.text() + drive(), share + "in") << "no drive";
    EXPECT_EQ(label_of(form.cboFolder), "&Folder:");
    EXPECT_EQ(rows(), share + "|in|");
    form.Command1.click();
  }});
  EXPECT_EQ(world.search.path + world.search.drive, share + "in");
  SetEnvironmentVariableW(L"TALLOWMERE_TEST", L"C:\\docs");
  open({[&] { enter(" \"%TALLOWMERE_TEST%/../docs/old/file\""); },
        [&] {
          EXPECT_TRUE(shown() && box.has_focus());
          EXPECT_EQ(form.cboFolder.text() + drive(), "C:\\docs\\oldC:\\") << "the file's folder";
          EXPECT_EQ(rows(), "C:\\|docs|old|");
          open_child(1);
          EXPECT_EQ(form.cboFolder.text(), "C:\\docs");
          box.focus();
          SendMessageW(form.cboFolder.handle(), CB_SHOWDROPDOWN, TRUE, 0);
          press(box, VK_DOWN);
          press(box, VK_RETURN);
        },
        [&] {
          EXPECT_EQ(form.cboFolder.text() + "|" + rows(), "C:\\Empty|C:\\|Empty|");
          drop_on(form.handle(), std::wstring(L"C:\\docs\\old\\file\0C:\\docs", 25));
          EXPECT_EQ(form.cboFolder.text(), "C:\\docs\\old");
          press(box, VK_RETURN);
        }});
  EXPECT_EQ(world.search.drive + world.search.path, "C:\\C:\\docs\\old");
}

TEST_F(PathTest, AFolderThatIsNotThereIsToldAndCancelLeaves) {
  const win32::TextBox& box = form.cboFolder.box();
  const auto type_gone = [&] {
    box.focus();
    form.cboFolder.set_text("C:\\gone\\");
  };
  const auto refused = [&] {
    EXPECT_TRUE(answer_box(L"Cannot Open Folder").starts_with("C:\\gone\n\nThe device is not"));
  };
  open({[&] {
          type_gone();
          form.Dir1.focus();
        },
        refused,
        [&] {
          EXPECT_TRUE(box.has_focus());
          EXPECT_EQ(box.selection_length(), 8);
          press(box, VK_RETURN);
        },
        refused, [&] { SendMessageW(form.handle(), WM_COMMAND, IDOK, 0); }, refused,
        [&] {
          EXPECT_TRUE(shown());
          press_mouse(form.Command2);
        },
        [&] { SendMessageW(form.Command2.handle(), WM_LBUTTONUP, 0, MAKELPARAM(3, 3)); }});
  EXPECT_TRUE(world.cancelled);
  open({type_gone, [&] { press(box, VK_ESCAPE); }});
  EXPECT_EQ(answer_box(L"Cannot Open Folder"), "");
  EXPECT_EQ(world.search.path, "C:\\docs");
  open({[&] {
    EXPECT_EQ(form.cboFolder.text(), "C:\\docs");
    form.cboFolder.set_text("");
    form.Command1.click();
  }});
  EXPECT_EQ(world.search.path, "C:\\docs");
}

TEST_F(PathTest, ADiskThatDoesNotAnswerHoldsUpNothing) {
  const auto hang = [&] { world.files.hang_next(HangingFiles::Call::list); };
  const std::string waiting = "Waiting for the folder...|";
  hang();
  open({[&] {
    EXPECT_EQ(rows(), waiting);
    form.Command1.click();
  }});
  EXPECT_EQ(world.search.drive + world.search.path, "C:\\C:\\docs") << "nothing was asked for";
  EXPECT_EQ(world.files.hanging() + world.files.cancelled(), 2);
  open({[&] {
          hang();
          open_child(2);
          open_child(0);  // does nothing
          EXPECT_EQ(rows(), waiting);
        },
        [&] { form.Command2.click(); }});
  EXPECT_TRUE(world.cancelled);
  EXPECT_EQ(world.files.hanging() + world.files.cancelled(), 4);
  open({[&] {
          EXPECT_EQ(rows(), "C:\\|docs|New|old|");
          hang();
          open_child(2);
          form.Command1.click();
        },
        [&] {
          EXPECT_TRUE(shown()) << "OK waits for what the user has asked for";
          world.files.release();
          while (shown()) win32::pump_pending();
        }});
  EXPECT_EQ(world.search.path, "C:\\docs\\New");
}

TEST_F(PathTest, TypingKeepsOutWhatPastingBringsIn) {
  const win32::TextBox& box = form.txtUserFileType[3];
  const auto paste = [&](const char* text) {
    box.focus();
    box.select_all();
    box.replace_selection(text);
  };
  const auto refused = [&] {
    EXPECT_EQ(answer_box(L"Invalid File Type"), invalid_file_type_message());
  };
  open({[&] {
          box.focus();
          type(box, "t?:|t");
          EXPECT_EQ(box.text(), "tt");
          paste("t:t");
          form.Dir1.focus();
        },
        refused,
        [&] {
          EXPECT_EQ(box.selection_length(), 3);
          press(win32::Control(GetFocus()), VK_RETURN);
        },
        refused,
        [&] {
          EXPECT_TRUE(shown());
          box.select_all();
          win32::Clipboard(form.handle()).set_text("*.*");
          SendMessageW(box.handle(), WM_PASTE, 0, 0);
          EXPECT_EQ(box.text(), "*");
          form.Dir1.focus();
        },
        refused,
        [&] {
          win32::Clipboard(form.handle()).set_text("*..txt");
          SendMessageW(box.handle(), WM_PASTE, 0, 0);
          EXPECT_EQ(box.text(), ".txt");
          form.Dir1.focus();  // nobody objects
          EXPECT_EQ(box.text(), "txt");
          press(box, VK_RETURN);
        }});
  EXPECT_FALSE(shown());
  EXPECT_EQ(world.search.user_types[4], "txt");
  EXPECT_EQ(world.search.type_descriptions[4], "Text Document");
}

TEST_F(PathTest, CancelDiscardsAnInvalidTypeUnasked) {
  const auto type_invalid = [&] {
    form.txtUserFileType[1].focus();
    form.txtUserFileType[1].set_text("d:c");
  };
  open({type_invalid, [&] { press(form.txtUserFileType[1], VK_ESCAPE); }});
  EXPECT_TRUE(world.cancelled);
  open({type_invalid, [&] { press_mouse(form.Command2); },
        [&] {
          EXPECT_EQ(answer_box(L"Invalid File Type"), "") << "while the button is down";
          SendMessageW(form.Command2.handle(), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        }});
  EXPECT_TRUE(world.cancelled);
  EXPECT_EQ(world.search.user_types[2], "doc");
}

}  // namespace
}  // namespace tallowmere
