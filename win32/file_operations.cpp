#include "win32/file_operations.h"

#include <exception>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/unicode.h"
#include "win32/file_redirection.h"
#include "win32/handle.h"
#include "win32/long_path.h"
#include "win32/system_error.h"
#include "win32/win_file_system.h"

namespace tallowmere::win32 {
namespace {

using Result = WinFileOperations::Result;
using Progress = FileOperations::Progress;

constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opens a file; null on failure, and GetLastError says why. `flags` decide whether a link itself
/// is opened or what it leads to.
Handle open_file(const std::u16string& path, DWORD access, DWORD flags = 0) {
  return file_handle(
      CreateFileW(wide(path), access, share_all, nullptr, OPEN_EXISTING, flags, nullptr));
}

Result result_of(BOOL success) {
  if (success) return std::nullopt;
  return last_system_error();
}

/// Fails when another program keeps the file from being renamed, replaced or deleted.
Result check_free(const std::u16string& path) {
  return result_of(open_file(path, DELETE, FILE_FLAG_OPEN_REPARSE_POINT) != nullptr);
}

Result check_source(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  if (attributes == INVALID_FILE_ATTRIBUTES) return last_system_error();
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return std::nullopt;
  return SystemError{ERROR_DIRECTORY, "It is now a folder, not a file"};
}

Result information(const std::u16string& path, BY_HANDLE_FILE_INFORMATION& facts) {
  const Handle file = open_file(path, FILE_READ_ATTRIBUTES);
  return result_of(file && GetFileInformationByHandle(file.get(), &facts));
}

/// True when two paths lead to one file, as through a link or a drive that is a folder's other
/// name. Some networks give all their files the index 0.
bool is_same_file(const std::u16string& a, const std::u16string& b) {
  BY_HANDLE_FILE_INFORMATION one, other;
  return !information(a, one) && !information(b, other) &&
         one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
         one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow &&
         (one.nFileIndexHigh | one.nFileIndexLow) != 0;
}

static_assert(FileOperations::in_the_way == ERROR_FILE_EXISTS);

/// Where a file is copied or moved to.
struct Target {
  Target(const std::string& path_given, const Replace& replace_given)
      : path(path_given), file(long_path(path)), replace(replace_given) {}

  const std::string& path;
  const std::u16string file;
  const Replace& replace;
};

Result facts_of(const std::string& path, FileFacts& facts) {
  if (auto error = check_source(long_path(path))) return error;
  const std::size_t name = path.rfind(path_separator) + 1;
  return WinFileSystem().facts(path.substr(0, name), path.substr(name), facts);
}

/// Fails when the file to be replaced is not the one that the user has seen; it may be gone.
Result check_seen(const Target& target) {
  FileFacts now;
  if (!target.replace.seen || facts_of(target.path, now) || now == *target.replace.seen) {
    return std::nullopt;
  }
  return SystemError{ERROR_FILE_EXISTS, "The file to be replaced was changed in the meantime"};
}

/// Checks before any work whether `source` may be placed at `target`.
Result check_target(const std::u16string& source, const Target& target) {
  const DWORD attributes = GetFileAttributesW(wide(target.file));
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    if (GetLastError() == ERROR_FILE_NOT_FOUND) return std::nullopt;
    return last_system_error();
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return SystemError{ERROR_ALREADY_EXISTS, "A folder with this name already exists"};
  }
  if (!target.replace.allowed) return system_error(ERROR_FILE_EXISTS);
  if (is_same_file(source, target.file)) {
    return SystemError{ERROR_ALREADY_EXISTS, "The source and the target are the same file"};
  }
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    return SystemError{ERROR_ACCESS_DENIED, "The file to be replaced is read-only"};
  }
  if (auto error = check_seen(target)) return error;
  return check_free(target.file);
}

/// Runs `operation`, again for a while when it fails because a virus scanner or an indexer looks at
/// a file just written.
template <typename Operation>
Result patiently(Operation operation) {
  constexpr int tries = 10;
  constexpr DWORD pause_ms = 50;
  for (int i = 1;; ++i) {
    if (operation()) return std::nullopt;
    const DWORD code = GetLastError();
    const bool busy = code == ERROR_SHARING_VIOLATION || code == ERROR_ACCESS_DENIED;
    if (!busy || i == tries) return system_error(code);
    Sleep(pause_ms);
  }
}

template <typename Information>
bool set(const Handle& file, FILE_INFO_BY_HANDLE_CLASS kind, Information information) {
  return SetFileInformationByHandle(file.get(), kind, &information, sizeof information) != FALSE;
}

/// A file that is to be deleted, read-only or not: the file itself, not what its path leads to
/// later.
class DoomedFile {
 public:
  explicit DoomedFile(const std::u16string& path)
      : file_(open_file(path, DELETE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES,
                        FILE_FLAG_OPEN_REPARSE_POINT)) {
    if (!file_) error_ = last_system_error();
  }

  const Result& error() const { return error_; }

  Result remove() const {
    FILE_BASIC_INFO before{};
    if (!GetFileInformationByHandleEx(file_.get(), FileBasicInfo, &before, sizeof before)) {
      return last_system_error();
    }
    FILE_BASIC_INFO writable{};
    writable.FileAttributes = FILE_ATTRIBUTE_NORMAL;  // times of 0 stay as they are
    const bool read_only = (before.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (read_only) set(file_, FileBasicInfo, writable);
    if (set(file_, FileDispositionInfo, FILE_DISPOSITION_INFO{TRUE})) return std::nullopt;
    Result error = last_system_error();
    if (read_only) set(file_, FileBasicInfo, before);
    return error;
  }

 private:
  Handle file_;
  Result error_;
};

Result delete_file(const std::u16string& path) {
  const DoomedFile file(path);
  return file.error() ? file.error() : file.remove();
}

/// Moves a file within its volume.
bool move_file(const std::u16string& file, const Target& target, DWORD flags) {
  if (target.replace.allowed) flags |= MOVEFILE_REPLACE_EXISTING;
  if (MoveFileExW(wide(file), wide(target.file), flags)) return true;
  if (GetLastError() == ERROR_ALREADY_EXISTS) SetLastError(ERROR_FILE_EXISTS);
  return false;
}

/// Passes the system's reports on to `progress`. An exception must not pass through the system: it
/// waits until the copying has been given up.
struct Reporter {
  const Progress& progress;
  std::exception_ptr thrown = nullptr;

  static DWORD CALLBACK report(LARGE_INTEGER total, LARGE_INTEGER done, LARGE_INTEGER,
                               LARGE_INTEGER, DWORD, DWORD, HANDLE, HANDLE, void* data) {
    auto& reporter = *static_cast<Reporter*>(data);
    try {
      if (reporter.progress(done.QuadPart, total.QuadPart)) return PROGRESS_CONTINUE;
    } catch (...) {
      reporter.thrown = std::current_exception();
    }
    return PROGRESS_CANCEL;
  }
};

struct SizeAndTime {
  ULONGLONG size = 0;
  ULONGLONG written = 0;
  bool operator==(const SizeAndTime&) const = default;
};

Result size_and_time(const std::u16string& path, SizeAndTime& facts) {
  BY_HANDLE_FILE_INFORMATION data;
  if (auto error = information(path, data)) return error;
  facts.size = ULONGLONG{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
  facts.written =
      ULONGLONG{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime;
  return std::nullopt;
}

/// A copy that is being made beside its target, under its own name. Destroying this object deletes
/// the copy unless it was put in place.
class Draft {
 public:
  explicit Draft(const Target& target)
      : folder_(target.file.substr(0, target.file.rfind(u'\\') + 1)) {}
  ~Draft() {
    if (made_) delete_file(path_);
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  const std::u16string& path() const { return path_; }

  Result fill(const std::u16string& source, const Progress& progress) {
    Reporter reporter{progress};
    for (DWORD number = GetTickCount();; ++number) {
      path_ = folder_ + to_utf16("~tw" + std::to_string(number) + ".tmp");
      // A file with this name that belongs to something else is not touched.
      if (GetFileAttributesW(wide(path_)) != INVALID_FILE_ATTRIBUTES) continue;
      made_ = CopyFileExW(wide(source), wide(path_), &Reporter::report, &reporter, nullptr,
                          COPY_FILE_FAIL_IF_EXISTS);
      const DWORD code = GetLastError();
      if (!made_ && (code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS)) continue;
      if (!made_) delete_file(path_);  // when the system has left half a file
      if (reporter.thrown) std::rethrow_exception(reporter.thrown);
      return made_ ? last_chance(progress) : system_error(code);
    }
  }

  /// Puts the copy in the target's place. Checks the target again: filling may have taken long.
  Result place(const Target& target) {
    if (auto error = check_seen(target)) return error;
    Result error = patiently([&] { return move_file(path_, target, MOVEFILE_WRITE_THROUGH); });
    if (!error) made_ = false;
    return error;
  }

 private:
  /// Reports once more, as not every system reports while it copies, and none for a short file.
  Result last_chance(const Progress& progress) {
    SizeAndTime copied;
    if (auto error = size_and_time(path_, copied)) return error;
    const auto size = static_cast<std::int64_t>(copied.size);
    if (progress(size, size)) return std::nullopt;
    return system_error(ERROR_REQUEST_ABORTED);
  }

  std::u16string folder_;
  std::u16string path_;
  bool made_ = false;
};

/// Makes sure, before the source is deleted, that the copy is complete and on the disk.
Result check_copy(const std::u16string& source, const SizeAndTime& before,
                  const std::u16string& copy) {
  SizeAndTime now, copied;
  if (auto error = size_and_time(source, now)) return error;
  if (auto error = size_and_time(copy, copied)) return error;
  if (now != before || copied.size != now.size) {
    return SystemError{ERROR_INVALID_DATA, "The file was changed while it was being moved"};
  }
  // A read-only file was copied as such and cannot be opened for writing; the system writes it to
  // the disk in its own time.
  if (const Handle file = open_file(copy, GENERIC_WRITE)) FlushFileBuffers(file.get());
  return std::nullopt;
}

Result move_across(const std::u16string& source, const Target& target, const Progress& progress) {
  SizeAndTime before;
  if (auto error = check_free(source)) return error;
  if (auto error = size_and_time(source, before)) return error;
  Draft draft(target);
  if (auto error = draft.fill(source, progress)) return error;
  if (auto error = check_copy(source, before, draft.path())) return error;
  // From here on the path of the source no longer counts: if it leads to the target after all, the
  // file that was replaced is deleted.
  const DoomedFile original(source);
  if (original.error()) return original.error();
  if (auto error = draft.place(target)) return error;
  Result error = original.remove();
  if (!error) return std::nullopt;
  if (!target.replace.allowed) {
    delete_file(target.file);
    return error;
  }
  error->text = "The file was copied, but the original could not be deleted: " + error->text;
  return error;
}

bool is_folder(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Returns the length of \\?\C:\ or \\?\UNC\server\share\ at the start of a long path.
std::size_t root_length(const std::u16string& path) {
  constexpr std::u16string_view network = u"\\\\?\\UNC\\";
  if (!path.starts_with(network)) return path.find(u':') + 2;
  const std::size_t share = path.find(u'\\', path.find(u'\\', network.size()) + 1);
  return share == path.npos ? share : share + 1;
}

/// Makes one folder unless it exists, and adds it to `made`.
Result make_folder(const std::u16string& path, std::vector<std::u16string>& made) {
  if (is_folder(path)) return std::nullopt;
  if (CreateDirectoryW(wide(path), nullptr)) {
    made.push_back(path);
    return std::nullopt;
  }
  const DWORD code = GetLastError();
  if (code != ERROR_ALREADY_EXISTS) return system_error(code);
  const DWORD attributes = GetFileAttributesW(wide(path));
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return std::nullopt;
  }
  return SystemError{ERROR_DIRECTORY, "A file with this name already exists"};
}

}  // namespace

Result WinFileOperations::facts(const std::string& path, FileFacts& facts) {
  return facts_of(path, facts);
}

Result WinFileOperations::copy(const std::string& source, const std::string& target,
                               const Replace& replace, const Progress& progress) {
  const FileRedirectionOff direct;
  const std::u16string from = long_path(source);
  const Target to(target, replace);
  if (auto error = check_source(from)) return error;
  if (auto error = check_target(from, to)) return error;
  Draft draft(to);
  if (auto error = draft.fill(from, progress)) return error;
  return draft.place(to);
}

Result WinFileOperations::move(const std::string& source, const std::string& target,
                               const Replace& replace, const Progress& progress) {
  const FileRedirectionOff direct;
  const std::u16string from = long_path(source);
  const Target to(target, replace);
  if (auto error = check_source(from)) return error;
  if (auto error = check_target(from, to)) return error;
  if (move_file(from, to, 0)) return std::nullopt;
  if (GetLastError() != ERROR_NOT_SAME_DEVICE) return last_system_error();
  return move_across(from, to, progress);
}

Result WinFileOperations::rename(const std::string& source, const std::string& target) {
  const FileRedirectionOff direct;
  const std::u16string from = long_path(source);
  if (auto error = check_source(from)) return error;
  return result_of(MoveFileExW(wide(from), wide(long_path(target)), 0));
}

Result WinFileOperations::remove(const std::string& path, bool recycle) {
  std::optional<FileRedirectionOff> direct;
  if (!recycle) direct.emplace();  // the bin loads the shell and takes no redirected path
  const std::u16string file = long_path(path);
  if (auto error = check_source(file)) return error;
  if (auto error = check_free(file)) return error;
  if (!recycle) {
    if ((GetFileAttributesW(wide(file)) & FILE_ATTRIBUTE_READONLY) != 0) {
      return SystemError{ERROR_ACCESS_DENIED, "The file is read-only"};
    }
    return result_of(DeleteFileW(wide(file)));
  }
  if (auto error = bin_.put(path)) return error;
  if (GetFileAttributesW(wide(file)) == INVALID_FILE_ATTRIBUTES) return std::nullopt;
  return SystemError{ERROR_ACCESS_DENIED, "Windows could not move the file to the Recycle Bin"};
}

/// Makes a folder and those above it. One of these may be closed to the user, as the one above each
/// user's own on a server is: nothing is known about it then, but what is below can be used.
Result WinFileOperations::create_folder(const std::string& folder) {
  const FileRedirectionOff direct;
  const std::u16string path = long_path(with_separator(folder));
  if (is_folder(path)) return std::nullopt;
  std::vector<std::u16string> made;
  Result error;  // the first since a folder was found or made
  for (std::size_t end = root_length(path); (end = path.find(u'\\', end)) != std::u16string::npos;
       ++end) {
    const Result failure = make_folder(path.substr(0, end), made);
    if (!failure || !error) error = failure;
  }
  if (!error) return std::nullopt;
  for (auto empty = made.rbegin(); empty != made.rend(); ++empty) RemoveDirectoryW(wide(*empty));
  return error;
}

}  // namespace tallowmere::win32
