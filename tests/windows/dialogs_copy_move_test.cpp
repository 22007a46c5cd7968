#include "dialogs/frmCopyMove.h"

#include "dialogs/frmRename.h"
#include "dialogs/frmReplace.h"
#include "tests/windows/dialogs_support.h"
#include "win32/file_operations.h"
#include "win32/message_loop.h"

namespace tallowmere {
namespace {

/// Only says which folders it is to make.
class FolderMaker : public win32::WinFileOperations {
 public:
  FolderMaker() : WinFileOperations(nullptr) {}
  Result create_folder(const std::string& folder) override {
    made += folder + "|";
    if (folder.ends_with("full\\")) return SystemError{112, "The disk is full"};
    return std::nullopt;
  }
  std::string made;
};

class CopyMoveTest : public testing::Test {
 protected:
  CopyMoveTest() {
    for (const char* folder : {"old", "new"})
      world.files.add("C:\\docs\\" + std::string(folder) + "\\file", "");
  }
  std::optional<TransferRequest> ask(std::initializer_list<Hand::Step> steps) {
    const SelectedFiles one{"a&b.txt", "C:\\docs\\", 1};
    std::optional<TransferRequest> request;
    world.hand.work([&] { request = form.ask(FileCommand::copy, one, folders); }, steps);
    return request;
  }

  DialogWorld world;
  FolderMaker folders;
  frmCopyMove form{world.hand.window(), world.context()};
};

TEST_F(CopyMoveTest, KeepsTheFolderAndTheCheckBoxBetweenShowings) {
  const auto request = ask({[&] {
                              form.chkConfirm.click();
                              form.Dir1.select(2);
                              press(form.Dir1, VK_RETURN);
                            },
                            [&] {
                              form.txtNewName.set_text("c.txt");
                              form.cmdOK.click();
                            }});
  ASSERT_TRUE(request);
  EXPECT_EQ(request->folder + request->name, "C:\\docs\\new\\c.txt");
  SendMessageW(form.handle(), WM_COMMAND, IDOK, 0);  // a second click that comes late
  EXPECT_EQ(folders.made, "C:\\docs\\new\\|");
  for (int round = 0; round < 2; ++round) {
    world.cancelled = false;
    EXPECT_FALSE(ask({[&] {
      EXPECT_EQ(form.lblTarget.text(), "C:\\docs\\new\\") << "without the name of before";
      EXPECT_FALSE(form.chkConfirm.checked());
      form.txtNewName.set_text("kept?");
      press(form.txtNewName, VK_ESCAPE);
    }}));
    EXPECT_TRUE(world.cancelled);
  }
}

TEST_F(CopyMoveTest, RefusesWhatCannotBeAndStays) {
  const auto enter = [&](const char* folder) {
    form.txtNewFolder.set_text(folder);
    press(form.txtNewFolder, VK_RETURN);
  };
  EXPECT_FALSE(ask(
      {[&] { enter("a\\con"); },
       [&] {
         form.txtNewFolder.set_text("good");
         SendMessageW(form.handle(), WM_COMMAND, IDOK, 0);  // behind the box
         EXPECT_NE(answer_box(L"Cannot Copy File").find("device"), std::string::npos);
       },
       [&] {
         EXPECT_TRUE(form.txtNewFolder.has_focus());
         enter("full");
       },
       [&] { EXPECT_TRUE(answer_box(L"Cannot Copy File").ends_with("FOLDER C:\\docs\\full\\")); },
       [&] { form.cmdCancel.click(); }}));
}

TEST_F(CopyMoveTest, NothingGoesAnywhereWhileTheFolderIsAwaited) {
  world.files.hang_next(HangingFiles::Call::list);
  const auto request = ask({[&] {
    SendMessageW(form.handle(), WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(!form.cmdOK.enabled() && folders.made.empty());
    world.files.release();
    while (!form.cmdOK.enabled()) win32::pump_pending();
    form.cmdOK.click();
  }});
  ASSERT_TRUE(request);
  EXPECT_EQ(request->folder, "C:\\docs\\");
}

TEST(RenameTest, SelectsTheStemAndStaysUntilTheNameIsTaken) {
  DialogWorld world;
  frmRename form(world.hand.window());
  std::string tried;
  const auto rename = [&](const std::string& name) {
    tried += name + "|";
    return name == "good.txt";
  };
  world.hand.work([&] { form.show("r\u00E9sum\u00E9.old.txt", rename); }, {[&] {
                    type(form.txtNewName, "bad");  // over the stem, which is selected
                    form.cmdOK.click();
                    EXPECT_TRUE(form.txtNewName.has_focus());
                    form.txtNewName.set_text("good.txt");
                    form.cmdOK.click();
                  }});
  SendMessageW(form.handle(), WM_COMMAND, IDOK, 0);
  EXPECT_EQ(tried, "bad.txt|good.txt|") << "hidden, it renames nothing";
}

TEST(ReplaceTest, ShowsBothFilesAndAnswers) {
  DialogWorld world;
  frmReplace form(world.hand.window(), {world.clock, iso_date});
  const ReplaceQuestion question{"C:\\a & b\\x", "D:\\x", {ticks_per_second, 12}, {0, 3456789}};
  const auto answer = [&](const Hand::Step& step) {
    ReplaceAnswer given{};
    world.hand.work([&] { given = form.ask(question); }, {step});
    return given;
  };
  using enum ReplaceAnswer;
  EXPECT_EQ(answer([&] {
              EXPECT_EQ(form.lblSource.text() + "|" + form.lblSourceFacts.text(),
                        "C:\\a & b\\x|1601-01-01 12:00a, 12 bytes");
              EXPECT_EQ(form.lblTarget.text() + form.lblTargetFacts.text(), "D:\\x, 3456789 bytes");
              form.cmdYesToAll.click();
            }),
            yes_to_all);
  EXPECT_EQ(answer([&] {
              for (int click = 0; click < 2; ++click)
                PostMessageW(form.handle(), WM_COMMAND, IDYES, 0);
            }),
            yes);
  // The second click was for the question before, and Enter alone harms nothing.
  EXPECT_EQ(answer([&] { press(win32::Control(GetFocus()), VK_RETURN); }), no);
  EXPECT_EQ(answer([&] { press(form.cmdNo, VK_ESCAPE); }), cancel);
}

}  // namespace
}  // namespace tallowmere
