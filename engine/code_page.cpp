#include "engine/code_page.h"

#include "engine/letter_case.h"
#include "engine/unicode.h"

namespace tallowmere {

namespace {

// The characters of the bytes 0x80 to 0x9F, where Windows-1252 differs from Latin-1. Its five
// undefined bytes are the control characters of the same code, as in the system.
constexpr char16_t windows_1252_middle[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

CodePage::CodePage(const std::array<char16_t, 256>& to_unicode,
                   const std::function<char16_t(char16_t)>& lower)
    : to_unicode_(to_unicode) {
  for (int byte = 0; byte < 256; ++byte) {
    const auto index = static_cast<std::size_t>(byte);
    const char16_t lowered = lower(to_unicode_[index]);
    lower_[index] = from_unicode(lowered).value_or(static_cast<unsigned char>(byte));
  }
}

CodePage CodePage::windows_1252() {
  std::array<char16_t, 256> table;
  for (std::size_t byte = 0; byte < 256; ++byte) table[byte] = static_cast<char16_t>(byte);
  for (std::size_t i = 0; i < 32; ++i) table[0x80 + i] = windows_1252_middle[i];
  return CodePage(table, [](char16_t c) { return static_cast<char16_t>(to_lower(c)); });
}

std::optional<unsigned char> CodePage::from_unicode(char32_t character) const {
  for (std::size_t byte = 0; byte < 256; ++byte) {
    if (to_unicode_[byte] == character) return static_cast<unsigned char>(byte);
  }
  return std::nullopt;
}

PageText to_page_text(std::string_view utf8, const CodePage& page) {
  PageText result;
  result.bytes.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const auto byte = page.from_unicode(next_code_point(utf8, position));
    result.bytes.push_back(static_cast<char>(byte.value_or(0)));
    if (!byte) result.representable = false;
  }
  return result;
}

std::string from_page_bytes(std::string_view bytes, const CodePage& page) {
  std::string utf8;
  for (const char byte : bytes)
    append_utf8(utf8, page.to_unicode(static_cast<unsigned char>(byte)));
  return utf8;
}

}  // namespace tallowmere
