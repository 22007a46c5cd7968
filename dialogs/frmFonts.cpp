#include "dialogs/frmFonts.h"

#include <algorithm>

#include "dialogs/resource.h"
#include "shell/font_sizes.h"
#include "win32/dpi.h"

namespace tallowmere {

namespace {

constexpr int face_column = 0;
constexpr int pitch_column = 1;
constexpr int pitch_column_width = 52;  ///< at 96 dots per inch

}  // namespace

frmFonts::frmFonts(HWND owner)
    : Form(IDD_FONTS, owner),
      lstFaces(item(IDC_FONTS_FACES)),
      lstSizes(item(IDC_FONTS_SIZES)),
      lblSample(item(IDC_FONTS_SAMPLE)),
      cmdOK(item(IDOK)),
      cmdCancel(item(IDCANCEL)),
      owner_(owner) {
  lstFaces.add_styles(LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
  lstFaces.add_column(face_column, "Name", false);
  lstFaces.add_column(pitch_column, "Pitch", false);
  size_columns();
  wire();
}

frmFonts::~frmFonts() {
  lblSample.set_font(nullptr);
}

void frmFonts::wire() {
  notify(IDC_FONTS_FACES, LVN_GETDISPINFOW, [this](NMHDR& header) -> LRESULT {
    lstFaces_GetDispInfo(reinterpret_cast<NMLVDISPINFOW&>(header));
    return 0;
  });
  notify(IDC_FONTS_FACES, LVN_ODFINDITEMW, [this](NMHDR& header) -> LRESULT {
    return lstFaces_ODFindItem(reinterpret_cast<NMLVFINDITEMW&>(header));
  });
  notify(IDC_FONTS_FACES, LVN_ITEMCHANGED, [this](NMHDR&) -> LRESULT {
    lstFaces_ItemChanged();
    return 0;
  });
  notify(IDC_FONTS_FACES, static_cast<UINT>(NM_DBLCLK), [this](NMHDR& header) -> LRESULT {
    lstFaces_DblClick(reinterpret_cast<NMITEMACTIVATE&>(header));
    return 0;
  });
  command(IDC_FONTS_SIZES, LBN_SELCHANGE, [this] { lstSizes_Click(); });
  command(IDC_FONTS_SIZES, LBN_DBLCLK, [this] { cmdOK_Click(); });
  clicked(IDOK, [this] { cmdOK_Click(); });
  clicked(IDCANCEL, [this] { cmdCancel_Click(); });
}

void frmFonts::size_columns() {
  const int dpi = win32::window_dpi(handle());
  RECT area;
  GetClientRect(lstFaces.handle(), &area);
  const int pitch_width = win32::scale(pitch_column_width, dpi);
  lstFaces.set_column_width(face_column,
                            area.right - win32::metrics(SM_CXVSCROLL, dpi) - pitch_width);
  lstFaces.set_column_width(pitch_column, pitch_width);
}

/// Sets the sample's font again: the system has given it the form's.
void frmFonts::on_dpi_changed(int, int) {
  size_columns();
  show_sample();
}

bool frmFonts::ask(std::string& face, double& points) {
  lstFaces.select_only(-1);
  face_ = face;
  points_ = points;
  fill_faces();
  fill_sizes();
  show_sample();
  accepted_ = false;
  show_modal(owner_);
  if (!accepted_) return false;
  face = face_;
  points = points_;
  return true;
}

void frmFonts::fill_faces() {
  faces_ = win32::installed_faces();
  lstFaces.set_row_count(static_cast<int>(faces_.size()), false);
  int row = find_face(faces_, face_);
  if (row < 0) {
    row = find_face(faces_, win32::Font(face_, points_, win32::window_dpi(handle())).face());
  }
  lstFaces.select_only(row);
}

void frmFonts::fill_sizes() {
  sizes_ = offered_sizes(points_);
  lstSizes.clear();
  for (const double size : sizes_) lstSizes.add(size_text(size));
  const auto current = std::find(sizes_.begin(), sizes_.end(), points_);
  lstSizes.select(current != sizes_.end() ? static_cast<int>(current - sizes_.begin()) : -1);
}

void frmFonts::show_sample() {
  win32::Font font(face_, points_, win32::window_dpi(handle()));
  const LRESULT plain = SendMessageW(handle(), WM_GETFONT, 0, 0);
  lblSample.set_font(font ? font.handle() : reinterpret_cast<HFONT>(plain));
  sample_font_ = std::move(font);
}

void frmFonts::Form_Activate() {
  lstFaces.focus();
}

void frmFonts::lstFaces_GetDispInfo(NMLVDISPINFOW& request) {
  const auto row = static_cast<std::size_t>(request.item.iItem);
  if (row >= faces_.size()) return;
  const win32::FontFace& face = faces_[row];
  const std::string_view mark = face.fixed_pitch ? "Fixed" : "";
  win32::answer_text(request, request.item.iSubItem == face_column ? face.name : mark);
}

LRESULT frmFonts::lstFaces_ODFindItem(const NMLVFINDITEMW& request) {
  const std::optional<win32::FindRequest> wanted = win32::read_find_request(request);
  if (!wanted) return -1;
  return wanted->whole ? find_face(faces_, wanted->text)
                       : find_face_beginning(faces_, wanted->text, wanted->start);
}

void frmFonts::lstFaces_ItemChanged() {
  const int row = lstFaces.selected();
  // A click beside the names selects none: the choice stays.
  if (row < 0 || faces_[static_cast<std::size_t>(row)].name == face_) return;
  face_ = faces_[static_cast<std::size_t>(row)].name;
  show_sample();
}

void frmFonts::lstFaces_DblClick(const NMITEMACTIVATE& place) {
  if (place.iItem >= 0) cmdOK_Click();
}

void frmFonts::lstSizes_Click() {
  const int row = lstSizes.selected();
  if (row < 0) return;
  points_ = sizes_[static_cast<std::size_t>(row)];
  show_sample();
}

void frmFonts::cmdOK_Click() {
  accepted_ = true;
  hide_from(cmdOK.handle());
}

void frmFonts::cmdCancel_Click() {
  hide_from(cmdOK.handle());
}

}  // namespace tallowmere
