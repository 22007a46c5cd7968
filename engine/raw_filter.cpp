#include "engine/raw_filter.h"

#include <algorithm>
#include <string>

#include "engine/unicode.h"
#include "engine/utf8_check.h"

namespace tallowmere {

namespace {

/// The most terms that are looked for; one pass over the decoded text finds more of them faster.
constexpr std::size_t most_terms = MultiPattern::fewest - 1;

/// The most characters that a part needs; more would hardly exclude more files.
constexpr std::size_t enough = 64;

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

/// Returns the longest part of a term all of whose characters, which are bytes of the page, pass.
template <typename Pass>
std::u32string longest_part(const std::string& term, const SearchPage& page, const Pass& passes) {
  std::u32string longest, part;
  for (const char c : term) {
    const auto byte = static_cast<Byte>(c);
    if (!passes(page.character(byte), page.other_forms(byte))) {
      part.clear();
      continue;
    }
    part += page.character(byte);
    if (part.size() > longest.size()) longest = part;
    if (longest.size() == enough) break;
  }
  return longest;
}

std::string utf8_bytes(std::u32string_view text) {
  std::string bytes;
  for (const char32_t code : text) append_utf8(bytes, code);
  return bytes;
}

bool same_length(char32_t one, char32_t other) {
  return utf8_bytes({&one, 1}).size() == utf8_bytes({&other, 1}).size();
}

/// Makes a pattern, which ignores the case of single bytes when `lower` is given; in UTF-16 this
/// finds too much, which does no harm.
BytePattern pattern(std::string bytes, const std::array<Byte, 256>* lower) {
  if (lower) {
    for (char& c : bytes) c = static_cast<char>((*lower)[static_cast<Byte>(c)]);
  }
  return BytePattern(bytes, lower);
}

bool occurs(const BytePattern& pattern, std::string_view file) {
  if (pattern.length() == 0) return true;
  const auto* begin = reinterpret_cast<const Byte*>(file.data());
  return OccurrenceScan(pattern, begin, begin + file.size()).next() != nullptr;
}

/// True when ASCII means itself in the code page and has no other forms there.
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
    : merged_(page.lower_table()), one_suffices_(search.search_type == search_or) {
  std::size_t needed = search.terms.size();
  if (search.search_type == search_near) needed = std::min<std::size_t>(needed, 1);
  if (needed > most_terms) needed = one_suffices_ ? 0 : most_terms;
  const auto* lower = search.ignore_case ? &page.lower_table() : nullptr;
  const bool plain_ascii = has_plain_ascii(code_page, page.lower_table());
  const auto in_one_form = [](char32_t, const std::u32string& forms) { return forms.empty(); };
  const auto in_one_length = [](char32_t code, const std::u32string& forms) {
    return std::ranges::all_of(forms, [&](char32_t form) { return same_length(code, form); });
  };
  const auto never_in_page = [&](char32_t code, const std::u32string& forms) {
    const auto absent = [&](char32_t form) { return !code_page.from_unicode(form); };
    return (code < 0x80 ? plain_ascii : absent(code)) && std::ranges::all_of(forms, absent) &&
           in_one_length(code, forms);
  };
  // The table has to be whole before the first pattern is made.
  for (std::size_t term = 0; term < needed; ++term) {
    if (search.representable[term]) merge_forms(search.terms[term], page);
  }
  for (std::size_t term = 0; term < needed; ++term) {
    auto& parts = terms_.emplace_back();
    if (!search.representable[term]) continue;
    const std::string& bytes = search.terms[term];
    const auto utf8 = [&](const auto& passes) {
      const std::string part = utf8_bytes(longest_part(bytes, page, passes));
      return pattern(part, search.ignore_case ? &merged_ : nullptr);
    };
    const std::u16string utf16 = to_utf16(utf8_bytes(longest_part(bytes, page, in_one_form)));
    parts.emplace(Parts{{utf8(in_one_length), pattern(utf16_bytes(utf16, true), lower),
                         pattern(utf16_bytes(utf16, false), lower)},
                        utf8(never_in_page)});
    if (search.search_type != search_phrase || bytes.empty()) continue;
    std::u32string whole;
    for (const char c : bytes) whole += page.character(static_cast<Byte>(c));
    phrase_.emplace(pattern(utf8_bytes(whole), lower));
    is_ascii_phrase_ = plain_ascii && !search.beyond_ascii;
    bytes_suffice_ = is_ascii_phrase_ && std::ranges::all_of(bytes, [&](char c) {
                       return page.other_forms(static_cast<Byte>(c)).empty();
                     });
  }
}

void RawFilter::merge_forms(const std::string& term, const SearchPage& page) {
  for (const char c : term) {
    const char32_t code = page.character(static_cast<Byte>(c));
    for (const char32_t form : page.other_forms(static_cast<Byte>(c))) {
      if (!same_length(code, form)) continue;
      const std::string bytes = utf8_bytes({&code, 1}), others = utf8_bytes({&form, 1});
      for (std::size_t i = 0; i < bytes.size(); ++i) {
        const Byte into = merged_[static_cast<Byte>(bytes[i])];
        const Byte gone = merged_[static_cast<Byte>(others[i])];
        std::ranges::replace(merged_, gone, into);
      }
    }
  }
}

template <typename Chosen>
bool RawFilter::may_match(std::string_view file, const Chosen& chosen) const {
  const auto may_occur = [&](const std::optional<Parts>& parts) {
    return parts && occurs(chosen(*parts), file);
  };
  if (terms_.empty()) return true;
  return one_suffices_ ? std::ranges::any_of(terms_, may_occur)
                       : std::ranges::all_of(terms_, may_occur);
}

std::optional<bool> RawFilter::holds_phrase(std::string_view file, bool tells) const {
  return tells && phrase_ && occurs(*phrase_, file) ? std::optional(true) : std::nullopt;
}

// An invalid byte of UTF-8 may be any character of the code page. What is well-formed in UTF-8 is
// decoded as such, whatever precedes it; in UTF-16 an occurrence may begin inside a unit.
std::optional<bool> RawFilter::answer(std::string_view file, TextEncoding encoding) const {
  const bool utf8 = encoding == TextEncoding::utf8;
  const std::size_t index = utf8 ? 0 : encoding == TextEncoding::utf16_le ? 1 : 2;
  const auto chosen = [&](const Parts& parts) -> auto& {
    return parts.of_encoding[index];
  };
  if (may_match(file, chosen)) return holds_phrase(file, utf8);
  if (utf8 && utf8_length(file) < file.size()) return std::nullopt;
  return false;
}

std::optional<bool> RawFilter::answer_unless_utf16(std::string_view file) const {
  const auto chosen = [](const Parts& parts) -> auto& {
    return parts.unless_utf16;
  };
  if (!may_match(file, chosen)) return false;
  return holds_phrase(file, is_ascii_phrase_);
}

}  // namespace tallowmere
