#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "engine/code_page.h"
#include "engine/multi_search.h"
#include "engine/text_matcher.h"
#include "engine/unicode.h"
#include "results/result_list.h"
#include "results/result_sort.h"

namespace tallowmere {
namespace {

constexpr std::size_t text_size = 1 << 20;

const CodePage& page() {
  static const CodePage value = CodePage::windows_1252();
  return value;
}

/// Returns text that looks like prose to a search: words of small letters, spaces, some capitals.
const std::string& prose() {
  static const std::string text = [] {
    std::mt19937 random(20240517);
    const std::string letters = "etaoinshrdlucmfwypvbgkjqxz";
    std::string made;
    while (made.size() < text_size) {
      for (unsigned left = 2 + random() % 8; left > 0; --left) {
        const auto pick = std::min(random() % 26, random() % 26);
        made += letters[pick];
      }
      made += random() % 9 == 0 ? ".\r\nThe " : " ";
    }
    made.resize(text_size);
    return made;
  }();
  return text;
}

void scan(benchmark::State& state, const std::string& text, const std::string& pattern, bool fold) {
  const BytePattern compiled(pattern, fold ? &page().lower_table() : nullptr);
  const auto* begin = reinterpret_cast<const Byte*>(text.data());
  for (auto _ : state) {
    OccurrenceScan occurrences(compiled, begin, begin + text.size());
    std::size_t count = 0;
    while (occurrences.next()) ++count;
    benchmark::DoNotOptimize(count);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void BM_AbsentPhrase(benchmark::State& state) {
  scan(state, prose(), "an absent phrase", false);
}
BENCHMARK(BM_AbsentPhrase);

void BM_AbsentPhraseAnyCase(benchmark::State& state) {
  scan(state, prose(), "an absent phrase", true);
}
BENCHMARK(BM_AbsentPhraseAnyCase);

void BM_TwoCharacters(benchmark::State& state) {
  scan(state, prose(), "th", true);
}
BENCHMARK(BM_TwoCharacters);

void BM_OneCharacter(benchmark::State& state) {
  scan(state, prose(), "e", false);
}
BENCHMARK(BM_OneCharacter);

/// Searches a text of one letter, with a break now and then, for a pattern of that letter, so that
/// every place is a candidate and no comparison ends early.
void BM_RunOfOneLetter(benchmark::State& state) {
  const auto length = static_cast<std::size_t>(state.range(0));
  std::string text(text_size, 'a');
  for (std::size_t at = length - 1; at < text.size(); at += length) text[at] = 'b';
  scan(state, text, std::string(length, 'a'), state.range(1) != 0);
}
BENCHMARK(BM_RunOfOneLetter)->ArgsProduct({{4, 100, 30000}, {0, 1}});

std::vector<std::string> terms(std::size_t count) {
  std::mt19937 random(7);
  std::vector<std::string> made;
  for (std::size_t i = 0; i < count; ++i) {
    std::string term(5 + random() % 6, 'x');
    for (char& c : term) c = static_cast<char>('a' + random() % 26);
    made.push_back(term);
  }
  return made;
}

void BM_ManyTermsInOnePass(benchmark::State& state) {
  std::vector<BytePattern> patterns;
  for (const std::string& term : terms(static_cast<std::size_t>(state.range(0)))) {
    patterns.emplace_back(term, &page().lower_table());
  }
  std::vector<std::vector<const BytePattern*>> groups;
  for (const BytePattern& pattern : patterns) {
    if (groups.empty() || groups.back().size() == MultiPattern::most) groups.emplace_back();
    groups.back().push_back(&pattern);
  }
  const std::vector<MultiPattern> passes(groups.begin(), groups.end());
  const auto* begin = reinterpret_cast<const Byte*>(prose().data());
  for (auto _ : state) {
    for (const MultiPattern& pass : passes) {
      const auto outcome = pass.find_any(begin, begin + prose().size(),
                                         [](std::size_t, const Byte*) { return false; });
      benchmark::DoNotOptimize(outcome);
    }
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * prose().size()));
}
BENCHMARK(BM_ManyTermsInOnePass)->Arg(4)->Arg(16)->Arg(50);

void BM_ManyTermsOneByOne(benchmark::State& state) {
  std::vector<BytePattern> patterns;
  for (const std::string& term : terms(static_cast<std::size_t>(state.range(0)))) {
    patterns.emplace_back(term, &page().lower_table());
  }
  const auto* begin = reinterpret_cast<const Byte*>(prose().data());
  for (auto _ : state) {
    for (const BytePattern& pattern : patterns) {
      benchmark::DoNotOptimize(OccurrenceScan(pattern, begin, begin + prose().size()).next());
    }
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * prose().size()));
}
BENCHMARK(BM_ManyTermsOneByOne)->Arg(4)->Arg(16)->Arg(50);

/// A file of `size` bytes that repeats `text`; reading costs a copy, as it does from a cache.
class RepeatedFile : public FileReader {
 public:
  RepeatedFile(const std::string& text, std::size_t size) : text_(text), left_(size) {}

  std::optional<SystemError> open(const std::string&, std::string_view) override { return {}; }
  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    got = std::min(wanted, left_);
    for (std::size_t done = 0; done < got;) {
      const std::size_t count = std::min(got - done, text_.size() - at_);
      std::memcpy(into + done, text_.data() + at_, count);
      done += count;
      at_ = (at_ + count) % text_.size();
    }
    left_ -= got;
    return std::nullopt;
  }
  std::optional<SystemError> seek(std::int64_t) override { return {}; }
  void close() override {}

 private:
  const std::string& text_;
  std::size_t at_ = 0;
  std::size_t left_;
};

void match(benchmark::State& state, const std::string& text, const CriteriaInput& input,
           bool unicode_text = false) {
  constexpr std::size_t file_size = 16 << 20;
  SearchCriteria search;
  search.unicode_text = unicode_text;
  load_search_criteria(search, input);
  const CompiledSearch compiled(search, page());
  const UnicodeSearch unicode(search, page());
  TextMatcher matcher(compiled, search.unicode_text ? &unicode : nullptr);
  for (auto _ : state) {
    RepeatedFile file(text, file_size);
    SystemError error;
    benchmark::DoNotOptimize(matcher.match_open_file(
        file, [] { return true; }, error));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * file_size));
}

void BM_MatchFile(benchmark::State& state) {
  CriteriaInput input;
  input.search_type = static_cast<int>(state.range(0));
  input.criteria = "the absentee committee";
  if (input.search_type == search_or) input.criteria = "absentee committee chairman";
  input.prox_before = input.prox_after = 110;
  match(state, prose(), input);
}
BENCHMARK(BM_MatchFile)->DenseRange(search_and, search_near);

/// Returns words of `letters` characters from `first` on, with spaces between them, as UTF-8.
std::string words_of(char32_t first, unsigned letters) {
  std::mt19937 random(20240517);
  std::string made;
  while (made.size() < text_size) {
    for (unsigned left = 2 + random() % 8; left > 0; --left) {
      append_utf8(made, first + static_cast<char32_t>(std::min(random(), random()) % letters));
    }
    made += ' ';
  }
  return made;
}

/// Decodes files in Cyrillic, Chinese and ASCII: as UTF-8 and as both kinds of UTF-16.
void BM_DecodeFile(benchmark::State& state) {
  const std::string texts[] = {words_of(0x430, 32), words_of(0x4E00, 3000), prose()};
  std::string text = texts[state.range(0)];
  if (state.range(1) > 0) {
    std::string units = state.range(1) == 1 ? "\xFF\xFE" : "\xFE\xFF";
    for (const char16_t unit : to_utf16(text)) {
      const char bytes[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
      units += bytes[state.range(1) - 1];
      units += bytes[2 - state.range(1)];
    }
    text = units;
  }
  CriteriaInput input;
  input.criteria = "\xD1\x8A\xD1\x8A\xD1\x8F\xE4\xB8\xAD\xE6\x96\x87";
  match(state, text, input, true);
}
BENCHMARK(BM_DecodeFile)->ArgsProduct({{0, 1, 2}, {0, 1, 2}});

/// Searches with NEAR where every byte is an anchor and no window holds what is looked for.
void BM_NearWithAnchorsEverywhere(benchmark::State& state) {
  CriteriaInput input;
  input.search_type = search_near;
  input.criteria = "\"a\" \"absent\"";
  input.prox_before = input.prox_after = 1000;
  match(state, std::string(text_size, 'a'), input);
}
BENCHMARK(BM_NearWithAnchorsEverywhere);

/// Sorts the list of a large search, in no order before, by each of its keys.
void BM_SortRows(benchmark::State& state) {
  std::mt19937 random(20240517);
  ResultList rows;
  for (int i = 0; i < 100'000; ++i) {
    const std::string name = "file " + std::to_string(random()) + ".txt";
    rows.add_file_row("C:\\folder " + std::to_string(random() % 1000) + "\\", name,
                      {static_cast<Ticks>(random()), static_cast<std::int64_t>(random())});
  }
  for (auto _ : state) {
    state.PauseTiming();
    ResultList list = rows;
    state.ResumeTiming();
    sort_results(list, static_cast<SortKey>(state.range(0)));
  }
}
BENCHMARK(BM_SortRows)
    ->DenseRange(int(SortKey::name), int(SortKey::type))
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tallowmere

BENCHMARK_MAIN();
