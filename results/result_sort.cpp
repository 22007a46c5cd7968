#include "results/result_sort.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/letter_case.h"

// The order of equal records is part of the result, and a Shell sort is not stable: only the same
// passes give the same order. But each pass with gap g is a stable sort of g interleaved chains, so
// any stable sort will do for it, and on small integers: records are ranked once and moved once.

namespace tallowmere {
namespace {

/// Calls the caller's yield once in a few thousand steps.
class Pace {
 public:
  explicit Pace(const std::function<void()>& yield) : yield_(yield) {}
  void step() {
    if (++steps_ % 4096 == 0 && yield_) yield_();
  }

 private:
  const std::function<void()>& yield_;
  std::uint32_t steps_ = 0;
};

/// Lower-cased texts, one after another.
class FoldedTexts {
 public:
  void add(std::string_view text) {
    bytes_ += lower_case(text);
    ends_.push_back(bytes_.size());
  }
  std::size_t count() const { return ends_.size(); }
  std::string_view operator[](std::size_t index) const {
    const std::size_t start = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(bytes_).substr(start, ends_[index] - start);
  }

 private:
  std::string bytes_;
  std::vector<std::size_t> ends_;
};

using Ranks = std::vector<std::uint32_t>;

/// Returns the rank of each of `count` items in the order of `less`; equal items share one.
template <typename Less>
Ranks dense_ranks(std::size_t count, Pace& pace, const Less& less) {
  Ranks order(count);
  for (std::size_t i = 0; i < count; ++i) order[i] = static_cast<std::uint32_t>(i);
  std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
    pace.step();
    return less(a, b);
  });
  Ranks ranks(count);
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0 && less(order[i - 1], order[i])) ++rank;
    ranks[order[i]] = rank;
  }
  return ranks;
}

/// Returns the first eight bytes as a number that compares as they do; saves most text comparisons.
std::uint64_t text_prefix(std::string_view text) {
  std::uint64_t prefix = 0;
  for (std::size_t i = 0; i < 8; ++i) {
    prefix = prefix << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0u);
  }
  return prefix;
}

Ranks text_ranks(const FoldedTexts& texts, Pace& pace) {
  std::vector<std::uint64_t> prefixes(texts.count());
  for (std::size_t i = 0; i < texts.count(); ++i) prefixes[i] = text_prefix(texts[i]);
  return dense_ranks(texts.count(), pace, [&](std::uint32_t a, std::uint32_t b) {
    if (prefixes[a] != prefixes[b]) return prefixes[a] < prefixes[b];
    return texts[a] < texts[b];
  });
}

template <typename TextOf>
Ranks rank_by_text(const std::vector<FileRecord>& records, Pace& pace, const TextOf& text_of) {
  // Folders and types repeat a lot: each different one is folded and compared once.
  std::unordered_map<std::string_view, std::uint32_t> numbers;
  Ranks number_of(records.size());
  FoldedTexts texts;
  for (std::size_t i = 0; i < records.size(); ++i) {
    pace.step();
    const std::string_view text = text_of(records[i]);
    const auto next = static_cast<std::uint32_t>(texts.count());
    const auto [entry, is_new] = numbers.try_emplace(text, next);
    if (is_new) texts.add(text);
    number_of[i] = entry->second;
  }
  const Ranks ranks = text_ranks(texts, pace);
  for (std::uint32_t& number : number_of) number = ranks[number];
  return number_of;
}

Ranks rank_newest_first(const std::vector<FileRecord>& records, Pace& pace) {
  return dense_ranks(records.size(), pace, [&](std::uint32_t a, std::uint32_t b) {
    return records[a].filedate > records[b].filedate;
  });
}

Ranks rank_largest_first(const std::vector<FileRecord>& records, Pace& pace) {
  return dense_ranks(records.size(), pace, [&](std::uint32_t a, std::uint32_t b) {
    return records[a].filesize > records[b].filesize;
  });
}

/// Returns the ranks by the key itself, before names decide ties.
Ranks key_ranks(const std::vector<FileRecord>& records, SortKey key, Pace& pace) {
  switch (key) {
    case SortKey::date:
      return rank_newest_first(records, pace);
    case SortKey::size:
      return rank_largest_first(records, pace);
    case SortKey::folder:
      return rank_by_text(records, pace,
                          [](const FileRecord& r) { return std::string_view(r.filepath); });
    case SortKey::type:
      return rank_by_text(records, pace,
                          [](const FileRecord& r) { return sort_extension(r.filename); });
    case SortKey::name:
    case SortKey::none:
      break;
  }
  return Ranks(records.size(), 0);
}

/// A record's rank in the upper half, its index before the sort in the lower.
using Item = std::uint64_t;

std::uint32_t rank_of(Item item) {
  return static_cast<std::uint32_t>(item >> 32);
}

std::vector<Item> ranked_items(const std::vector<FileRecord>& records, SortKey key, Pace& pace) {
  const Ranks names =
      rank_by_text(records, pace, [](const FileRecord& r) { return std::string_view(r.filename); });
  const Ranks keys = key_ranks(records, key, pace);
  const auto both = [&](std::size_t i) { return Item{keys[i]} << 32 | names[i]; };
  const Ranks ranks = dense_ranks(
      records.size(), pace, [&](std::uint32_t a, std::uint32_t b) { return both(a) < both(b); });
  std::vector<Item> items(records.size());
  for (std::size_t i = 0; i < items.size(); ++i) items[i] = Item{ranks[i]} << 32 | i;
  return items;
}

/// Sorts every chain of the gap by stable insertion. False when that takes too many moves; equal
/// items have then kept their order.
bool insertion_pass(std::vector<Item>& items, std::size_t gap) {
  std::size_t moves_left = 8 * items.size();
  for (std::size_t i = gap; i < items.size(); ++i) {
    const Item item = items[i];
    std::size_t j = i;
    for (; j >= gap && rank_of(items[j - gap]) > rank_of(item); j -= gap) {
      items[j] = items[j - gap];
    }
    items[j] = item;
    const std::size_t moves = (i - j) / gap;
    if (moves > moves_left) return false;
    moves_left -= moves;
  }
  return true;
}

void stable_pass(std::vector<Item>& items, std::size_t gap, Pace& pace) {
  std::vector<Item> chain;
  for (std::size_t start = 0; start < gap; ++start) {
    chain.clear();
    for (std::size_t i = start; i < items.size(); i += gap) chain.push_back(items[i]);
    std::stable_sort(chain.begin(), chain.end(), [&](Item a, Item b) {
      pace.step();
      return rank_of(a) < rank_of(b);
    });
    for (std::size_t i = 0; i < chain.size(); ++i) items[start + i * gap] = chain[i];
  }
}

/// Returns half of `number`, halves rounded to the even neighbour.
std::size_t rounded_half(std::size_t number) {
  const std::size_t half = number / 2;
  return number % 2 == 1 && half % 2 == 1 ? half + 1 : half;
}

/// Moves each record to where its item is.
void arrange(std::vector<FileRecord>& records, std::vector<Item>& items) {
  const auto source = [&items](std::size_t i) { return static_cast<std::uint32_t>(items[i]); };
  for (std::size_t start = 0; start < items.size(); ++start) {
    if (source(start) == start) continue;
    FileRecord first = std::move(records[start]);
    std::size_t hole = start;
    while (source(hole) != start) {
      const std::size_t from = source(hole);
      records[hole] = std::move(records[from]);
      items[hole] = hole;
      hole = from;
    }
    records[hole] = std::move(first);
    items[hole] = hole;
  }
}

}  // namespace

std::string_view sort_extension(std::string_view filename) {
  const std::size_t dot = filename.find('.');
  return dot == std::string_view::npos ? filename : filename.substr(dot + 1);
}

void sort_results(ResultList& list, SortKey key, const std::function<void()>& yield) {
  std::vector<FileRecord>& records = list.records();
  assert(records.size() <= std::numeric_limits<std::uint32_t>::max());
  Pace pace(yield);
  std::vector<Item> items = ranked_items(records, key, pace);
  for (std::size_t gap = rounded_half(items.size()); gap >= 1; gap = rounded_half(gap)) {
    pace.step();
    if (!insertion_pass(items, gap)) stable_pass(items, gap, pace);
  }
  arrange(records, items);
}

void reverse_results(ResultList& list) {
  std::reverse(list.records().begin(), list.records().end());
}

}  // namespace tallowmere
