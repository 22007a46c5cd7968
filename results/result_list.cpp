#include "results/result_list.h"

#include <algorithm>
#include <utility>

#include "engine/letter_case.h"

namespace tallowmere {
namespace {

/// Rounds down to a whole second. Files written within one second, as by one copy command, thus
/// have the same date, and their names order them.
Ticks whole_second(Ticks moment) {
  return moment - moment % ticks_per_second;
}

}  // namespace

std::vector<FileRecord> ResultList::take_records() {
  return std::exchange(records_, {});
}

void ResultList::add_file_row(FileRecord record) {
  // Growing by a quarter keeps a long list small; doubling could waste a record per row.
  if (records_.size() == records_.capacity()) {
    records_.reserve(records_.size() + records_.size() / 4 + 64);
  }
  records_.push_back(std::move(record));
}

void ResultList::add_file_row(std::string_view folder, std::string_view name,
                              const FileFacts& facts) {
  add_file_row(
      FileRecord{std::string(name), whole_second(facts.modified), std::string(folder), facts.size});
}

bool ResultList::set_facts(std::size_t index, const FileFacts& facts) {
  FileRecord& record = records_[index];
  const Ticks second = whole_second(facts.modified);
  if (record.filedate == second && record.filesize == facts.size) return false;
  record.filedate = second;
  record.filesize = facts.size;
  resort_pending = true;
  return true;
}

void ResultList::add_file_row(std::string_view path, const FileFacts& facts) {
  const std::ptrdiff_t separator =
      instr_reverse(std::ssize(path), path, std::string_view(&path_separator, 1), false);
  add_file_row(path.substr(0, separator), path.substr(separator), facts);
}

void ResultList::setup_new_list() {
  records_.clear();
  matched_count = 0;
  viewed_index = -1;
}

void ResultList::fill_result_list() {
  const auto end = std::unique(records_.begin(), records_.end());
  matched_count -= records_.end() - end;
  records_.erase(end, records_.end());
}

void ResultList::change_record(std::size_t index, FileRecord record) {
  records_[index] = std::move(record);
}

void ResultList::remove_rows(std::span<const std::size_t> rows) {
  const std::ptrdiff_t viewed = std::exchange(viewed_index, -1);
  auto removed = rows.begin();
  std::size_t end = 0;
  for (std::size_t i = 0; i < records_.size(); ++i) {
    if (removed != rows.end() && *removed == i) {
      ++removed;
      continue;
    }
    if (viewed == static_cast<std::ptrdiff_t>(i)) viewed_index = static_cast<std::ptrdiff_t>(end);
    if (end != i) records_[end] = std::move(records_[i]);
    ++end;
  }
  matched_count -= static_cast<std::int64_t>(records_.size() - end);
  records_.resize(end);
}

std::string ResultList::indexed_filename(std::size_t index) const {
  return records_[index].filepath + records_[index].filename;
}

std::string ResultList::list2_extension(std::size_t index) const {
  const std::string& name = records_[index].filename;
  const std::ptrdiff_t dot = instr_reverse(std::ssize(name), name, ".", false);
  return dot == 0 ? std::string() : name.substr(dot);
}

std::size_t ResultList::find_result_index(std::string_view path) const {
  for (std::size_t i = 0; i < records_.size(); ++i) {
    const FileRecord& record = records_[i];
    if (record.filepath.size() + record.filename.size() == path.size() &&
        path.starts_with(record.filepath) && path.ends_with(record.filename)) {
      return i;
    }
  }
  return records_.size();
}

std::ptrdiff_t instr_reverse(std::ptrdiff_t start, std::string_view text, std::string_view pattern,
                             bool ignore_case) {
  const std::ptrdiff_t last = std::ssize(text) - std::ssize(pattern) + 1;
  for (std::ptrdiff_t position = std::min(start, last); position >= 1; --position) {
    const std::string_view there = text.substr(position - 1, pattern.size());
    if (ignore_case ? lower_case(there) == lower_case(pattern) : there == pattern) return position;
  }
  return 0;
}

}  // namespace tallowmere
