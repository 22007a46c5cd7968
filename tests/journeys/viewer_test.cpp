#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class Viewer : public Journey {};

TEST_F(Viewer, StepsThroughAllHitsOfALongFileAndBack) {
  constexpr int hits = 12;
  const auto hit = [](int i) { return (i % 2 ? "Needle-" : "NEEDLE-") + std::to_string(i % hits); };
  std::string content;
  for (int i = 0; i < hits; ++i) {
    content += hit(i) + " ";
    // Some hits lie close together, others chunks apart.
    for (int line = 0; line < (i % 4 == 3 ? 1500 : 3); ++line) content += "Only hay.\r\n";
  }
  write("long.txt", content);
  write("other.txt", "one needle");
  set_folder_settings();
  const auto program = start();
  ASSERT_TRUE(program->search(phrase, "needle"));
  program->list().select(0);
  const Window box = program->control(IDC_TEXT1);
  /// Whether this hit comes to be the selected one.
  const auto comes = [&](int i) {
    return wait_until([&] {
      const auto start = static_cast<std::size_t>(box.selection_start());
      return box.selected_text() == hit(i).substr(0, 6) &&
             box.text().substr(start, hit(i).size() + 1) == hit(i) + " ";
    });
  };
  ASSERT_TRUE(comes(0));
  EXPECT_EQ(program->window().text(), " long.txt - Tallowmere 32");
  for (int i = 1; i <= hits; ++i) {  // once round
    program->control(IDC_CMDFINDNEXT).click();
    ASSERT_TRUE(comes(i)) << i;
  }
  for (int i = hits - 1; i >= 0; --i) {
    program->control(IDC_CMDFINDPREV).click();
    ASSERT_TRUE(comes(i)) << i;
  }
}

}  // namespace
}  // namespace tallowmere::driver
