#include "dialogs/frmPath.h"

#include "shell/file_type_choice.h"
#include "tests/windows/accessible_name.h"
#include "tests/windows/dialogs_support.h"
#include "win32/fonts.h"

namespace tallowmere {
namespace {

class PathTest : public testing::Test {
 protected:
  PathTest() {
    for (const char* folder : {"docs\\old\\", "docs\\New\\", "Empty\\", "locked\\"})
      world.files.add("C:\\" + std::string(folder) + "file", "");
    for (const char* folder : {"C:\\locked\\", "C:\\gone\\"})
      world.files.folder_errors[folder] = {21, "The device is not ready"};
    SearchCriteria& search = world.search;
    search.drive = "C:\\";
    search.path = "C:\\docs";
    search.search_subfolders = false;
    search.user_types = {"*", "txt", "doc", "w??", "", "", ""};
    search.type_checked = {false, true, false, true, false, false, false};
    search.type_descriptions[1] = "Text Document";
  }
  void open(std::initializer_list<Hand::Step> steps) {
    world.hand.work([this] { form.show(world.hand.window(), world.hand.window()); }, steps);
  }
  std::string rows() {
    std::string text;
    for (int row = 0; row < form.Dir1.count(); ++row) text += form.Dir1.row_text(row) + "|";
    return text;
  }
  /// One character a check box: x ticked, - greyed, . unticked; in brackets when disabled.
  std::string ticks() {
    std::string text;
    for (const win32::CheckBox& box : form.chkUserFileType) {
      const char sign = box.state() == win32::Check::grayed ? '-' : box.checked() ? 'x' : '.';
      text += box.enabled() ? std::string(1, sign) : std::string("(") + sign + ")";
    }
    return text;
  }
  void notify(const win32::Control& control, int code) {
    SendMessageW(form.handle(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control.handle()), code),
                 reinterpret_cast<LPARAM>(control.handle()));
  }
  bool shown() { return IsWindowVisible(form.handle()) != FALSE; }

  DialogWorld world;
  int summaries = 0;
  frmPath form{world.hand.window(), world.context(), [this] { ++summaries; }};
};

TEST_F(PathTest, ShowsTheSearchAndOkWritesItBack) {
  open({[&] {
    EXPECT_TRUE(form.Dir1.has_focus());
    EXPECT_FALSE(world.cancelled);
    EXPECT_EQ(rows(), "C:\\|docs|New|old|");
    EXPECT_EQ(form.Dir1.selected(), 1);
    EXPECT_EQ(ticks(), "x.x(.)(.)(.)");
    EXPECT_EQ(form.chkUserFileType[0].text(), "Text Document");
    form.chkUserFileType[1].click();
    form.chkSearchSub.click();
    form.txtUserFileType[3].set_text("r&b");
    form.Command1.click();
  }});
  EXPECT_EQ(world.search.path, "C:\\docs");
  EXPECT_TRUE(world.search.search_subfolders);
  EXPECT_EQ(world.search.type_checked,
            (std::array<bool, 7>{false, true, true, true, false, false, false}));
  EXPECT_EQ(world.search.user_types[4], "r&b");
  EXPECT_EQ(summaries, 1);
}

TEST_F(PathTest, TheRowsOfTheFoldersFollowTheFont) {
  const auto row_height = [this] {
    return SendMessageW(form.Dir1.handle(), LB_GETITEMHEIGHT, 0, 0);
  };
  const LRESULT before = row_height();
  const win32::Font font("Tahoma", 40, 96);
  form.Dir1.set_font(font.handle());
  EXPECT_GT(row_height(), before);
  form.Dir1.set_font(reinterpret_cast<HFONT>(SendMessageW(form.handle(), WM_GETFONT, 0, 0)));
  EXPECT_EQ(row_height(), before);
}

TEST_F(PathTest, TypeBoxesHaveNames) {
  for (int i = 0; i < user_type_boxes; ++i) {
    EXPECT_EQ(accessible_name(form.txtUserFileType[i].handle()), "type " + std::to_string(i + 1));
  }
}

TEST_F(PathTest, AllFilesGreysTheTypesAndUntickingClearsThem) {
  open({[&] {
    form.chkFileType.click();
    form.txtUserFileType[3].set_text("log");
    EXPECT_EQ(ticks(), "(-)(-)(-)(-)(-)(-)");
    form.chkFileType.click();
    EXPECT_EQ(ticks(), "....(.)(.)");
    form.txtUserFileType[0].set_text("txt2");
    EXPECT_EQ(form.chkUserFileType[0].text(), "");
    form.chkFileType.click();
    form.Command1.click();
  }});
  EXPECT_TRUE(world.search.type_checked[0]);
}

TEST_F(PathTest, FoldersAndDrivesOpenOrStayWhereTheyWere) {
  const std::string trouble = "The device is not ready - encountered while trying to access disk.";
  open({[&] {
          form.Dir1.select(3);
          press(form.Dir1, VK_RETURN);
        },
        [&] {
          EXPECT_EQ(rows(), "C:\\|docs|old|");
          form.Dir1.select(0);
          notify(form.Dir1, LBN_DBLCLK);
          EXPECT_EQ(rows(), "C:\\|docs|Empty|locked|");
          form.Dir1.select(3);
          press(form.Dir1, VK_RETURN);
        },
        [&] { EXPECT_EQ(answer_box(L"Drive Not Ready"), trouble); },
        [&] {
          ASSERT_GT(form.Drive1.count(), 1) << "needs a second drive letter";
          const int other = form.Drive1.row_text(0) == "C:\\" ? 1 : 0;
          const std::string drive = form.Drive1.row_text(other).substr(0, 2);
          wchar_t folder[MAX_PATH];  // that drive's current one
          GetFullPathNameW(win32::wide(drive).c_str(), MAX_PATH, folder, nullptr);
          world.files.folder_errors[with_separator(win32::narrow(folder))] = {
              21, "The device is not ready"};
          form.Drive1.select(other);
          notify(form.Drive1, CBN_SELCHANGE);
        },
        [&] { EXPECT_EQ(answer_box(L"Drive Not Ready"), trouble); },
        [&] {
          EXPECT_EQ(form.Drive1.row_text(form.Drive1.selected()), "C:\\");
          EXPECT_EQ(rows(), "C:\\|docs|Empty|locked|");
          form.Command1.click();
        }});
  EXPECT_EQ(world.search.path, "C:\\");
}

TEST_F(PathTest, AVanishedFolderBecomesTheProgramsDrive) {
  world.search.path = "C:\\gone";
  open({[&] {
    EXPECT_EQ(rows(), "C:\\|docs|Empty|locked|");
    form.Command2.click();
  }});
  EXPECT_EQ(world.search.path, "C:\\gone");
}

TEST_F(PathTest, TypingKeepsOutWhatPastingBringsIn) {
  const win32::TextBox& box = form.txtUserFileType[3];
  const auto paste = [&](const char* text) {
    box.focus();
    box.select_all();
    box.replace_selection(text);
  };
  open({[&] {
          box.focus();
          type(box, "t?:|t");
          EXPECT_EQ(box.text(), "tt");
          paste("t:t");
          form.Dir1.focus();
        },
        [&] { EXPECT_EQ(answer_box(L"Invalid File Type"), invalid_file_type_message()); },
        [&] {
          EXPECT_TRUE(box.has_focus());
          EXPECT_EQ(box.selection_length(), 3);
          press(box, VK_RETURN);
        },
        [&] { EXPECT_EQ(answer_box(L"Invalid File Type"), invalid_file_type_message()); },
        [&] {
          EXPECT_TRUE(shown());
          paste("t?t");
          form.Dir1.focus();
          EXPECT_EQ(box.text(), "t?t");
          paste("txt");
          press(box, VK_RETURN);
        }});
  EXPECT_FALSE(shown());
  EXPECT_EQ(world.search.user_types[4], "txt");
  EXPECT_EQ(world.search.type_descriptions[4], "Text Document");
}

TEST_F(PathTest, CancelDiscardsAnInvalidTypeUnasked) {
  for (const bool by_key : {false, true}) {
    open({[&] {
      form.txtUserFileType[1].focus();
      form.txtUserFileType[1].set_text("d:c");
      by_key ? press(form.txtUserFileType[1], VK_ESCAPE) : form.Command2.click();
    }});
    EXPECT_TRUE(world.cancelled);
    EXPECT_EQ(FindWindowW(L"#32770", L"Invalid File Type"), nullptr);
    EXPECT_EQ(world.search.user_types[2], "doc");
  }
  EXPECT_EQ(summaries, 0);
}

TEST_F(PathTest, AMouseThatLeavesCancelGoesOn) {
  open({[&] {
    const HWND cancel = form.Command2.handle();
    SendMessageW(cancel, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_TRUE(world.cancelled);
    SendMessageW(cancel, WM_LBUTTONUP, 0, MAKELPARAM(-50, -50));
    EXPECT_FALSE(world.cancelled);
    EXPECT_TRUE(shown());
    form.Command1.click();
  }});
  EXPECT_FALSE(world.cancelled);
}

}  // namespace
}  // namespace tallowmere
