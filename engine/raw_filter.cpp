#include "engine/raw_filter.h"

#include <algorithm>
#include <string>

#include "engine/unicode.h"
#include "engine/utf8_check.h"

namespace tallowmere {

namespace {

/// Looking for more terms one by one takes about as long as decoding.
constexpr std::size_t most_terms = 4;

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

}  // namespace

RawFilter::RawFilter(const CompiledSearch& search, const SearchPage& page)
    : one_suffices_(search.search_type == search_or) {
  std::size_t needed = search.terms.size();
  if (search.search_type == search_near) needed = std::min<std::size_t>(needed, 1);
  if (needed > most_terms) needed = one_suffices_ ? 0 : most_terms;
  const auto* lower = search.ignore_case ? &page.lower_table() : nullptr;
  for (std::size_t term = 0; term < needed; ++term) {
    Stretch& stretch = stretches_.emplace_back();
    if (!search.representable[term]) continue;
    const std::u32string sure = longest_sure_stretch(search.terms[term], page);
    if (sure.empty()) continue;
    std::string utf8;
    for (const char32_t code : sure) append_utf8(utf8, code);
    const std::u16string utf16 = to_utf16(utf8);
    stretch.emplace(std::array{pattern(utf8, lower), pattern(utf16_bytes(utf16, true), lower),
                               pattern(utf16_bytes(utf16, false), lower)});
  }
}

bool RawFilter::occurs(const Stretch& stretch, std::string_view file, TextEncoding encoding) const {
  if (!stretch) return true;
  const std::size_t index = encoding == TextEncoding::utf8       ? 0
                            : encoding == TextEncoding::utf16_le ? 1
                                                                 : 2;
  const auto* begin = reinterpret_cast<const Byte*>(file.data());
  return OccurrenceScan((*stretch)[index], begin, begin + file.size()).next() != nullptr;
}

// An invalid byte of UTF-8 may be any character of the code page.
bool RawFilter::rules_out(std::string_view file, TextEncoding encoding) const {
  const auto may_occur = [&](const Stretch& stretch) { return occurs(stretch, file, encoding); };
  const bool may_match =
      stretches_.empty() || (one_suffices_ ? std::ranges::any_of(stretches_, may_occur)
                                           : std::ranges::all_of(stretches_, may_occur));
  return !may_match && (encoding != TextEncoding::utf8 || utf8_length(file) == file.size());
}

}  // namespace tallowmere
