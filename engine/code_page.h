#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tallowmere {

/// A single-byte code page: what the bytes of a searched file mean as characters.
class CodePage {
 public:
  /// Makes the page whose byte b is the character to_unicode[b]. `lower` maps one character to its
  /// lower case; where the page lacks the result, the byte stays as it is.
  CodePage(const std::array<char16_t, 256>& to_unicode,
           const std::function<char16_t(char16_t)>& lower);

  static CodePage windows_1252();

  char16_t to_unicode(unsigned char byte) const { return to_unicode_[byte]; }
  unsigned char lower(unsigned char byte) const { return lower_[byte]; }
  const std::array<unsigned char, 256>& lower_table() const { return lower_; }

  /// Returns the byte for a character, or nothing when the page lacks it.
  std::optional<unsigned char> from_unicode(char32_t character) const;

 private:
  std::array<char16_t, 256> to_unicode_;
  std::array<unsigned char, 256> lower_;
};

/// Typed text in the bytes of a code page.
struct PageText {
  std::string bytes;          ///< one byte per character, 0 for each character that the page lacks
  bool representable = true;  ///< false: the page lacks a character, so no file holds this text
};

PageText to_page_text(std::string_view utf8, const CodePage& page);

/// Converts the bytes of a file to UTF-8; to_page_text converts back.
std::string from_page_bytes(std::string_view bytes, const CodePage& page);

}  // namespace tallowmere
