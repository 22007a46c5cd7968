#include "engine/search_folder.h"

#include <atomic>

#include "engine/file_types.h"

namespace tallowmere {

void SearchFolder::start(std::string_view path, Source source) {
  path_.assign(path);
  source_ = source;
  listing.clear();
  error.reset();
  subfolders.clear();
  left_out = {};
  troubles.clear();
  turns_.clear();
  verdicts_.clear();
}

// A file that fits two file types counts and is delivered twice; it is tested once.
void SearchFolder::plan(const std::vector<std::string>& patterns) {
  const std::uint32_t rows = begin_plan();
  std::vector<bool> planned(patterns.size() > 1 ? rows : 0);
  std::size_t repeats = 0;
  for (const std::string& pattern : patterns) {
    for (std::uint32_t row = 0; row < rows; ++row) {
      if (!fits_file_type(listing.file(row).name, pattern)) continue;
      const bool repeated = !planned.empty() && planned[row];
      turns_.push_back({row, repeated});
      repeats += repeated;
      if (!planned.empty()) planned[row] = true;
    }
  }
  left_out.types = rows - static_cast<std::int64_t>(turns_.size() - repeats);
}

void SearchFolder::plan_all() {
  const std::uint32_t rows = begin_plan();
  for (std::uint32_t row = 0; row < rows; ++row) turns_.push_back({row, false});
}

std::uint32_t SearchFolder::begin_plan() {
  turns_.clear();
  verdicts_.assign(listing.file_count(), static_cast<unsigned char>(Verdict::untested));
  return static_cast<std::uint32_t>(listing.file_count());
}

Verdict SearchFolder::verdict(std::size_t row) const {
  return static_cast<Verdict>(std::atomic_ref(verdicts_[row]).load(std::memory_order_acquire));
}

void SearchFolder::set_verdict(std::size_t row, Verdict verdict) {
  std::atomic_ref(verdicts_[row])
      .store(static_cast<unsigned char>(verdict), std::memory_order_release);
}

}  // namespace tallowmere
