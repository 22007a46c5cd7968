#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "engine/byte_search.h"
#include "engine/code_page.h"
#include "engine/multi_search.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

const std::array<Byte, 256>& lower_table() {
  static const CodePage page = CodePage::windows_1252();
  return page.lower_table();
}

std::string folded(std::string text) {
  for (char& c : text) c = static_cast<char>(lower_table()[static_cast<Byte>(c)]);
  return text;
}

std::vector<std::size_t> naive(const std::string& text, const std::string& pattern, bool fold) {
  const std::string seen = fold ? folded(text) : text;
  std::vector<std::size_t> places;
  for (std::size_t at = seen.find(pattern); at < seen.size(); at = seen.find(pattern, at + 1)) {
    places.push_back(at);
  }
  return places;
}

std::vector<std::size_t> scanned(const std::string& text, const BytePattern& pattern) {
  // A copy of exactly this size, so that a load past the end is caught.
  const std::vector<Byte> copy(text.begin(), text.end());
  OccurrenceScan scan(pattern, copy.data(), copy.data() + copy.size());
  std::vector<std::size_t> places;
  while (const Byte* at = scan.next()) places.push_back(static_cast<std::size_t>(at - copy.data()));
  return places;
}

std::string random_text(std::mt19937& random, const std::string& alphabet, std::size_t size) {
  std::string text(size, ' ');
  for (char& c : text) c = alphabet[random() % alphabet.size()];
  return text;
}

const std::array<Byte, 256>* table(bool fold) {
  return fold ? &lower_table() : nullptr;
}

TEST(ByteSearch, OneByOneAndTogetherFindsWhatANaiveSearchFinds) {
  std::mt19937 random(test_seed());
  const std::string alphabets[] = {"ab", "aAbB", "aeE\xC9\xE9\x8A\x9A\x9F\xFF@`[{",
                                   "abcdefghABCDEFGH\xC9\xE9 "};
  for (int round = 0; round < 4000; ++round) {
    const std::string& alphabet = alphabets[random() % std::size(alphabets)];
    const std::string text = random_text(random, alphabet, random() % 300);
    const bool fold = random() % 2 == 0;
    const std::size_t longest = round % 2 ? 9 : 24;
    std::vector<BytePattern> patterns;
    bool expected = false;
    for (std::size_t i = 0, count = 1 + random() % 20; i < count; ++i) {
      std::string pattern = random_text(random, alphabet, 1 + random() % longest);
      if (fold) pattern = folded(pattern);
      patterns.emplace_back(pattern, table(fold));
      const auto places = naive(text, pattern, fold);
      ASSERT_EQ(scanned(text, patterns.back()), places) << pattern << " in " << text;
      // Together, every second pattern is refused wherever it occurs.
      expected |= i % 2 == 0 && !places.empty();
    }
    if (!MultiPattern::usable()) continue;
    std::vector<const BytePattern*> pointers;
    for (const BytePattern& pattern : patterns) pointers.push_back(&pattern);
    const std::vector<Byte> copy(text.begin(), text.end());
    const auto outcome = MultiPattern(pointers).find_any(
        copy.data(), copy.data() + copy.size(),
        [](std::size_t index, const Byte*) { return index % 2 == 0; });
    ASSERT_EQ(outcome == MultiPattern::Outcome::found, expected) << "round " << round;
  }
}

TEST(ByteSearch, StaysExactWhereItTurnsLinear) {
  // Nearly periodic text and pattern: comparing each candidate in full would be quadratic.
  std::mt19937 random(test_seed());
  for (int round = 0; round < 60; ++round) {
    std::string older = "a";
    std::string text = random() % 2 ? "ab" : "aab";
    while (text.size() < 40000) older = std::exchange(text, text + older);
    const std::string pattern =
        round == 0 ? std::string(200, 'a') : text.substr(random() % 1000, 20 + random() % 500);
    if (round == 0) text.assign(5000, 'a');  // nothing but overlaps
    for (int errors = static_cast<int>(random() % 30); errors > 0; --errors) {
      text[random() % text.size()] = 'a';
    }
    const bool fold = round % 2 == 0;
    const BytePattern compiled(pattern, table(fold));
    ASSERT_EQ(scanned(text, compiled), naive(text, pattern, fold)) << "round " << round;
  }
}

TEST(MultiSearch, GivesUpWhatCostsTooMuch) {
  const std::string run(499, 'a');
  std::string text;
  while (text.size() < 100'000) text += run + "b";
  const std::vector<BytePattern> patterns(4, BytePattern(run + "a", nullptr));
  const MultiPattern together({&patterns[0], &patterns[1], &patterns[2], &patterns[3]});
  const auto* begin = reinterpret_cast<const Byte*>(text.data());
  const auto outcome =
      together.find_any(begin, begin + text.size(), [](std::size_t, const Byte*) { return true; });
  EXPECT_EQ(outcome, MultiPattern::Outcome::too_costly);
}

}  // namespace
}  // namespace tallowmere
