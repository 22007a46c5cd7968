#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/file_system.h"

namespace tallowmere {

/// The result of testing a file.
enum class Verdict : unsigned char {
  untested,
  no_match,
  match,
  no_match_in_bytes,  ///< the answer may differ when the file is read as Unicode text
  match_in_bytes,     ///< likewise
  unread,             ///< it could not be opened, or asked for its date
  broken_off,         ///< reading broke off
  other_date          ///< the dates to search leave it out
};

inline bool is_trouble(Verdict verdict) {
  return verdict == Verdict::unread || verdict == Verdict::broken_off;
}

inline bool is_match(Verdict verdict) {
  return verdict == Verdict::match || verdict == Verdict::match_in_bytes;
}

/// How much a search has left out, as far as it knows; counts each file and folder once.
struct LeftOut {
  std::int64_t types = 0;  ///< files that are of no type to search
  std::int64_t names = 0;  ///< files and folders left out by name
  std::int64_t dates = 0;  ///< files of a type to search that the dates leave out
};

/// The files of one folder that a search tests, in the order in which they are delivered. One
/// thread lists the folder; then any threads test its files, one thread per file, while the host's
/// thread waits for their verdicts. Objects are used again for other folders, so that they allocate
/// only while they grow.
class SearchFolder {
 public:
  /// One delivery of a file: it has one for each file type that it fits.
  struct Turn {
    std::uint32_t row;  ///< of the listing
    bool repeated;      ///< an earlier turn has tested it
  };

  /// Where the files come from.
  enum class Source {
    folder,    ///< from the system's listing
    list,      ///< from the result list: the system has to be asked what they are
    selection  ///< the same, tested whatever its date
  };

  /// Begins again with another folder; `path` must end with a separator.
  void start(std::string_view path, Source source);
  /// Makes the turns of the files listed, in one pass for each pattern of file types. Counts the
  /// files that fit none.
  void plan(const std::vector<std::string>& patterns);
  /// Makes the turns of all files in the listing, in its order.
  void plan_all();

  const std::string& path() const { return path_; }
  Source source() const { return source_; }
  const std::vector<Turn>& turns() const { return turns_; }

  /// Returns a file's verdict. Verdicts are atomic: a thread that sees one can read what was
  /// written before it was set.
  Verdict verdict(std::size_t row) const;
  void set_verdict(std::size_t row, Verdict verdict);

  FolderListing listing;
  std::optional<SystemError> error;     ///< of listing it; what came before it is in the listing
  std::vector<std::string> subfolders;  ///< in the order of the walk
  LeftOut left_out;                     ///< when it was listed

  /// Why a file is unread. Whoever adds one or looks for one holds the lock that the threads share.
  struct Trouble {
    std::size_t row;
    SystemError error;
  };
  std::vector<Trouble> troubles;

 private:
  std::uint32_t begin_plan();

  std::string path_;
  Source source_ = Source::folder;
  std::vector<Turn> turns_;
  mutable std::vector<unsigned char> verdicts_;  ///< one Verdict per row, accessed atomically
};

}  // namespace tallowmere
