#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace tallowmere::win32 {

/// The font that a dialog template names.
struct TemplateFont {
  std::wstring face;
  WORD points = 8;
};

/// Returns the font of the system's message boxes.
TemplateFont message_font();

/// Copies an extended dialog template (DIALOGEX) with another font, so that all its dialog units
/// follow that font. A template that is not extended or names no font is copied as it is. The
/// result is empty when `source` is cut short.
std::vector<std::byte> with_font(std::span<const std::byte> source, const TemplateFont& font);

/// Loads the dialog template `id` of the program's resources, in the system's message font.
std::vector<std::byte> load_dialog_template(int id);

}  // namespace tallowmere::win32
