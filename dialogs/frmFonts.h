#pragma once

#include <string>
#include <vector>

#include "win32/controls.h"
#include "win32/font_list.h"
#include "win32/fonts.h"
#include "win32/form.h"
#include "win32/list_view.h"

namespace tallowmere {

/// Asks for the viewer's font.
class frmFonts : public win32::Form {
 public:
  explicit frmFonts(HWND owner);
  ~frmFonts() override;

  /// Shows the dialog over the main window with this font chosen; true on OK, with the choice in
  /// `face` and `points`. In place of a face that is not installed, the one that the system uses
  /// for it is chosen; a size that makes no sense stays unless the user chooses another.
  bool ask(std::string& face, double& points);

  const std::vector<win32::FontFace>& faces() const { return faces_; }

  win32::ListView lstFaces;  ///< names, and a mark in the second column for fixed pitch
  win32::ListBox lstSizes;
  win32::Label lblSample;
  win32::Button cmdOK, cmdCancel;

 protected:
  void on_shown() override { Form_Activate(); }
  void on_dpi_changed(int before, int now) override;

 private:
  void wire();
  void size_columns();
  void fill_faces();
  void fill_sizes();
  void show_sample();
  void Form_Activate();
  void lstFaces_GetDispInfo(NMLVDISPINFOW& request);
  LRESULT lstFaces_ODFindItem(const NMLVFINDITEMW& request);
  void lstFaces_ItemChanged();
  void lstFaces_DblClick(const NMITEMACTIVATE& place);
  void lstSizes_Click();
  void cmdOK_Click();
  void cmdCancel_Click();

  HWND owner_;
  std::vector<win32::FontFace> faces_;  ///< the rows of lstFaces
  std::vector<double> sizes_;           ///< the rows of lstSizes
  std::string face_;                    ///< what OK takes, and the sample shows
  double points_ = 0;
  win32::Font sample_font_;
  bool accepted_ = false;
};

}  // namespace tallowmere
