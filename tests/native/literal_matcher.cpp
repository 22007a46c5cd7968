#include "tests/native/literal_matcher.h"

#include <algorithm>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "engine/letters.h"
#include "engine/text_encoding.h"

namespace tallowmere {
namespace {

constexpr std::size_t chunk_size = 63000;

/// A wide character is a whole one on Linux, where it is looked for faster.
using Character = std::conditional_t<sizeof(wchar_t) == sizeof(char32_t), wchar_t, char32_t>;
using Text = std::basic_string<Character>;

bool is_word_in_page(char32_t byte) {
  return (byte >= 65 && byte <= 90) || (byte >= 97 && byte <= 122) || byte >= 192;
}

Text right(const Text& text, std::size_t count) {
  return text.substr(text.size() - std::min(count, text.size()));
}

std::size_t position_of(const Text& text, const Text& part, std::size_t from) {
  return from > text.size() ? 0 : text.find(part, from - 1) + 1;
}

/// A file and the terms in one alphabet, and what that has for letters and case.
struct Material {
  Text file;
  std::vector<Text> terms;
  std::span<const Character> lower;  ///< by character
  bool (*is_word)(char32_t);
};

class LiteralMatcher {
 public:
  LiteralMatcher(const CompiledSearch& search, const Material& material)
      : search_(search),
        terms_(material.terms),
        file_(material.file),
        is_word_(material.is_word),
        seen_(file_),
        found_(terms_.size()) {
    if (!search.ignore_case) return;
    for (Character& c : seen_) c = material.lower[static_cast<std::size_t>(c)];
  }

  bool matches() {
    if (search_.max_term_len == 0) return true;
    const std::size_t last = file_.empty() ? 0 : (file_.size() - 1) / chunk_size;
    for (number_ = 0; number_ <= last; ++number_) {
      chunk_ = seen_.substr(number_ * chunk_size, chunk_size);
      if (match_chunk()) return true;
    }
    return false;
  }

 private:
  bool match_chunk() {
    if (search_.search_type == search_phrase) return match_phrase();
    if (search_.search_type == search_near) return match_near();
    const bool all = search_.search_type == search_and;
    for (std::size_t term = 0; term < found_.size(); ++term) {
      found_[term] = found_[term] || match_term_in_chunk(term);
      if (found_[term] != all) return !all;
    }
    return all;
  }

  bool match_term_in_chunk(std::size_t term) {
    if (find_term(chunk_, 1, term, file_, number_ * chunk_size) != 0) return true;
    const auto longest = static_cast<std::size_t>(search_.max_term_len);
    std::size_t result = 0;
    if (number_ > 0) {
      const Text boundary = carry_ + chunk_.substr(0, longest);
      result = find_term(boundary.substr(0, boundary.size() - 1), 2, term, boundary);
    }
    if (term + 1 == found_.size()) carry_ = right(chunk_, longest);
    return result != 0;
  }

  bool match_phrase() {
    if (!search_.representable[0]) return false;
    const Text& phrase = terms_[0];
    if (position_of(chunk_, phrase, 1) != 0) return true;
    const std::size_t less_one = phrase.size() - 1;
    const Text boundary = number_ > 0 ? carry_ + chunk_.substr(0, less_one) : Text();
    carry_ = right(chunk_, less_one);
    return position_of(boundary, phrase, 1) != 0;
  }

  bool match_near() {
    const std::size_t length = terms_[0].size();
    for (std::size_t at = 0; (at = find_term(chunk_, at + 1, 0, file_, number_ * chunk_size));) {
      if (near_terms_in(near_window(static_cast<long long>(at)))) return true;
    }
    if (number_ > 0) {
      const Text boundary = carry_ + chunk_.substr(0, length);
      const Text inner = boundary.substr(0, boundary.size() - 1);
      for (std::size_t at = 1; (at = find_term(inner, at + 1, 0, boundary));) {
        const auto place = static_cast<long long>(at) - static_cast<long long>(length) + 1;
        if (near_terms_in(near_window(place))) return true;
      }
    }
    carry_ = right(chunk_, length);
    return false;
  }

  /// Neighbours are those in `around`, in which the text begins after `shift` bytes.
  std::size_t find_term(const Text& text, std::size_t from, std::size_t term, const Text& around,
                        std::size_t shift = 0) const {
    if (!search_.representable[term]) return 0;
    const Text& wanted = terms_[term];
    std::size_t at = position_of(text, wanted, from);
    while (at != 0 && search_.whole_word[term] &&
           not_whole_word(around, shift + at, wanted.size())) {
      at = position_of(text, wanted, at + 1);
    }
    return at;
  }

  Text near_window(long long at) const {
    if (search_.last_term == 0) return Text();
    const long long before = search_.prox_before;
    const auto length = static_cast<std::size_t>(search_.window_len);
    const auto size = static_cast<long long>(chunk_.size());
    if (at > before && at - before + search_.window_len - 1 <= size) {
      return chunk_.substr(static_cast<std::size_t>(at - before - 1), length);
    }
    const auto next_position = static_cast<long long>(number_ * chunk_size) + size + 1;
    long long start = at - size - before + next_position - 1;
    if (at <= before) start = std::max(start, 1LL);
    return seen_.substr(static_cast<std::size_t>(start - 1), length);
  }

  bool near_terms_in(const Text& window) const {
    if (window.empty()) return true;
    for (std::size_t term = 1; term < terms_.size(); ++term) {
      const bool found = find_term(window, 1, term, window) != 0;
      if (found != search_.prox_all) return found;
    }
    return search_.prox_all;
  }

  bool not_whole_word(const Text& text, std::size_t at, std::size_t length) const {
    return (at > 1 && is_word_(static_cast<char32_t>(text[at - 2]))) ||
           (at + length <= text.size() && is_word_(static_cast<char32_t>(text[at + length - 1])));
  }

  const CompiledSearch& search_;
  const std::vector<Text>& terms_;
  const Text& file_;
  bool (*is_word_)(char32_t);
  Text seen_;  ///< the file as the search compares it
  Text chunk_;
  std::size_t number_ = 0;  ///< of the chunk, from 0
  Text carry_;
  std::vector<bool> found_;
};

Text characters(const std::string& file, TextEncoding encoding, const CodePage& page) {
  Text text;
  for (std::size_t at = mark_length(encoding, file); at < file.size();) {
    const TextCharacter character = next_character(file, at, encoding);
    const bool invalid = character.code >= code_page_byte;
    text += static_cast<Character>(invalid ? page.to_unicode(static_cast<unsigned char>(file[at]))
                                           : character.code);
    at += character.length;
  }
  return text;
}

}  // namespace

bool matches_literally(const CompiledSearch& search, const CodePage& page,
                       const std::string& file) {
  const auto bytes = [](const std::string& text) {
    Text codes;
    for (const char c : text) codes += static_cast<unsigned char>(c);
    return codes;
  };
  Material material{bytes(file), {}, {}, is_word_in_page};
  for (const std::string& term : search.terms) material.terms.push_back(bytes(term));
  const std::vector<Character> lower(page.lower_table().begin(), page.lower_table().end());
  material.lower = lower;
  return LiteralMatcher(search, material).matches();
}

bool matches_literally(const CompiledSearch& in_page, const UnicodeSearch& unicode,
                       const CodePage& page, const std::string& file) {
  const TextEncoding encoding = find_text_encoding(file);
  if (encoding == TextEncoding::code_page) return matches_literally(in_page, page, file);
  static const std::vector<Character> folded = [] {
    std::vector<Character> all;
    for (char32_t code = 0; code <= no_character; ++code) all.push_back(Character(fold(code)));
    return all;
  }();
  Material material{characters(file, encoding, page), {}, folded, is_letter};
  for (const std::string& term : unicode.compiled.terms) {
    Text& codes = material.terms.emplace_back();
    for (const char c : term) codes += Character(unicode.page.character(static_cast<Byte>(c)));
  }
  return LiteralMatcher(unicode.compiled, material).matches();
}

}  // namespace tallowmere
