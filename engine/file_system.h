#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/date_time.h"

namespace tallowmere {

#ifdef _WIN32
inline constexpr char path_separator = '\\';
#else
inline constexpr char path_separator = '/';
#endif

/// Returns `folder` with a final separator, added only when it is missing.
std::string with_separator(std::string folder);

/// What the system says about a failed operation: its code and its own words, UTF-8, without the
/// final period or line break.
struct SystemError {
  int code = 0;
  std::string text;
};

struct FileFacts {
  Ticks modified = 0;
  std::int64_t size = 0;  ///< bytes
  bool operator==(const FileFacts&) const = default;
};

/// The ordinary files and the subfolders of one folder. Reused from folder to folder so that a
/// listing allocates only while it grows. Views stay valid until clear() or the next add.
class FolderListing {
 public:
  struct File {
    std::string_view name;
    bool facts_known = false;  ///< false: the system lists names only; ask FileSystem::facts
    FileFacts facts;
    bool online_only = false;  ///< FileReader::online_only, as far as the listing gives facts
  };

  /// Sets whether hidden and system entries are listed, too. clear() leaves it as it is.
  void set_wants_hidden(bool wants) { wants_hidden_ = wants; }
  bool wants_hidden() const { return wants_hidden_; }

  void clear();
  /// Notes that the system has given the folder's first entry, of whatever kind.
  void set_begun() { begun_ = true; }
  bool begun() const { return begun_; }
  void add_file(std::string_view name, const FileFacts* facts, bool online_only = false);
  void add_folder(std::string_view name);
  /// Removes the files whose names are unwanted; returns how many.
  std::size_t remove_files(const std::function<bool(std::string_view)>& unwanted);
  /// Replaces a file's facts. Threads may set and read those of different files at the same time.
  void set_facts(std::size_t index, const FileFacts& facts);

  std::size_t file_count() const { return files_.size(); }
  File file(std::size_t index) const;
  std::size_t folder_count() const { return folders_.size(); }
  std::string_view folder(std::size_t index) const;

 private:
  struct Name {
    std::size_t start;
    std::size_t length;
  };
  struct FileRow {
    Name name;
    bool facts_known;
    bool online_only;
    FileFacts facts;
  };
  std::string_view text(const Name& name) const;

  bool wants_hidden_ = false;
  bool begun_ = false;
  std::string names_;
  std::vector<FileRow> files_;
  std::vector<Name> folders_;
};

/// Returns the subfolders of a listing in the order of their names, ignoring case.
std::vector<std::string> sorted_subfolders(const FolderListing& listing);

/// A file that is open for reading by bytes, with its own position. Each part of the program that
/// reads has a reader of its own, which closes only its own file. A reader serves one file after
/// another: what it remembers of their folder makes the next one cheaper. One thread uses it at a
/// time.
class FileReader {
 public:
  virtual ~FileReader() = default;

  /// Opens a file in place of the one open so far; others may read, write, rename and delete it
  /// meanwhile. What is no file on a disk (a device, a pipe) fails instead of blocking.
  virtual std::optional<SystemError> open(const std::string& folder, std::string_view name) = 0;

  /// Opens a file of a listing, so that the system need not be asked what it is.
  virtual std::optional<SystemError> open_listed(const std::string& folder, std::string_view name) {
    return open(folder, name);
  }

  /// True when the content of the open file, or part of it, is stored only elsewhere, so that
  /// reading would fetch it.
  virtual bool online_only() const { return false; }

  /// Reads on in the open file. Fewer bytes than wanted mean that the file ended.
  virtual std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                          std::size_t& got) = 0;

  /// Makes the next read begin at this byte of the open file, counted from 0. A position after the
  /// file's end is no failure: reading there yields nothing.
  virtual std::optional<SystemError> seek(std::int64_t position) = 0;

  /// Closes the open file, if any. The destructor closes it too.
  virtual void close() = 0;
};

/// The calls in which one thread waits for the system. Other threads may cancel them.
class PendingCalls {
 public:
  virtual ~PendingCalls() = default;

  /// Ends the call in which the thread waits now, as far as the system can; that call then fails.
  /// Any thread may call this, also after that thread has ended.
  virtual void cancel() = 0;
};

/// The system's files as the engine needs them. Has no state: any thread may ask at any time.
/// Folders are given with their final separator. Implemented in posix/ and win32/; tests have one
/// in memory.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Adds the folder's ordinary files, in the system's order, and its subfolders that are not
  /// reached through a link; hidden and system ones only where the listing wants them. Asks `go_on`
  /// now and then and ends early, without an error, when that says no. After an error the listing
  /// holds what came before it; it has begun when the folder could be listed at all.
  virtual std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                                 const std::function<bool()>& go_on) const = 0;

  /// Asks for the facts of a file or, for a link, those of the file that it leads to.
  virtual std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                           FileFacts& facts) const = 0;

  /// Makes a reader, which has no file yet.
  virtual std::unique_ptr<FileReader> reader() const = 0;

  /// True when the system says that the disk of this folder has to move its head from one file to
  /// the next, so that several threads would only make it slower.
  virtual bool has_to_seek(const std::string&) const { return false; }

  /// Returns the calling thread's pending calls; null where the system cannot cancel them. Called
  /// once by a thread that opens and closes its own files and shares none of them with others.
  virtual std::unique_ptr<PendingCalls> enter_thread() const { return nullptr; }
};

}  // namespace tallowmere
