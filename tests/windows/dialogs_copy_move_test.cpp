#include "dialogs/frmCopyMove.h"

#include "dialogs/frmRename.h"
#include "dialogs/frmReplace.h"
#include "tests/windows/dialogs_support.h"
#include "win32/file_operations.h"

namespace tallowmere {
namespace {

/// Only says which folders it is to make.
class FolderMaker : public win32::WinFileOperations {
 public:
  FolderMaker() : WinFileOperations(nullptr) {}
  Result create_folder(const std::string& folder) override {
    made.push_back(folder);
    if (folder.find("full") != std::string::npos) return SystemError{112, "The disk is full"};
    return std::nullopt;
  }
  std::vector<std::string> made;
};

class CopyMoveTest : public testing::Test {
 protected:
  CopyMoveTest() {
    for (const char* folder : {"docs\\old\\", "docs\\new\\", "other\\"})
      world.files.add("C:\\" + std::string(folder) + "file", "");
  }
  std::optional<TransferRequest> ask(FileCommand command, const SelectedFiles& files,
                                     std::initializer_list<Hand::Step> steps) {
    std::optional<TransferRequest> request;
    world.hand.work([&] { request = form.ask(command, files, folders); }, steps);
    return request;
  }

  const SelectedFiles one{"a&b.txt", "C:\\docs\\", 1};
  const SelectedFiles three{"a.txt", "C:\\other\\", 3};
  DialogWorld world;
  FolderMaker folders;
  frmCopyMove form{world.hand.window(), world.context()};
};

TEST_F(CopyMoveTest, FolderNewFolderAndNewName) {
  const auto request = ask(FileCommand::move, one,
                           {[&] {
                              EXPECT_EQ(win32::Control(form.handle()).text(), "Move Files");
                              EXPECT_EQ(form.Label1.text(), "Move \"a&b.txt\" to:");
                              EXPECT_EQ(form.cmdOK.text(), "&Move");
                              EXPECT_EQ(form.lblTarget.text(), "C:\\docs\\");
                              EXPECT_TRUE(form.chkConfirm.checked());
                              form.Dir1.select(2);
                              press(form.Dir1, VK_RETURN);
                            },
                            [&] {
                              EXPECT_EQ(form.lblTarget.text(), "C:\\docs\\new\\");
                              form.txtNewFolder.set_text("a/b");
                              form.txtNewName.set_text("c.txt");
                              EXPECT_EQ(form.lblTarget.text(), "C:\\docs\\new\\a\\b\\c.txt");
                              form.cmdOK.click();
                            }});
  ASSERT_TRUE(request);
  EXPECT_EQ(request->folder, "C:\\docs\\new\\a\\b\\");
  EXPECT_EQ(request->name, "c.txt");
  EXPECT_TRUE(request->confirm_replacement);
  // A second click that comes late.
  SendMessageW(form.handle(), WM_COMMAND, IDOK, 0);
  EXPECT_EQ(folders.made, std::vector<std::string>{"C:\\docs\\new\\a\\b\\"});
}

TEST_F(CopyMoveTest, KeepsTheFolderAndTheCheckBoxBetweenShowings) {
  ask(FileCommand::copy, three,
      {[&] {
         EXPECT_EQ(form.Label1.text(), "Copy 3 files to:");
         EXPECT_FALSE(form.txtNewName.enabled());
         form.chkConfirm.click();
         form.Dir1.select(0);
         press(form.Dir1, VK_RETURN);
       },
       [&] { form.cmdOK.click(); }});
  const auto request = ask(FileCommand::copy, one, {[&] {
                             EXPECT_EQ(form.lblTarget.text(), "C:\\");
                             EXPECT_TRUE(form.txtNewName.enabled());
                             EXPECT_EQ(form.txtNewFolder.text(), "");
                             form.txtNewName.set_text("kept?");
                             press(form.txtNewName, VK_ESCAPE);
                           }});
  EXPECT_FALSE(request);
  EXPECT_TRUE(world.cancelled);
  ask(FileCommand::copy, one, {[&] {
        EXPECT_EQ(form.txtNewName.text(), "");
        EXPECT_FALSE(form.chkConfirm.checked());
        form.cmdCancel.click();
      }});
}

TEST_F(CopyMoveTest, RefusesWhatCannotBeAndStays) {
  const auto request =
      ask(FileCommand::copy, one,
          {[&] {
             form.txtNewFolder.set_text("a\\con");
             press(form.txtNewFolder, VK_RETURN);
           },
           [&] {
             form.txtNewFolder.set_text("good");
             SendMessageW(form.handle(), WM_COMMAND, IDOK, 0);  // behind the box
             EXPECT_NE(answer_box(L"Cannot Copy File").find("device"), std::string::npos);
           },
           [&] {
             EXPECT_TRUE(form.txtNewFolder.has_focus());
             form.txtNewFolder.set_text("full");
             form.txtNewName.set_text("a:b");
             form.cmdOK.click();
           },
           [&] { EXPECT_NE(answer_box(L"Cannot Copy File").find("\\ / :"), std::string::npos); },
           [&] {
             EXPECT_TRUE(form.txtNewName.has_focus());
             form.txtNewName.set_text("");
             form.cmdOK.click();
           },
           [&] {
             EXPECT_EQ(answer_box(L"Cannot Copy File"),
                       "The disk is full - encountered while trying to MAKE FOLDER "
                       "C:\\docs\\full\\");
           },
           [&] { form.cmdCancel.click(); }});
  EXPECT_FALSE(request);
}

TEST(RenameTest, SelectsTheStemAndStaysUntilTheNameIsTaken) {
  DialogWorld world;
  frmRename form(world.hand.window());
  std::vector<std::string> tried;
  world.hand.work(
      [&] {
        form.show("r\xC3\xA9sum\xC3\xA9.old.txt", [&](const std::string& name) {
          tried.push_back(name);
          return name == "good.txt";
        });
      },
      {[&] {
         EXPECT_EQ(form.txtOldName.text(), "r\xC3\xA9sum\xC3\xA9.old.txt");
         EXPECT_TRUE(form.txtNewName.has_focus());
         EXPECT_EQ(form.txtNewName.selection_length(), 10);
         type(form.txtNewName, "bad");
         press(form.txtNewName, VK_RETURN);
       },
       [&] {
         EXPECT_TRUE(form.txtNewName.has_focus());
         form.txtNewName.set_text("good.txt");
         form.cmdOK.click();
       }});
  EXPECT_EQ(tried, (std::vector<std::string>{"bad.txt", "good.txt"}));
  world.hand.work([&] { form.show("x", [](const std::string&) { return true; }); },
                  {[&] { press(form.txtNewName, VK_ESCAPE); }});
  form.txtNewName.set_text("late.txt");
  SendMessageW(form.handle(), WM_COMMAND, IDOK, 0);
  EXPECT_EQ(tried.size(), 2u) << "hidden, it renames nothing";
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
  EXPECT_EQ(answer([&] {
              EXPECT_TRUE(form.cmdNo.has_focus()) << "Enter alone harms nothing";
              EXPECT_EQ(form.lblSource.text(), "C:\\a & b\\x");
              EXPECT_EQ(form.lblSourceFacts.text(), "1601-01-01 12:00a, 12 bytes");
              EXPECT_EQ(form.lblTarget.text(), "D:\\x");
              EXPECT_EQ(form.lblTargetFacts.text(), ", 3456789 bytes");
              form.cmdYes.click();
            }),
            ReplaceAnswer::yes);
  EXPECT_EQ(answer([&] { form.cmdYesToAll.click(); }), ReplaceAnswer::yes_to_all);
  EXPECT_EQ(answer([&] {
              PostMessageW(form.handle(), WM_COMMAND, IDYES, 0);
              PostMessageW(form.handle(), WM_COMMAND, IDYES, 0);
            }),
            ReplaceAnswer::yes);
  EXPECT_EQ(answer([&] { press(form.cmdNo, VK_RETURN); }), ReplaceAnswer::no)
      << "the second click was for the question before";
  EXPECT_EQ(answer([&] { press(form.cmdNo, VK_ESCAPE); }), ReplaceAnswer::cancel);
}

}  // namespace
}  // namespace tallowmere
