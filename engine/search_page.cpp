#include "engine/search_page.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "engine/letters.h"
#include "engine/text_encoding.h"
#include "engine/unicode.h"

namespace tallowmere {

namespace {

constexpr char32_t ascii = 0x80;  ///< how many characters ASCII has
constexpr Byte any_letter = 0xFE;
constexpr Byte any_other = 0xFF;
static_assert(ascii + SearchPage::most == any_letter);

bool is_surrogate(char32_t code) {
  return code >= 0xD800 && code <= 0xDFFF;
}

}  // namespace

SearchPage::SearchPage(const SearchCriteria& search, const CodePage& page)
    : ignore_case_(!search.match_case), table_(std::make_unique_for_overwrite<Byte[]>(first_pair)) {
  give_bytes(search.criteria);
  fill_table();
  for (std::size_t byte = 0; byte < 256; ++byte) {
    stray_[byte] = table_[page.to_unicode(static_cast<Byte>(byte))];
    lower_[byte] = static_cast<Byte>(byte < ascii ? fold(static_cast<char32_t>(byte)) : byte);
    if (byte < ascii) words_[byte] = is_letter(static_cast<char32_t>(byte));
  }
  for (const auto& [code, byte] : own_) words_[byte] = is_letter(code);
  words_[any_letter] = true;
}

char32_t SearchPage::folded(char32_t code) const {
  return ignore_case_ ? fold(code) : code;
}

void SearchPage::give_bytes(std::string_view criteria) {
  std::vector<char32_t> codes;
  for (std::size_t at = 0; at < criteria.size();) {
    const char32_t code = folded(next_code_point(criteria, at));
    if (code >= ascii && !is_surrogate(code)) codes.push_back(code);
  }
  std::ranges::sort(codes);
  codes.erase(std::unique(codes.begin(), codes.end()), codes.end());
  fits_ = codes.size() <= most;
  if (!fits_) return;
  for (const char32_t code : codes) {
    own_.emplace_back(code, static_cast<Byte>(ascii + own_.size()));
  }
}

// Fills the table range by range, since every search makes it again: a lookup for each character
// takes longer than a small folder's search.
void SearchPage::fill_table() {
  for (char32_t code = 0; code < ascii; ++code) table_[code] = static_cast<Byte>(code);
  std::memset(&table_[ascii], any_other, first_pair - ascii);
  for (const LetterRange& range : letter_ranges()) {
    const char32_t first = std::max(range.first, ascii);
    const char32_t last = std::min<char32_t>(range.last, first_pair - 1);
    if (first <= last) std::memset(&table_[first], any_letter, last - first + 1);
  }
  for (const auto& [code, byte] : own_) {
    if (code < first_pair) table_[code] = byte;
  }
  if (ignore_case_) fold_table();
}

void SearchPage::fold_table() {
  for (const FoldRange& range : fold_ranges()) {
    for (char32_t code = range.first; code <= range.last; code += range.step) {
      if (code < ascii) continue;
      const Byte byte = byte_of(code + static_cast<char32_t>(range.delta));
      if (code < first_pair) table_[code] = byte;
      if (byte < any_letter) other_forms_.emplace_back(byte, code);
    }
  }
}

Byte SearchPage::rare(char32_t code) const {
  if (code >= code_page_byte) return stray_[(code - code_page_byte) & 0xFF];
  if (code >= no_character) return any_other;
  const auto found =
      std::ranges::lower_bound(own_, folded(code), {}, &std::pair<char32_t, Byte>::first);
  if (found != own_.end() && found->first == folded(code)) return found->second;
  return is_letter(code) ? any_letter : any_other;
}

char32_t SearchPage::character(Byte byte) const {
  assert(byte < ascii + own_.size());
  return byte < ascii ? byte : own_[byte - ascii].first;
}

std::u32string SearchPage::other_forms(Byte byte) const {
  std::u32string forms;
  for (const auto& [of, code] : other_forms_) {
    if (of == byte) forms += code;
  }
  return forms;
}

PageText SearchPage::to_bytes(std::string_view utf8) const {
  PageText result;
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t code = next_code_point(utf8, at);
    if (is_surrogate(code) || (!fits_ && code >= ascii)) result.representable = false;
    result.bytes.push_back(static_cast<char>(byte_of(code)));
  }
  return result;
}

}  // namespace tallowmere
