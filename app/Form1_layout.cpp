#include "app/Form1.h"
#include "app/main_layout.h"
#include "app/window_placement.h"
#include "win32/dpi.h"

namespace tallowmere {

void Form1::Form_Resize() {
  if (IsIconic(handle())) return;
  const TwipRect outer = window_rect(handle());
  if (!layout_memory_.changed(outer)) return;
  const int dpi = win32::window_dpi(handle());
  RECT client;
  GetClientRect(handle(), &client);
  const TwipSize inside{to_twips(client.right, dpi), to_twips(client.bottom, dpi)};
  viewer_.keep_view([&] {
    const MainLayout layout =
        layout_main_window({outer.width, outer.height}, inside, shell_.list_share);
    place_controls(handle(), layout, dpi);
    lblNote.place(layout.lblFileInfo, dpi);
  });
  ListView2.fit_last_column(dpi);
}

void Form1::on_dpi_changed(int before, int now) {
  viewer_font_.change();
  ListView2.set_column_widths(ListView2.column_widths(before), now);
  tips_.fit();
  lay_out();
}

void Form1::lay_out() {
  layout_memory_.forget();
  Form_Resize();
}

}  // namespace tallowmere
