#include "dialogs/frmPath.h"

#include "dialogs/resource.h"
#include "shell/file_type_choice.h"
#include "tests/windows/dialogs_support.h"

namespace tallowmere {
namespace {

class PathTest : public testing::Test {
 protected:
  PathTest() {
    world.files.folders = {{"C:\\", {"docs", "Empty", "locked"}},
                           {"C:\\docs\\", {"old", "New"}},
                           {"C:\\docs\\old\\", {}},
                           {"C:\\Empty\\", {}}};
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
  bool shown() { return IsWindowVisible(form.handle()) != FALSE; }

  DialogWorld world;
  int summaries = 0;
  frmPath form{world.hand.window(), world.context(), [this] { ++summaries; }};
};

TEST_F(PathTest, ShowsTheSearchAndOkWritesItBack) {
  open({[&] {
    EXPECT_EQ(win32::Control(form.handle()).text(), "WhereTo Search");
    EXPECT_EQ(form.chkSearchSub.text(), "Search SubFolders");
    EXPECT_EQ(form.Label1.text(), "File Types:");
    EXPECT_EQ(form.chkFileType.text(), "All Files");
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
  EXPECT_EQ(world.search.drive, "C:\\");
  EXPECT_TRUE(world.search.search_subfolders);
  EXPECT_EQ(world.search.type_checked,
            (std::array<bool, 7>{false, true, true, true, false, false, false}));
  EXPECT_EQ(world.search.user_types[4], "r&b");
  EXPECT_EQ(world.search.type_descriptions[1], "Text Document");
  EXPECT_EQ(summaries, 1);
}

TEST_F(PathTest, AllFilesGreysTheTypesAndUntickingClearsThem) {
  open({[&] {
    form.chkFileType.click();
    EXPECT_EQ(ticks(), "(-)(-)(-)(-)(-)(-)");
    form.txtUserFileType[3].set_text("log");
    EXPECT_EQ(ticks(), "(-)(-)(-)(-)(-)(-)");
    form.chkFileType.click();
    EXPECT_EQ(ticks(), "....(.)(.)");
    form.chkUserFileType[3].click();
    EXPECT_EQ(ticks(), "...x(.)(.)");
    form.txtUserFileType[3].set_text("");
    EXPECT_EQ(ticks(), "...(.)(.)(.)");
    form.txtUserFileType[0].set_text("txt2");
    EXPECT_EQ(form.chkUserFileType[0].text(), "");
    form.chkFileType.click();
    form.Command1.click();
  }});
  EXPECT_EQ(world.search.type_checked,
            (std::array<bool, 7>{true, true, true, true, true, true, true}));
}

TEST_F(PathTest, FoldersOpenByDoubleClickAndEnter) {
  std::string trouble;
  open({[&] {
          form.Dir1.select(3);
          press(form.Dir1, VK_RETURN);
        },
        [&] {
          EXPECT_TRUE(shown());
          EXPECT_EQ(rows(), "C:\\|docs|old|");
          form.Dir1.select(0);
          SendMessageW(form.handle(), WM_COMMAND, MAKEWPARAM(IDC_PATH_DIR1, LBN_DBLCLK),
                       reinterpret_cast<LPARAM>(form.Dir1.handle()));
          EXPECT_EQ(rows(), "C:\\|docs|Empty|locked|");
          form.Dir1.select(3);
          press(form.Dir1, VK_RETURN);
        },
        [&] { trouble = answer_box(L"Drive Not Ready"); },
        [&] {
          EXPECT_EQ(rows(), "C:\\|docs|Empty|locked|");
          form.Command1.click();
        }});
  EXPECT_EQ(trouble, "The device is not ready - encountered while trying to access disk.");
  EXPECT_EQ(world.search.path, "C:\\");
}

TEST_F(PathTest, ADriveThatIsNotReadyLeavesEverythingWhereItWas) {
  std::string trouble;
  open({[&] {
          const int other = form.Drive1.row_text(0) == "C:\\" ? 1 : 0;
          ASSERT_GT(form.Drive1.count(), 1) << "needs a second drive letter";
          form.Drive1.select(other);
          SendMessageW(form.handle(), WM_COMMAND, MAKEWPARAM(IDC_PATH_DRIVE1, CBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(form.Drive1.handle()));
        },
        [&] { trouble = answer_box(L"Drive Not Ready"); },
        [&] {
          EXPECT_EQ(form.Drive1.row_text(form.Drive1.selected()), "C:\\");
          EXPECT_EQ(rows(), "C:\\|docs|New|old|");
          form.Command1.click();
        }});
  EXPECT_EQ(trouble, "The device is not ready - encountered while trying to access disk.");
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
  std::string refusal;
  open({[&] {
          const win32::TextBox& box = form.txtUserFileType[3];
          box.focus();
          type(box, "t?*/:<>\\|t");
          EXPECT_EQ(box.text(), "tt");
          box.select_all();
          box.replace_selection("t?t");
          form.Dir1.focus();
          EXPECT_EQ(box.text(), "t?t");
          box.focus();
          box.select_all();
          box.replace_selection("t:t");
          form.Dir1.focus();
        },
        [&] { refusal = answer_box(L"Invalid File Type"); },
        [&] {
          EXPECT_TRUE(form.txtUserFileType[3].has_focus());
          EXPECT_EQ(form.txtUserFileType[3].selection_length(), 3);
          press(form.txtUserFileType[3], VK_RETURN);
        },
        [&] { EXPECT_EQ(answer_box(L"Invalid File Type"), refusal); },
        [&] {
          EXPECT_TRUE(shown());
          form.txtUserFileType[3].replace_selection("txt");
          press(form.txtUserFileType[3], VK_RETURN);
        }});
  EXPECT_EQ(refusal, invalid_file_type_message());
  EXPECT_FALSE(shown());
  EXPECT_EQ(world.search.user_types[4], "txt");
  EXPECT_EQ(world.search.type_descriptions[4], "Text Document");
}

TEST_F(PathTest, OkRefusesAnInvalidTypeAndCancelDiscardsItUnasked) {
  open({[&] {
          form.txtUserFileType[1].focus();
          form.txtUserFileType[1].set_text("d:c");
          form.Command1.click();
        },
        [&] { EXPECT_EQ(answer_box(L"Invalid File Type"), invalid_file_type_message()); },
        [&] {
          EXPECT_TRUE(shown());
          EXPECT_TRUE(form.txtUserFileType[1].has_focus());
          form.Command2.click();
          EXPECT_FALSE(shown());
          EXPECT_TRUE(world.cancelled);
        }});
  EXPECT_EQ(FindWindowW(L"#32770", L"Invalid File Type"), nullptr);
  EXPECT_EQ(form.txtUserFileType[1].text(), "doc");
  EXPECT_EQ(world.search.user_types[2], "doc");
  open({[&] {
    form.txtUserFileType[1].focus();
    form.txtUserFileType[1].set_text("d:c");
    press(form.txtUserFileType[1], VK_ESCAPE);
  }});
  EXPECT_EQ(world.search.user_types[2], "doc");
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
