#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <thread>

#include "actions/clipboard_commands.h"
#include "tests/windows/actions_support.h"
#include "win32/clipboard.h"

namespace tallowmere {
namespace {

class ClipboardCommandsTest : public testing::Test {
 protected:
  std::string text() { return win32::clipboard_text(host.window()).value_or("(no text)"); }

  RecordingHost host;
  ClipboardCommands commands{host};
};

/// Another program, as good as: keeps the clipboard open, for a moment or to the end.
std::jthread hold_clipboard(bool only_a_moment) {
  auto opened = std::make_shared<std::promise<bool>>();
  std::jthread holder([only_a_moment, opened](const std::stop_token& over) {
    const win32::Clipboard held(nullptr);
    opened->set_value(static_cast<bool>(held));
    Sleep(50);
    while (!over.stop_requested() && !only_a_moment) Sleep(1);
  });
  EXPECT_TRUE(opened->get_future().get());
  return holder;
}

TEST_F(ClipboardCommandsTest, TextAndNamesComeOntoItOnlyWhenThereAreSome) {
  ASSERT_TRUE(OpenClipboard(host.window()));
  EmptyClipboard();
  EXPECT_TRUE(SetClipboardData(CF_BITMAP, CreateBitmap(8, 8, 1, 1, nullptr)));
  CloseClipboard();
  commands.mnuAppendToClipboard_Click("é中😀\r\nb");
  EXPECT_FALSE(IsClipboardFormatAvailable(CF_BITMAP)) << "a picture gives way";
  commands.mnuCopyToClipboard_Click("");
  commands.mnuAppendToClipboard_Click("");
  EXPECT_EQ(text(), "é中😀\r\nb");
  commands.mnuAppendToClipboard_Click("more");
  EXPECT_EQ(text(), "é中😀\r\nbmore");
  const std::string full(64990, 'x');
  commands.mnuCopyToClipboard_Click(full);
  EXPECT_TRUE(host.messages.empty());
  commands.mnuAppendToClipboard_Click("0123456789");
  EXPECT_EQ(text(), full);
  EXPECT_EQ(host.messages.size(), 1u) << "it is full";

  commands.mnuCopyFilename_Click(std::vector<std::string>(10'000, "C:\\docs\\a file.txt"));
  EXPECT_EQ(text().size(), 10'000u * 20);
  commands.mnuCopyFilename_Click({});
  EXPECT_EQ(text(), "(no text)");
}

TEST_F(ClipboardCommandsTest, AnotherProgramHoldsIt) {
  commands.mnuCopyToClipboard_Click("before");
  {
    const std::jthread soon_done = hold_clipboard(true);
    commands.mnuAppendToClipboard_Click(" and after");
  }
  EXPECT_TRUE(host.messages.empty());
  {
    const std::jthread stubborn = hold_clipboard(false);
    commands.mnuCopyToClipboard_Click("lost");
  }
  EXPECT_EQ(text(), "before and after");
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_TRUE(host.messages[0].starts_with("Cannot Open Clipboard: "));
}

}  // namespace
}  // namespace tallowmere
