#include "shell/file_batch.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "shell/file_names.h"

namespace tallowmere {
namespace {

/// Finds records by their full paths without regard to case, in a list too long to go through for
/// every file. Made when it is first needed, which is seldom.
class PathIndex {
 public:
  explicit PathIndex(const ResultList& list) {
    for (std::size_t row = 0; row < list.file_count(); ++row) {
      rows_.emplace(folded(list.indexed_filename(row)), row);
    }
  }
  std::optional<std::size_t> find(const std::string& path) const {
    const auto found = rows_.find(folded(path));
    if (found == rows_.end()) return std::nullopt;
    return found->second;
  }
  void move(const std::string& from, const std::string& to, std::size_t row) {
    const auto found = rows_.find(folded(from));
    if (found != rows_.end() && found->second == row) rows_.erase(found);
    rows_[folded(to)] = row;
  }

 private:
  std::unordered_map<std::string, std::size_t> rows_;
};

bool is_viewed(const ResultList& list, std::size_t row) {
  return list.viewed_index == static_cast<std::ptrdiff_t>(row);
}

/// Removes the rows; `row` was the topmost of those that the command was for.
void drop_rows(ResultList& list, std::span<const std::size_t> removed, std::size_t row,
               BatchOutcome& outcome) {
  if (removed.empty()) return;
  const bool viewing = list.viewed_index >= 0;
  outcome.row_to_select = row_after_removal(row, removed, list.file_count());
  outcome.rows_removed = true;
  list.remove_rows(removed);
  if (viewing && list.viewed_index < 0) outcome.viewed = ViewedFile::gone;
}

class Transfer {
 public:
  Transfer(ResultList& list, const TransferRequest& request, FileOperations& operations,
           BatchUser& user)
      : list_(list),
        request_(request),
        operations_(operations),
        user_(user),
        ask_(request.confirm_replacement) {}

  BatchOutcome run(std::span<const std::size_t> rows) {
    outcome_.selected = rows.size();
    for (std::size_t i = 0; i < rows.size() && !outcome_.stopped; ++i) {
      if (replaced_.contains(rows[i])) continue;  // replaced by a file before it
      if (user_.at_file(i, rows.size(), list_.indexed_filename(rows[i]))) {
        transfer(rows[i]);
      } else {
        outcome_.stopped = true;
      }
    }
    std::vector<std::size_t> gone(replaced_.begin(), replaced_.end());
    std::ranges::sort(gone);
    if (!rows.empty()) drop_rows(list_, gone, rows.front(), outcome_);
    return std::move(outcome_);
  }

 private:
  bool moves() const { return request_.command == FileCommand::move; }

  void transfer(std::size_t row) {
    const FileRecord& record = list_.record(row);
    const std::string source = list_.indexed_filename(row);
    const std::string target =
        request_.folder + (request_.name.empty() ? record.filename : request_.name);
    if (folded(source) == folded(target)) {
      fault(source, "The file is already there");
    } else if (taken_.contains(folded(target))) {
      fault(source, "Another of the selected files has taken its name there");
    } else {
      bool replace = false;
      if (may_write(source, target, replace)) write(row, source, target, replace);
    }
  }

  void fault(const std::string& path, std::string reason) {
    outcome_.faults.push_back({path, std::move(reason)});
  }

  /// Sees whether the target exists and asks when it is to be replaced.
  bool may_write(const std::string& source, const std::string& target, bool& replace) {
    ReplaceQuestion question{source, target, {}, {}};
    if (const auto error = operations_.facts(source, question.source_facts)) {
      fault(source, error->text);
      return false;
    }
    replace = !operations_.facts(target, question.target_facts);
    if (!replace || !ask_) return true;
    const ReplaceAnswer answer = user_.ask_replace(question);
    if (answer == ReplaceAnswer::cancel) outcome_.stopped = true;
    if (answer == ReplaceAnswer::yes_to_all) ask_ = false;
    return answer == ReplaceAnswer::yes || answer == ReplaceAnswer::yes_to_all;
  }

  void write(std::size_t row, const std::string& source, const std::string& target, bool replace) {
    const auto progress = [this](std::int64_t done, std::int64_t total) {
      if (!user_.at_bytes(done, total)) outcome_.stopped = true;
      return !outcome_.stopped;
    };
    const auto error = moves() ? operations_.move(source, target, replace, progress)
                               : operations_.copy(source, target, replace, progress);
    if (error) {
      // A file that was given up is no failure.
      if (!outcome_.stopped) fault(source, error->text);
      return;
    }
    ++outcome_.done;
    taken_.insert(folded(target));
    if (replace) target_replaced(row, target);
    if (moves()) follow(row, source, target);
  }

  /// The row's file has taken the place of another one, which may be listed.
  void target_replaced(std::size_t row, const std::string& target) {
    if (!index_) index_.emplace(list_);
    const std::optional<std::size_t> other = index_->find(target);
    if (!other || *other == row) return;
    if (is_viewed(list_, *other)) {
      outcome_.viewed = ViewedFile::rewritten;
      if (moves()) list_.viewed_index = static_cast<std::ptrdiff_t>(row);
    }
    if (moves()) {
      replaced_.insert(*other);
      return;
    }
    FileFacts facts;
    if (operations_.facts(target, facts)) return;
    list_.set_facts(*other, facts);
    outcome_.rows_refreshed = true;
  }

  void follow(std::size_t row, const std::string& source, const std::string& target) {
    FileRecord record = list_.record(row);
    record.filepath = request_.folder;
    record.filename = target.substr(request_.folder.size());
    list_.change_record(row, std::move(record));
    if (index_) index_->move(source, target, row);
    outcome_.records_changed = true;
    if (is_viewed(list_, row) && outcome_.viewed == ViewedFile::untouched) {
      outcome_.viewed = ViewedFile::moved;
    }
  }

  ResultList& list_;
  const TransferRequest& request_;
  FileOperations& operations_;
  BatchUser& user_;
  bool ask_;  ///< until the user says yes to all
  BatchOutcome outcome_;
  std::unordered_set<std::string> taken_;     ///< targets written, folded
  std::unordered_set<std::size_t> replaced_;  ///< rows whose files were replaced by moved ones
  std::optional<PathIndex> index_;
};

}  // namespace

BatchOutcome transfer_files(ResultList& list, std::span<const std::size_t> rows,
                            const TransferRequest& request, FileOperations& operations,
                            BatchUser& user) {
  return Transfer(list, request, operations, user).run(rows);
}

BatchOutcome delete_files(ResultList& list, std::span<const std::size_t> rows,
                          const std::vector<bool>& recycle, FileOperations& operations,
                          BatchUser& user) {
  BatchOutcome outcome;
  outcome.selected = rows.size();
  std::vector<std::size_t> gone;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::string path = list.indexed_filename(rows[i]);
    if (!user.at_file(i, rows.size(), path)) {
      outcome.stopped = true;
      break;
    }
    if (const auto error = operations.remove(path, recycle[i])) {
      outcome.faults.push_back({path, error->text});
    } else {
      gone.push_back(rows[i]);
    }
  }
  outcome.done = gone.size();
  if (!gone.empty()) drop_rows(list, gone, gone.front(), outcome);
  return outcome;
}

BatchOutcome rename_file(ResultList& list, std::size_t row, const std::string& name,
                         FileOperations& operations) {
  BatchOutcome outcome;
  outcome.selected = 1;
  const std::string path = list.indexed_filename(row);
  FileRecord record = list.record(row);
  record.filename = name;
  if (const auto error = operations.rename(path, record.filepath + name)) {
    outcome.faults.push_back({path, error->text});
    return outcome;
  }
  list.change_record(row, std::move(record));
  outcome.done = 1;
  outcome.records_changed = true;
  if (is_viewed(list, row)) outcome.viewed = ViewedFile::moved;
  return outcome;
}

BatchOutcome remove_rows(ResultList& list, std::span<const std::size_t> rows) {
  BatchOutcome outcome;
  outcome.selected = rows.size();
  outcome.done = rows.size();
  if (!rows.empty()) drop_rows(list, rows, rows.front(), outcome);
  return outcome;
}

std::ptrdiff_t row_after_removal(std::size_t row, std::span<const std::size_t> removed,
                                 std::size_t count) {
  const auto above = std::ranges::lower_bound(removed, row) - removed.begin();
  const auto last = static_cast<std::ptrdiff_t>(count - removed.size()) - 1;
  return std::min(static_cast<std::ptrdiff_t>(row) - above, last);
}

}  // namespace tallowmere
