#include "dialogs/frmFonts.h"

#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"
#include "win32/dpi.h"

namespace tallowmere {
namespace {

class FontsTest : public testing::Test {
 protected:
  /// What ask() answers, with `face` and `points` as they are afterwards.
  bool ask(std::initializer_list<Hand::Step> steps) {
    bool answer = false;
    hand.work([&] { answer = form.ask(face, points); }, steps);
    return answer;
  }
  std::string cell(int column) const {
    wchar_t text[100] = L"";
    ListView_GetItemText(form.lstFaces.handle(), form.lstFaces.selected(), column, text, 100);
    return win32::narrow(text);
  }
  /// "face size" of the font that the sample has.
  std::string sample() const {
    const LOGFONTW font = font_of(form.lblSample);
    const int size = MulDiv(-font.lfHeight, 72, win32::window_dpi(form.handle()));
    return win32::narrow(font.lfFaceName) + " " + std::to_string(size);
  }

  Hand hand;
  frmFonts form{hand.window()};
  std::string face = "tahoma";
  double points = 10;
};

TEST_F(FontsTest, OpensAtTheCurrentFontAndTakesKeys) {
  const auto opens_at_current = [&] {
    EXPECT_EQ(sample() + " " + form.lstSizes.row_text(form.lstSizes.selected()), "Tahoma 10 10");
    RECT row, area;
    GetClientRect(form.lstFaces.handle(), &area);
    ListView_GetItemRect(form.lstFaces.handle(), form.lstFaces.selected(), &row, LVIR_BOUNDS);
    EXPECT_TRUE(row.top > 0 && row.bottom <= area.bottom) << "in view";
    press(win32::Control(GetFocus()), VK_HOME);
    press(form.lstSizes, VK_END);
  };
  EXPECT_FALSE(ask({opens_at_current, [&] { press(form.lstSizes, VK_ESCAPE); }}));
  EXPECT_TRUE(face == "tahoma" && points == 10);
  EXPECT_TRUE(ask({opens_at_current, [&] {
                     EXPECT_EQ(sample(), form.faces().front().name + " 72");
                     type(form.lstFaces, "tah");
                     press(form.lstFaces, VK_RETURN);
                   }}));
  EXPECT_TRUE(face == "Tahoma" && points == 72);
}

TEST_F(FontsTest, WhatTheListsDoNotHoldIsKeptOrReplacedInView) {
  for (const char* stored : {"", "No Such Face"}) {
    face = stored;
    points = 9.75;
    EXPECT_TRUE(ask({[&] {
      EXPECT_EQ(form.lstSizes.row_text(form.lstSizes.selected()), "9.75");
      EXPECT_EQ(cell(1), face.empty() ? "" : "Fixed");
      press(form.lstFaces, VK_RETURN);
    }}));
    EXPECT_EQ(face.empty(), find_face(form.faces(), face) < 0) << face;
    EXPECT_EQ(points, 9.75);
  }
}

TEST_F(FontsTest, ListsEachFaceOnceWithItsPitch) {
  ask({[&] {
    int fixed = 0;
    std::wstring before;
    for (std::size_t i = 0; i < form.faces().size(); ++i) {
      form.lstFaces.select_only(static_cast<int>(i));
      const std::wstring name = win32::wide(cell(0));
      EXPECT_TRUE(name[0] != '@' && lstrcmpiW(before.c_str(), name.c_str()) < 0) << cell(0);
      before = name;
      fixed += cell(1) == "Fixed";
    }
    EXPECT_TRUE(fixed > 0 && fixed < form.lstFaces.row_count());
    form.cmdCancel.click();
  }});
}

}  // namespace
}  // namespace tallowmere
