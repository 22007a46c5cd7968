#include "win32/ansi_code_page.h"

#include <windows.h>

#include "engine/letter_case.h"

namespace tallowmere::win32 {

CodePage ansi_code_page() {
  CPINFO info;
  if (!GetCPInfo(CP_ACP, &info) || info.MaxCharSize != 1) return CodePage::windows_1252();
  std::array<char16_t, 256> table;
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const char text = static_cast<char>(byte);
    wchar_t character = 0;
    MultiByteToWideChar(CP_ACP, 0, &text, 1, &character, 1);
    table[byte] = static_cast<char16_t>(character);
  }
  return CodePage(table, [](char16_t c) { return static_cast<char16_t>(to_lower(c)); });
}

}  // namespace tallowmere::win32
