#include <gtest/gtest.h>

#include <random>

#include "engine/letters.h"
#include "engine/text_decoder.h"
#include "engine/text_encoding.h"
#include "engine/text_matcher.h"
#include "engine/unicode.h"
#include "engine/utf8_check.h"
#include "tests/native/literal_matcher.h"
#include "tests/support/memory_files.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

using enum TextEncoding;

constexpr std::size_t chunk = FileChunks::chunk_size;

const CodePage& page() {
  static const CodePage value = CodePage::windows_1252();
  return value;
}

std::string mark_of(TextEncoding encoding) {
  return encoding == utf16_le ? "\xFF\xFE" : encoding == utf16_be ? "\xFE\xFF" : "\xEF\xBB\xBF";
}

std::string encoded(std::u32string_view text, TextEncoding encoding) {
  std::string utf8;
  for (const char32_t code : text) append_utf8(utf8, code);
  if (encoding == TextEncoding::utf8) return utf8;
  std::string bytes;
  for (const char16_t unit : to_utf16(utf8)) {
    const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
    bytes += encoding == utf16_le ? std::string{low, high} : std::string{high, low};
  }
  return bytes;
}

bool matches(TextMatcher& matcher, const std::string& text) {
  MemoryFiles files;
  files.add("f", text);
  const auto file = files.reader();
  file->open("", "f");
  SystemError error;
  return matcher.match_open_file(
             *file, [] { return true; }, error) == MatchOutcome::match;
}

/// Cut, overlong, too large; halves of pairs; a mark.
const std::string rubbish[] = {
    "\xC3",         "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
    "\xEF\xBB\xBF", "\xD8",     "\xDC\xD8",     "\xE6\x97",     "\xF0\x9F",
    "\x80",         "\xE9"};

/// Criteria and files of several scripts, with what can go wrong strewn in, around the seams.
class RandomText {
 public:
  explicit RandomText(std::mt19937& random) : random_(random) {}

  std::size_t pick(std::size_t limit) { return random_() % limit; }

  SearchCriteria criteria() {
    CriteriaInput input;
    input.search_type = static_cast<int>(pick(4));
    input.match_case = pick(2) == 0;
    input.prox_before = static_cast<int>(pick(12));
    input.prox_after = static_cast<int>(pick(12));
    input.prox_all = pick(2) == 0;
    words_.clear();
    kind_ = pick(4);
    for (std::size_t count = pick(6) == 0 ? 20 : 1 + pick(3); words_.size() < count;) {
      words_.emplace_back();
      for (std::size_t length = 1 + pick(4); length > 0; --length) words_.back() += letter();
      const std::string word = encoded(words_.back(), TextEncoding::utf8);
      input.criteria += (words_.size() > 1 ? " " : "") + (pick(2) == 0 ? word : '"' + word + '"');
    }
    SearchCriteria search;
    load_search_criteria(search, input);
    return search;
  }

  /// Now and then in no encoding but the code page after all.
  std::string file(TextEncoding encoding) {
    const std::size_t sizes[] = {pick(60), chunk - 1 + pick(3), chunk + pick(60),
                                 2 * chunk + pick(60)};
    const std::size_t size = sizes[pick(2) * pick(4)];
    const char32_t fillers[] = {U'.', U'\xB7', U'\x65E5', U'\x1F600'};
    const char32_t filler = fillers[pick(4)];
    std::u32string text(size, filler);
    for (const std::size_t middle : {std::size_t{0}, chunk, 2 * chunk, size})
      scribble(text, middle);
    std::string bytes = encoded(text, encoding);
    if (encoding != TextEncoding::utf8 || pick(3) == 0) bytes.insert(0, mark_of(encoding));
    if (pick(2) == 0) damage(bytes);
    return bytes;
  }

 private:
  char32_t letter() {
    if (kind_ < 2) return (kind_ == 0 ? U"a\xC9\xE9\xE4" : U"akKs")[pick(4)];
    return alphabet_[pick(alphabet_.size() - 4)];
  }

  void scribble(std::u32string& text, std::size_t middle) {
    for (std::size_t at = middle - std::min<std::size_t>(middle, 30); at < middle + 30;) {
      std::u32string part(1, alphabet_[pick(alphabet_.size())]);
      if (pick(8) == 0) part = words_[pick(words_.size())];
      for (const char32_t code : part) {
        if (at < text.size() && pick(3) != 0) text[at] = code;
        ++at;
      }
    }
  }

  void damage(std::string& bytes) {
    for (std::size_t count = 1 + pick(3); count > 0; --count) {
      const std::size_t places[] = {pick(bytes.size() + 1), bytes.size(),
                                    std::min(bytes.size(), encoding_sample - 4 + pick(8))};
      std::string part = rubbish[pick(std::size(rubbish))];
      // Or a word as the code page has it.
      if (pick(2) == 0) {
        part = to_page_text(encoded(words_[pick(words_.size())], TextEncoding::utf8), page()).bytes;
        part = "." + part + (pick(2) == 0 ? "." : "\x80");
      }
      const std::size_t at = places[pick(3)];
      pick(2) == 0 ? bytes.insert(at, part) : bytes.replace(at, part.size(), part);
    }
    if (pick(3) == 0 && !bytes.empty()) bytes.pop_back();
  }

  /// Cases that fold to ASCII, beyond the first plane and to another length; letters without case,
  /// marks, signs; the last four are no part of words.
  const std::u32string alphabet_ =
      U"akKsS\x17F\x212A\xC9\xE9\xDF\x1E9E\x3A3\x3C3\x3C2\x416\x436\x65E5\x10400\x10428\x301"
      U"\x20AC\xD7\x1F600\xE4\xFC_ .\xFEFF";
  std::mt19937& random_;
  std::size_t kind_ = 0;  ///< of the words' letters: the code page's, ASCII, or any
  std::vector<std::u32string> words_;
};

TEST(UnicodeText, AgreesWithTheLiteralMatcher) {
  std::mt19937 random(test_seed());
  RandomText draw(random);
  int answers[4][4][2] = {};
  for (int round = 0; round < 300; ++round) {
    const SearchCriteria criteria = draw.criteria();
    const CompiledSearch in_page(criteria, page());
    const UnicodeSearch unicode(criteria, page());
    TextMatcher matcher(in_page, &unicode);
    for (int number = 0; number < 8; ++number) {
      const TextEncoding encodings[] = {TextEncoding::utf8, TextEncoding::utf8, utf16_le, utf16_be};
      const TextEncoding meant = encodings[draw.pick(4)];
      const std::string text = draw.file(meant);
      const bool expected = matches_literally(in_page, unicode, page(), text);
      ++answers[static_cast<int>(find_text_encoding(text))][criteria.search_type][expected];
      ASSERT_EQ(matches(matcher, text), expected)
          << "round " << round << " criteria " << criteria.criteria << " type "
          << criteria.search_type << " size " << text.size() << " meant " << static_cast<int>(meant)
          << (criteria.match_case ? " match case" : "");
    }
  }
  // The draw is worth something only when every type sees both answers in every encoding.
  for (const TextEncoding encoding : {TextEncoding::utf8, utf16_le, utf16_be}) {
    for (const auto& of_type : answers[static_cast<int>(encoding)]) {
      EXPECT_GT(std::min(of_type[0], of_type[1]), 3);
    }
  }
}

TEST(UnicodeText, OddCriteria) {
  const std::string half = "\xED\xA0\x80";
  std::string far;  // its one capital comes after what is looked for before decoding
  for (int i = 0; i < 30; ++i) far += "\xC3\xA9\xE6\x97\xA5\xD0\xB6";
  std::string capital = far;
  capital.replace(capital.size() - 2, 2, "\xD0\x96");
  const struct {
    std::string criteria, text;
    bool found;
  } cases[] = {{half, half, false},
               {far, capital, true},
               {capital, far, true},
               {"ask", "A\xC5\xBF\xE2\x84\xAA", true}};
  for (const auto& [criteria, text, found] : cases) {
    SearchCriteria search;
    load_search_criteria(search, {criteria, search_phrase});
    const CompiledSearch in_page(search, page());
    const UnicodeSearch unicode(search, page());
    TextMatcher matcher(in_page, &unicode);
    EXPECT_EQ(matches(matcher, text), found) << criteria;
  }
}

/// Texts and rubbish, taken in pieces and put into little room.
TEST(UnicodeText, IsDecodedAsItsCharactersOneByOne) {
  std::mt19937 random(test_seed());
  SearchCriteria search;
  search.criteria = "K\xC3\xAD\xCF\x83\xF0\x90\x90\xA8\xE2\x82\xAC\xE6\x97\xA5";
  const SearchPage made(search, page());
  const std::string plain = "plain ASCII text \xCE\xA3" + search.criteria;
  for (int round = 0; round < 20000; ++round) {
    const TextEncoding encodings[] = {TextEncoding::utf8, utf16_le, utf16_be};
    const TextEncoding encoding = encodings[round % 3];
    std::string text;
    while (text.size() < random() % 200) {
      text += random() % 2 == 0 ? plain : rubbish[random() % std::size(rubbish)];
    }
    if (encoding != TextEncoding::utf8 && random() % 2 == 0) {
      for (char& c : text) c = random() % 3 == 0 ? "\0\xD8\xDB\xDC"[random() % 4] : c;
    }
    std::vector<Byte> expected, got(text.size());
    for (std::size_t at = 0; at < text.size();) {
      const TextCharacter character = next_character(text, at, encoding);
      expected.push_back(made.byte_of(character.code));
      at += character.length;
    }
    const auto* bytes = reinterpret_cast<const Byte*>(text.data());
    DecodeSpan span{bytes, bytes, got.data(), got.data()};
    while (span.from < bytes + text.size()) {
      span.from_end += random() % static_cast<std::size_t>(bytes + text.size() - span.from_end + 1);
      span.into_end +=
          random() % static_cast<std::size_t>(got.data() + got.size() - span.into_end + 1);
      decode(span, encoding, made, span.from_end == bytes + text.size());
    }
    got.resize(static_cast<std::size_t>(span.into - got.data()));
    ASSERT_EQ(got, expected) << "round " << round;
  }
}

TEST(UnicodeText, WellFormedTextsAreTakenForSuch) {
  std::mt19937 random(test_seed());
  for (int round = 0; round < 30000; ++round) {
    std::string text;
    while (text.size() < 40 + random() % 60) {
      const unsigned long kinds[] = {0x20 + random() % 0x60, 0x80 + random() % 0x780,
                                     random() % 0x10000, random() % 0x110000};
      append_utf8(text, static_cast<char32_t>(kinds[random() % 4]));
    }
    if (round % 2 == 0) text[random() % text.size()] = static_cast<char>(random());
    std::size_t at = 0, valid = 0, ascii = 0;
    while (ascii < text.size() && text[ascii] >= 0) ++ascii;
    while (at < text.size()) {
      const char32_t code = next_code_point(text, at);
      if (code >= 0xD800 && code < 0xE000) break;
      valid = at;
    }
    ASSERT_EQ(utf8_length(text), valid);
    ASSERT_EQ(ascii_length(text), ascii);
  }
}

TEST(UnicodeText, EveryCharacterHasItsByte) {
  SearchCriteria search;
  search.criteria = "K\xC3\x89\xCF\x83\xF0\x90\x90\xA8\xE2\x82\xAC";
  for (const bool match_case : {false, true}) {
    search.match_case = match_case;
    const SearchPage made(search, page());
    const auto as_compared = [&](char32_t code) { return match_case ? code : fold(code); };
    std::u32string own;
    for (const char32_t code : U"K\xC9\x3C3\x10428\x20AC") own += as_compared(code);
    for (char32_t code = 0; code < no_character; ++code) {
      const char32_t seen = as_compared(code);
      const Byte byte = made.byte_of(code);
      const Byte compared = match_case ? byte : made.lower_table()[byte];
      if (seen < 0x80 || own.find(seen) != own.npos) {
        ASSERT_EQ(made.character(compared), seen) << static_cast<unsigned>(code);
      } else {
        ASSERT_GE(byte, 0x80 + SearchPage::most) << static_cast<unsigned>(code);
      }
      ASSERT_EQ(made.word_table()[byte], is_letter(code)) << static_cast<unsigned>(code);
    }
    EXPECT_EQ(made.byte_of(code_page_byte + 0xC9), made.byte_of(0xC9));
  }
  search.criteria.clear();
  for (std::size_t i = 0; i <= SearchPage::most; ++i) {
    EXPECT_TRUE(SearchPage(search, page()).fits());
    append_utf8(search.criteria, static_cast<char32_t>(0x4E00 + i));
  }
  EXPECT_FALSE(SearchPage(search, page()).fits());
}

}  // namespace
}  // namespace tallowmere
