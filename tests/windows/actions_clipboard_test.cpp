#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

#include "actions/clipboard_commands.h"
#include "tests/windows/actions_support.h"
#include "win32/clipboard.h"

namespace tallowmere {
namespace {

using Messages = std::vector<std::string>;

class ClipboardCommandsTest : public testing::Test {
 protected:
  std::string text() { return win32::clipboard_text(host.window()).value_or("(no text)"); }

  void put(std::string_view text) { win32::Clipboard(host.window()).set_text(text); }

  void put_picture() {
    ASSERT_TRUE(OpenClipboard(host.window()));
    EmptyClipboard();
    EXPECT_TRUE(SetClipboardData(CF_BITMAP, CreateBitmap(8, 8, 1, 1, nullptr)));
    CloseClipboard();
  }

  RecordingHost host;
  ClipboardCommands commands{host};
};

/// Another program, as good as: keeps the clipboard open, for a moment or to the end.
class Holder {
 public:
  explicit Holder(bool only_a_moment)
      : thread_([this, only_a_moment] {
          const win32::Clipboard held(nullptr);
          opened_.set_value(static_cast<bool>(held));
          Sleep(50);
          while (!over_ && !only_a_moment) Sleep(1);
        }) {
    EXPECT_TRUE(opened_.get_future().get());
  }
  ~Holder() {
    over_ = true;
    thread_.join();
  }

 private:
  std::promise<bool> opened_;
  std::atomic<bool> over_ = false;
  std::thread thread_;
};

TEST_F(ClipboardCommandsTest, TextIsCopiedAndAppended) {
  put("before");
  commands.mnuCopyToClipboard_Click("");
  commands.mnuAppendToClipboard_Click("");
  EXPECT_EQ(text(), "before");
  commands.mnuCopyToClipboard_Click("é中😀\r\nb");
  EXPECT_EQ(text(), "é中😀\r\nb");
  commands.mnuAppendToClipboard_Click("more");
  EXPECT_EQ(text(), "é中😀\r\nbmore");
  EXPECT_EQ(host.messages, Messages());
}

TEST_F(ClipboardCommandsTest, AFullClipboardKeepsItsText) {
  const std::string full(64990, 'x');
  put(full);
  commands.mnuAppendToClipboard_Click("0123456789");
  EXPECT_EQ(text(), full);
  EXPECT_EQ(host.messages,
            Messages{"Clipboard Is Full: Cannot append selected text onto Clipboard."});
  put(full.substr(1));
  commands.mnuAppendToClipboard_Click("0123456789");
  EXPECT_EQ(text(), full.substr(1) + "0123456789");
}

TEST_F(ClipboardCommandsTest, APictureGivesWayToText) {
  put_picture();
  ASSERT_EQ(text(), "(no text)");
  commands.mnuAppendToClipboard_Click("alone");
  EXPECT_EQ(text(), "alone");
  EXPECT_FALSE(IsClipboardFormatAvailable(CF_BITMAP));
}

TEST_F(ClipboardCommandsTest, FileNames) {
  commands.mnuCopyFilename_Click({"C:\\é.txt"});
  EXPECT_EQ(text(), "C:\\é.txt");
  commands.mnuCopyFilename_Click(std::vector<std::string>(10'000, "C:\\docs\\a file.txt"));
  EXPECT_EQ(text().size(), 10'000u * 20);
  commands.mnuCopyFilename_Click({});
  EXPECT_EQ(text(), "(no text)");
}

TEST_F(ClipboardCommandsTest, AnotherProgramHoldsIt) {
  put("before");
  {
    const Holder soon_done(true);
    commands.mnuAppendToClipboard_Click(" and after");
  }
  EXPECT_EQ(text(), "before and after");
  EXPECT_EQ(host.messages, Messages());
  {
    const Holder stubborn(false);
    commands.mnuCopyToClipboard_Click("lost");
  }
  EXPECT_EQ(text(), "before and after");
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages.front().find("Cannot Open Clipboard: "), 0u);
}

}  // namespace
}  // namespace tallowmere
