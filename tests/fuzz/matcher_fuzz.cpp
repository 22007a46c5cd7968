// cmake -B FOLDER -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DFUZZ=ON && ninja -C FOLDER matcher_fuzz
//
// Splits arbitrary criteria, converts them to UTF-16 and back, and holds the matcher against the
// literal one in a file whose bytes stand around the seams of its chunks.

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "engine/text_matcher.h"
#include "engine/unicode.h"
#include "tests/native/literal_matcher.h"
#include "tests/support/memory_files.h"

namespace tallowmere {
namespace {

constexpr std::size_t chunk = FileChunks::chunk_size;

void require(bool good) {
  if (!good) std::abort();
}

/// The fuzzer's bytes, taken from the front. Beyond the end all are zero.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  std::size_t number(std::size_t limit) {
    const std::string_view bytes = text(2);
    std::size_t value = 0;
    for (const char c : bytes) value = value << 8 | static_cast<unsigned char>(c);
    return value % limit;
  }

  std::string_view text(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view all() { return text(rest_.size()); }

 private:
  std::string_view rest_;
};

CriteriaInput criteria_from(Input& input) {
  CriteriaInput criteria;
  const std::size_t flags = input.number(32);
  criteria.search_type = static_cast<int>(flags & 3);
  criteria.match_case = (flags & 4) != 0;
  criteria.prox_all = (flags & 8) != 0;
  const std::size_t range = (flags & 16) != 0 ? 1001 : 9;
  criteria.prox_before = static_cast<int>(input.number(range));
  criteria.prox_after = static_cast<int>(input.number(range));
  criteria.criteria = input.text(input.number(200));
  // Now and then terms longer than a chunk.
  if (input.number(64) == 1) {
    const std::size_t at = std::min(input.number(200), criteria.criteria.size());
    criteria.criteria.insert(at, chunk - 4 + input.number(8), '.');
  }
  return criteria;
}

std::string file_from(Input& input) {
  std::string file(input.number(3) * chunk, '.');
  const std::size_t reach = input.number(120);
  const std::string_view bytes = input.all();
  if (file.empty()) return std::string(bytes);
  // The same bytes lie across every seam, and the file ends within them.
  for (std::size_t seam = chunk; seam <= file.size(); seam += chunk) {
    const std::size_t start = seam - std::min(reach, bytes.size());
    file.resize(std::max(file.size(), start + bytes.size()), '.');
    file.replace(start, bytes.size(), bytes);
    if (seam + chunk > file.size()) break;
  }
  return file;
}

void check_unicode(const std::string& text) {
  const std::u16string wide = to_utf16(text);
  const std::string back = to_utf8(wide);
  require(to_utf16(back) == wide);
  if (is_well_formed_utf8(text)) require(back == text);
  require(compare_ignore_case(text, text) == 0);
  require(compare_ignore_case(text, back) == -compare_ignore_case(back, text));
}

void check_split(const SearchCriteria& search) {
  const auto count = static_cast<std::size_t>(search.last_term + 1);
  require(search.terms.size() == count && search.term_len.size() == count);
  for (std::size_t i = 0; i < count; ++i) {
    require(search.term_len[i] == static_cast<int>(search.terms[i].size()));
    require(search.term_len[i] <= search.max_term_len);
    require(!search.whole_word[i] || (search.term_len[i] > 0 && search.terms[i][0] != ' '));
  }
}

void check_matcher(const SearchCriteria& search, const CodePage& page, const std::string& file) {
  const bool expected = LiteralMatcher(search, page).matches(file);
  for (const Kernel kernel : {Kernel::fastest, Kernel::scalar}) {
    MemoryFiles files;
    files.add("f", file);
    const auto opened = files.reader();
    require(!opened->open("", "f"));
    SystemError error;
    TextMatcher matcher(search, page, kernel);
    const MatchOutcome outcome = matcher.match_open_file(
        *opened, [] { return true; }, error);
    require(outcome == (expected ? MatchOutcome::match : MatchOutcome::no_match));
  }
}

}  // namespace
}  // namespace tallowmere

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tallowmere;
  static const CodePage page = CodePage::windows_1252();
  Input input(data, size);
  const CriteriaInput criteria = criteria_from(input);
  check_unicode(criteria.criteria);
  SearchCriteria search;
  load_search_criteria(search, criteria, page);
  check_split(search);
  check_matcher(search, page, file_from(input));
  return 0;
}
