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
  bool current_face_in_view() const {
    RECT row, area;
    GetClientRect(form.lstFaces.handle(), &area);
    ListView_GetItemRect(form.lstFaces.handle(), form.lstFaces.selected(), &row, LVIR_BOUNDS);
    return row.top > 0 && row.bottom <= area.bottom;
  }
  /// "face size" of the font that the sample has.
  std::string sample() const {
    LOGFONTW font{};
    GetObjectW(sample_font(), sizeof font, &font);
    const int size = MulDiv(-font.lfHeight, 72, win32::window_dpi(form.handle()));
    return win32::narrow(font.lfFaceName) + " " + std::to_string(size);
  }
  SIZE sample_extent() const {
    const std::wstring text = win32::wide(form.lblSample.text());
    const HDC screen = GetDC(nullptr);
    SelectObject(screen, sample_font());
    SIZE extent{};
    GetTextExtentPoint32W(screen, text.c_str(), static_cast<int>(text.size()), &extent);
    ReleaseDC(nullptr, screen);
    return extent;
  }
  HFONT sample_font() const {
    return reinterpret_cast<HFONT>(SendMessageW(form.lblSample.handle(), WM_GETFONT, 0, 0));
  }

  Hand hand;
  frmFonts form{hand.window()};
  std::string face = "tahoma";
  double points = 10;
};

TEST_F(FontsTest, InstalledFacesStandOnceInOrderWithTheirPitch) {
  const std::vector<win32::FontFace> faces = win32::installed_faces();
  int fixed = 0;
  for (std::size_t i = 0; i < faces.size(); ++i) {
    EXPECT_NE(faces[i].name.front(), '@');
    if (i > 0) {
      EXPECT_LT(
          lstrcmpiW(win32::wide(faces[i - 1].name).c_str(), win32::wide(faces[i].name).c_str()), 0)
          << faces[i].name;
    }
    fixed += faces[i].fixed_pitch;
  }
  EXPECT_GT(fixed, 0);
  const int tahoma = win32::find_face(faces, "TAHOMA");
  ASSERT_GE(tahoma, 0);
  EXPECT_FALSE(faces[static_cast<std::size_t>(tahoma)].fixed_pitch);
  EXPECT_EQ(win32::find_face(faces, "Taho"), -1);
  EXPECT_EQ(win32::find_face_beginning(faces, "TAHO", tahoma + 1), tahoma);  // round the end
  EXPECT_EQ(win32::find_face({}, "Tahoma"), -1);
}

TEST_F(FontsTest, OpensAtTheCurrentFontAndTakesKeys) {
  EXPECT_TRUE(ask({[&] {
                     EXPECT_TRUE(form.lstFaces.has_focus());
                     EXPECT_EQ(cell(0), "Tahoma");
                     EXPECT_TRUE(current_face_in_view());
                     EXPECT_EQ(form.lstSizes.row_text(form.lstSizes.selected()), "10");
                     EXPECT_EQ(sample(), "Tahoma 10");
                     EXPECT_EQ(
                         tab_order(form.handle(), form.lstFaces.handle()),
                         (std::vector<int>{IDC_FONTS_FACES, IDC_FONTS_SIZES, IDOK, IDCANCEL}));
                     press(form.lstFaces, VK_HOME);
                     press(form.lstSizes, VK_END);
                   },
                   [&] {
                     EXPECT_EQ(cell(0), form.faces().front().name);
                     EXPECT_EQ(sample(), form.faces().front().name + " 72");
                     type(form.lstFaces, "tah");
                     EXPECT_EQ(cell(0), "Tahoma");
                     press(form.lstFaces, VK_RETURN);
                   }}));
  EXPECT_EQ(face, "Tahoma");
  EXPECT_EQ(points, 72);
}

TEST_F(FontsTest, EscapeChangesNothing) {
  EXPECT_FALSE(ask({[&] {
                      press(form.lstFaces, VK_END);
                      press(form.lstSizes, VK_HOME);
                    },
                    [&] { press(form.lstSizes, VK_ESCAPE); }}));
  EXPECT_EQ(face, "tahoma");
  EXPECT_EQ(points, 10);
  EXPECT_TRUE(ask({[&] {
    EXPECT_EQ(cell(0), "Tahoma");
    EXPECT_EQ(sample(), "Tahoma 10");
    form.cmdOK.click();
  }}));
}

TEST_F(FontsTest, KeepsWhatTheListsDoNotHold) {
  const struct {
    const char* face;
    double points;
    const char* size_row;
  } cases[] = {{"No Such Face", 9.75, "9.75"}, {"", 1e6, "1e+06"}, {"No Such Face", -3, ""}};
  for (const auto& stored : cases) {
    face = stored.face;
    points = stored.points;
    EXPECT_TRUE(ask({[&] {
      EXPECT_EQ(form.lstFaces.selected(), -1);
      const int size = form.lstSizes.selected();
      EXPECT_EQ(size < 0 ? "" : form.lstSizes.row_text(size), stored.size_row);
      press(form.lstFaces, VK_RETURN);
    }}));
    EXPECT_EQ(face, stored.face);
    EXPECT_EQ(points, stored.points);
  }
}

TEST_F(FontsTest, MarksFixedPitchAndHasRoomForTheLargestSize) {
  RECT room;
  GetClientRect(form.lblSample.handle(), &room);
  points = 72;
  ask({[&] {
    for (std::size_t i = 0; i < form.faces().size(); ++i) {
      form.lstFaces.select_only(static_cast<int>(i));
      const bool fixed = form.faces()[i].fixed_pitch;
      EXPECT_EQ(cell(1), fixed ? "Fixed" : "") << cell(0);
      if (!fixed && cell(0) != "Tahoma") continue;
      EXPECT_LE(sample_extent().cx, room.right) << cell(0);
      EXPECT_LE(sample_extent().cy, room.bottom) << cell(0);
    }
    form.cmdCancel.click();
  }});
}

}  // namespace
}  // namespace tallowmere
