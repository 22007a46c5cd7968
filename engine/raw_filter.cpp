#include "engine/raw_filter.h"

#include <algorithm>
#include <string>

#include "engine/unicode.h"
#include "engine/utf8_check.h"

namespace tallowmere {

namespace {

/// More terms are found faster in one pass over the decoded text.
constexpr std::size_t most_terms = MultiPattern::fewest - 1;

std::string utf16_bytes(std::u16string_view text, bool little_endian) {
  std::string bytes;
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += little_endian ? low : high;
    bytes += little_endian ? high : low;
  }
  return bytes;
}

/// The longest stretch of a term whose characters have one form each, ASCII letters aside.
std::u32string longest_sure_stretch(const std::string& term, const SearchPage& page) {
  std::u32string longest, stretch;
  for (const char c : term) {
    const auto byte = static_cast<Byte>(c);
    if (page.has_other_forms(byte)) {
      stretch.clear();
      continue;
    }
    stretch += page.character(byte);
    if (stretch.size() > longest.size()) longest = stretch;
  }
  return longest;
}

/// In UTF-16 ignoring the case of single bytes finds too much, which does no harm.
BytePattern pattern(std::string bytes, const std::array<Byte, 256>* lower) {
  if (lower) {
    for (char& c : bytes) c = static_cast<char>((*lower)[static_cast<Byte>(c)]);
  }
  return BytePattern(bytes, lower);
}

bool occurs(const BytePattern& pattern, std::string_view file) {
  const auto* begin = reinterpret_cast<const Byte*>(file.data());
  return OccurrenceScan(pattern, begin, begin + file.size()).next() != nullptr;
}

/// True when ASCII stands for itself in the code page and has no forms beyond it there.
bool has_plain_ascii(const CodePage& page, const std::array<Byte, 256>& lower) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const Byte lowered = page.lower(static_cast<Byte>(byte));
    const char16_t character = page.to_unicode(static_cast<Byte>(byte));
    if (byte < 0x80 ? lowered != lower[byte] || character != byte
                    : lowered < 0x80 || character < 0x80) {
      return false;
    }
  }
  return true;
}

}  // namespace

RawFilter::RawFilter(const CompiledSearch& search, const SearchPage& page,
                     const CodePage& code_page)
    : one_suffices_(search.search_type == search_or) {
  std::size_t needed = search.terms.size();
  if (search.search_type == search_near) needed = std::min<std::size_t>(needed, 1);
  if (needed > most_terms) needed = one_suffices_ ? 0 : most_terms;
  const auto* lower = search.ignore_case ? &page.lower_table() : nullptr;
  const bool plain_ascii = has_plain_ascii(code_page, page.lower_table());
  for (std::size_t term = 0; term < needed; ++term) {
    auto& stretch = stretches_.emplace_back();
    if (!search.representable[term]) continue;
    const std::u32string sure = longest_sure_stretch(search.terms[term], page);
    if (sure.empty()) continue;
    std::string utf8;
    for (const char32_t code : sure) append_utf8(utf8, code);
    const std::u16string utf16 = to_utf16(utf8);
    const bool ascii = ascii_length(utf8) == utf8.size();
    stretch.emplace(Stretch{{pattern(utf8, lower), pattern(utf16_bytes(utf16, true), lower),
                             pattern(utf16_bytes(utf16, false), lower)},
                            ascii && plain_ascii});
  }
}

template <typename MayOccur>
bool RawFilter::may_match(const MayOccur& may_occur) const {
  const auto occurs = [&](const auto& stretch) { return !stretch || may_occur(*stretch); };
  if (stretches_.empty()) return true;
  return one_suffices_ ? std::ranges::any_of(stretches_, occurs)
                       : std::ranges::all_of(stretches_, occurs);
}

// An invalid byte of UTF-8 may be any character of the code page.
bool RawFilter::rules_out(std::string_view file, TextEncoding encoding) const {
  const std::size_t index = encoding == TextEncoding::utf8       ? 0
                            : encoding == TextEncoding::utf16_le ? 1
                                                                 : 2;
  if (may_match([&](const Stretch& stretch) { return occurs(stretch.patterns[index], file); })) {
    return false;
  }
  return encoding != TextEncoding::utf8 || utf8_length(file) == file.size();
}

bool RawFilter::rules_out_unless_utf16(std::string_view file) const {
  return !may_match([&](const Stretch& stretch) {
    return !stretch.same_in_page || occurs(stretch.patterns[0], file);
  });
}

}  // namespace tallowmere
