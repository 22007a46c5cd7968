#include "files/file_batch.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "engine/letter_case.h"

namespace tallowmere {
namespace {

/// Returns where a path's name begins.
std::size_t name_start(std::string_view path) {
  return path.rfind(path_separator) + 1;
}

/// Returns where to go from `row` once `removed` of `count` rows are gone: the row itself, else the
/// one that takes its place, else the last; -1 when no row is left. `removed` is ascending.
std::ptrdiff_t row_after_removal(std::size_t row, std::span<const std::size_t> removed,
                                 std::size_t count) {
  const auto above = std::ranges::lower_bound(removed, row) - removed.begin();
  const auto last = static_cast<std::ptrdiff_t>(count - removed.size()) - 1;
  return std::min(static_cast<std::ptrdiff_t>(row) - above, last);
}

class Transfer {
 public:
  Transfer(const TransferRequest& request, FileOperations& operations, BatchUser& user)
      : request_(request),
        operations_(operations),
        user_(user),
        ask_(request.confirm_replacement) {}

  BatchOutcome run(std::span<const std::string> paths) {
    outcome_.selected = paths.size();
    for (std::size_t i = 0; i < paths.size() && !outcome_.stopped; ++i) {
      // A file that was moved before has replaced this one.
      if (moves() && taken_.contains(name_key(paths[i]))) continue;
      if (user_.at_file(i, paths.size(), paths[i])) {
        transfer(paths[i]);
      } else {
        outcome_.stopped = true;
      }
    }
    return std::move(outcome_);
  }

 private:
  bool moves() const { return request_.command == FileCommand::move; }

  void transfer(const std::string& source) {
    const std::string target =
        request_.folder +
        (request_.name.empty() ? source.substr(name_start(source)) : request_.name);
    FileFacts facts;
    if (name_key(source) == name_key(target)) {
      fault(source, "The file is already in that folder");
    } else if (taken_.contains(name_key(target))) {
      fault(source, "Another selected file with the same name was placed there first");
    } else if (const auto error = operations_.facts(source, facts)) {
      fault(source, error->text);
    } else {
      put(source, facts, target);
    }
  }

  void fault(const std::string& path, std::string reason) {
    outcome_.faults.push_back({path, std::move(reason)});
  }

  std::optional<FileFacts> look(const std::string& path) {
    FileFacts facts;
    if (operations_.facts(path, facts)) return std::nullopt;
    return facts;
  }

  /// Writes one file. Begins again whenever the target has changed: the user agreed to replace only
  /// what the question showed.
  void put(const std::string& source, const FileFacts& source_facts, const std::string& target) {
    std::optional<FileFacts> let_go;
    for (;;) {
      const std::optional<FileFacts> there = look(target);
      if (there && ask_ && there != let_go) {
        if (!ask({source, target, source_facts, *there})) return;
        let_go = there;
        continue;
      }
      const Replace replace{there.has_value(), ask_ ? there : std::nullopt};
      const auto error = write(source, target, replace);
      if (!error) return note(source, target, replace.allowed);
      if (outcome_.stopped) return;  // a file that was given up is no failure
      if (error->code != FileOperations::in_the_way || look(target) == there) {
        return fault(source, error->text);
      }
    }
  }

  /// True when the target may be replaced.
  bool ask(const ReplaceQuestion& question) {
    const ReplaceAnswer answer = user_.ask_replace(question);
    if (answer == ReplaceAnswer::cancel) outcome_.stopped = true;
    if (answer == ReplaceAnswer::yes_to_all) ask_ = false;
    return answer == ReplaceAnswer::yes || answer == ReplaceAnswer::yes_to_all;
  }

  std::optional<SystemError> write(const std::string& source, const std::string& target,
                                   const Replace& replace) {
    const auto progress = [this](std::int64_t done, std::int64_t total) {
      if (!user_.at_bytes(done, total)) outcome_.stopped = true;
      return !outcome_.stopped;
    };
    return moves() ? operations_.move(source, target, replace, progress)
                   : operations_.copy(source, target, replace, progress);
  }

  void note(const std::string& source, const std::string& target, bool replaced) {
    ++outcome_.done;
    taken_.insert(name_key(target));
    if (moves()) {
      outcome_.moved.push_back({source, target, replaced});
    } else if (const auto facts = replaced ? look(target) : std::nullopt) {
      outcome_.rewritten.push_back({target, *facts});
    }
  }

  const TransferRequest& request_;
  FileOperations& operations_;
  BatchUser& user_;
  bool ask_;  ///< until the user says yes to all
  BatchOutcome outcome_;
  std::unordered_set<std::string> taken_;  ///< the keys of the targets written
};

/// Applies an outcome to the records. No events are served meanwhile.
class ListUpdate {
 public:
  ListUpdate(ResultList& list, const BatchOutcome& outcome) : list_(list), outcome_(outcome) {}

  ListChange run() {
    if (!outcome_.moved.empty()) follow();
    const bool replaced = std::ranges::any_of(outcome_.moved, &MovedFile::replaced);
    if (replaced || !outcome_.rewritten.empty()) visit_replaced();
    if (!outcome_.gone.empty()) find_gone();
    if (!removed_.empty()) remove();
    return change_;
  }

 private:
  bool is_viewed(std::size_t row) const {
    return list_.viewed_index == static_cast<std::ptrdiff_t>(row);
  }

  /// Gives the records of moved files their new paths.
  void follow() {
    std::unordered_map<std::string_view, const MovedFile*> by_path;
    for (const MovedFile& file : outcome_.moved) by_path.emplace(file.from, &file);
    for (std::size_t row = 0; row < list_.file_count(); ++row) {
      const auto found = by_path.find(list_.indexed_filename(row));
      if (found == by_path.end()) continue;
      const MovedFile& file = *found->second;
      FileRecord record = list_.record(row);
      record.filepath = file.to.substr(0, name_start(file.to));
      record.filename = file.to.substr(name_start(file.to));
      list_.change_record(row, std::move(record));
      if (!change_.records_changed) first_row_ = row;
      change_.records_changed = true;
      if (is_viewed(row)) change_.viewed = ViewedFile::moved;
      if (file.replaced) replacing_.emplace(name_key(file.to), row);
    }
  }

  /// Visits the records of the files that were replaced.
  void visit_replaced() {
    std::unordered_map<std::string, const RewrittenFile*> rewritten;
    for (const RewrittenFile& file : outcome_.rewritten) {
      rewritten.emplace(name_key(file.path), &file);
    }
    for (std::size_t row = 0; row < list_.file_count(); ++row) {
      const std::string key = name_key(list_.indexed_filename(row));
      if (const auto by = replacing_.find(key); by != replacing_.end() && by->second != row) {
        removed_.push_back(row);
        if (!is_viewed(row)) continue;
        list_.viewed_index = static_cast<std::ptrdiff_t>(by->second);
        if (change_.viewed == ViewedFile::untouched) change_.viewed = ViewedFile::rewritten;
      } else if (const auto file = rewritten.find(key); file != rewritten.end()) {
        list_.set_facts(row, file->second->facts);
        change_.rows_refreshed = true;
        if (is_viewed(row)) change_.viewed = ViewedFile::rewritten;
      }
    }
  }

  void find_gone() {
    const std::unordered_set<std::string_view> gone(outcome_.gone.begin(), outcome_.gone.end());
    for (std::size_t row = 0; row < list_.file_count(); ++row) {
      if (gone.contains(list_.indexed_filename(row))) removed_.push_back(row);
    }
    if (!removed_.empty()) first_row_ = removed_.front();
  }

  void remove() {
    const bool viewing = list_.viewed_index >= 0;
    change_.row_to_select = row_after_removal(first_row_, removed_, list_.file_count());
    change_.rows_removed = true;
    list_.remove_rows(removed_);
    if (viewing && list_.viewed_index < 0) change_.viewed = ViewedFile::gone;
  }

  ResultList& list_;
  const BatchOutcome& outcome_;
  ListChange change_;
  std::size_t first_row_ = 0;         ///< the topmost row that the command was for
  std::vector<std::size_t> removed_;  ///< ascending
  std::unordered_map<std::string, std::size_t> replacing_;  ///< their rows by the key of the path
};

}  // namespace

std::vector<std::string> paths_of(const ResultList& list, std::span<const std::size_t> rows) {
  std::vector<std::string> paths;
  std::unordered_set<std::string> seen;
  for (const std::size_t row : rows) {
    std::string path = list.indexed_filename(row);
    if (seen.insert(path).second) paths.push_back(std::move(path));
  }
  return paths;
}

BatchOutcome transfer_files(std::span<const std::string> paths, const TransferRequest& request,
                            FileOperations& operations, BatchUser& user) {
  return Transfer(request, operations, user).run(paths);
}

BatchOutcome delete_files(std::span<const std::string> paths, const std::vector<bool>& recycle,
                          FileOperations& operations, BatchUser& user) {
  BatchOutcome outcome;
  outcome.selected = paths.size();
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (!user.at_file(i, paths.size(), paths[i])) {
      outcome.stopped = true;
      break;
    }
    if (const auto error = operations.remove(paths[i], recycle[i])) {
      outcome.faults.push_back({paths[i], error->text});
    } else {
      outcome.gone.push_back(paths[i]);
    }
  }
  outcome.done = outcome.gone.size();
  return outcome;
}

BatchOutcome rename_file(const std::string& path, const std::string& name,
                         FileOperations& operations) {
  BatchOutcome outcome;
  outcome.selected = 1;
  const std::string target = path.substr(0, name_start(path)) + name;
  if (const auto error = operations.rename(path, target)) {
    outcome.faults.push_back({path, error->text});
  } else {
    outcome.moved.push_back({path, target});
    outcome.done = 1;
  }
  return outcome;
}

ListChange update_list(ResultList& list, const BatchOutcome& outcome) {
  return ListUpdate(list, outcome).run();
}

}  // namespace tallowmere
