#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/date_time.h"
#include "engine/file_system.h"

namespace tallowmere {

/// One file that matched.
struct FileRecord {
  std::string filename;  ///< without its folder
  Ticks filedate = 0;    ///< last modification, in whole seconds; 0 when it could not be read
  std::string filepath;  ///< the folder, ending with the separator
  std::int64_t filesize = 0;
  bool operator==(const FileRecord&) const = default;
};

/// The records of the matched files; the list view only shows them as rows. A row's index is its
/// record's index. The window keeps which row is selected.
class ResultList {
 public:
  std::size_t file_count() const { return records_.size(); }
  const FileRecord& record(std::size_t index) const { return records_[index]; }

  /// For the sort, which only changes the order.
  std::vector<FileRecord>& records() { return records_; }
  const std::vector<FileRecord>& records() const { return records_; }

  /// Moves the records out and leaves the list empty: a search among the listed files reads the old
  /// records while it appends new ones.
  std::vector<FileRecord> take_records();

  void add_file_row(FileRecord record);
  void add_file_row(std::string_view folder, std::string_view name, const FileFacts& facts);
  /// Adds a file by its full path, split after the last separator.
  void add_file_row(std::string_view path, const FileFacts& facts);

  /// Writes the facts found now into a row; true when they differ from those recorded. The next
  /// choice of the ticked sort key then sorts again.
  bool set_facts(std::size_t index, const FileFacts& facts);

  /// Removes all rows and keeps the sort flags; a new search calls it.
  void setup_new_list();

  /// Removes each record that equals its neighbour and lowers both counters. Called after each
  /// sort, which brings equal records together.
  void fill_result_list();

  /// Replaces a record, as when its file was renamed or moved.
  void change_record(std::size_t index, FileRecord record);

  /// Removes these rows, given in ascending order, and no longer counts their files as matched.
  /// `viewed_index` follows its file; it becomes -1 when that file is removed.
  void remove_rows(std::span<const std::size_t> rows);

  /// Returns the full path of a record.
  std::string indexed_filename(std::size_t index) const;

  /// Returns what follows the last "." of the name; empty without one.
  std::string list2_extension(std::size_t index) const;

  /// Returns the lowest index with exactly this full path; file_count() when there is none.
  std::size_t find_result_index(std::string_view path) const;

  std::int64_t matched_count = 0;    ///< files that matched; the run sets it before the fill
  std::ptrdiff_t viewed_index = -1;  ///< the record in the viewer; -1: none
  bool sort_descending = false;      ///< the reverse of the key's natural order; outlives searches
  bool resort_pending = false;       ///< choosing the ticked key sorts again, not in reverse

 private:
  std::vector<FileRecord> records_;
};

/// Finds the first place, from 1-based byte position `start` downwards, at which `pattern` occurs
/// in `text`; 0 when there is none. The match may run past `start`.
std::ptrdiff_t instr_reverse(std::ptrdiff_t start, std::string_view text, std::string_view pattern,
                             bool ignore_case);

}  // namespace tallowmere
