#include "win32/win_file_system.h"

#include <windows.h>

#include <winioctl.h>

#include <array>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "engine/unicode.h"
#include "win32/file_redirection.h"
#include "win32/handle.h"
#include "win32/long_path.h"
#include "win32/system_error.h"

namespace tallowmere::win32 {

namespace {

constexpr unsigned entries_between_questions = 256;

struct FindCloser {
  void operator()(HANDLE search) const { FindClose(search); }
};
using FindHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, FindCloser>;

std::int64_t join_halves(DWORD high, DWORD low) {
  return static_cast<std::int64_t>(std::uint64_t{high} << 32 | low);
}

FileFacts facts_of(const FILETIME& modified, DWORD size_high, DWORD size_low) {
  return {join_halves(modified.dwHighDateTime, modified.dwLowDateTime),
          join_halves(size_high, size_low)};
}

/// True for entries that lead elsewhere: symbolic links, junctions, mount points. Wine gives its
/// links no tag. Other reparse points, such as the folders of a cloud drive, are ordinary entries.
bool is_link(const WIN32_FIND_DATAW& entry) {
  if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return false;
  constexpr DWORD name_surrogate = 0x20000000;
  return entry.dwReserved0 == 0 || (entry.dwReserved0 & name_surrogate) != 0;
}

void add_entry(const WIN32_FIND_DATAW& entry, FolderListing& listing) {
  constexpr DWORD hidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  if ((entry.dwFileAttributes & hidden) != 0 && !listing.wants_hidden()) return;
  const std::u16string_view name(reinterpret_cast<const char16_t*>(entry.cFileName));
  if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
    if (name != u"." && name != u".." && !is_link(entry)) listing.add_folder(to_utf8(name));
    return;
  }
  const FileFacts facts = facts_of(entry.ftLastWriteTime, entry.nFileSizeHigh, entry.nFileSizeLow);
  // What the listing says about a link does not hold for the file that it leads to.
  const bool link = is_link(entry);
  listing.add_file(to_utf8(name), link ? nullptr : &facts,
                   !link && is_online_only(entry.dwFileAttributes));
}

std::u16string path_of(const std::string& folder, std::string_view name) {
  return long_path(folder) + to_utf16(name);
}

/// Opens what the path leads to, through links; others may read, write and delete it meanwhile.
Handle open_file(const std::u16string& path, DWORD access, DWORD flags) {
  const FileRedirectionOff direct;
  constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return file_handle(
      CreateFileW(wide(path), access, share, nullptr, OPEN_EXISTING, flags, nullptr));
}

class WinFileReader : public FileReader {
 public:
  std::optional<SystemError> open(const std::string& folder, std::string_view name) override {
    close();
    file_ = open_file(path_in(folder, name), GENERIC_READ, FILE_FLAG_SEQUENTIAL_SCAN);
    if (!file_) return last_system_error();
    if (GetFileType(file_.get()) == FILE_TYPE_DISK) return std::nullopt;
    close();
    return SystemError{ERROR_BAD_DEVICE, "Not a file on a disk"};
  }

  bool online_only() const override {
    FILE_BASIC_INFO info;
    return GetFileInformationByHandleEx(file_.get(), FileBasicInfo, &info, sizeof info) &&
           is_online_only(info.FileAttributes);
  }

  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    // A short read may end at a server's packet: only the next read shows the file's end.
    for (got = 0; got < wanted;) {
      DWORD count = 0;
      const BOOL good =
          ReadFile(file_.get(), into + got, static_cast<DWORD>(wanted - got), &count, nullptr);
      if (!good && GetLastError() != ERROR_HANDLE_EOF) return last_system_error();
      if (!good || count == 0) break;
      got += count;
    }
    return std::nullopt;
  }

  std::optional<SystemError> seek(std::int64_t position) override {
    LARGE_INTEGER place;
    place.QuadPart = position;
    if (!SetFilePointerEx(file_.get(), place, nullptr, FILE_BEGIN)) return last_system_error();
    return std::nullopt;
  }

  void close() override { file_.reset(); }

 private:
  /// Returns the path of a file for the system. The folder's part is computed once per folder.
  const std::u16string& path_in(const std::string& folder, std::string_view name) {
    if (folder_length_ == 0 || folder != folder_) {
      folder_ = folder;
      path_ = long_path(folder);
      folder_length_ = path_.size();
    }
    path_.resize(folder_length_);
    path_ += to_utf16(name);
    return path_;
  }

  std::string folder_;
  std::u16string path_;
  std::size_t folder_length_ = 0;  ///< how much of path_ is the folder
  Handle file_;
};

/// Asks for the facts of a link itself.
bool own_facts(const std::u16string& path, WIN32_FILE_ATTRIBUTE_DATA& data) {
  const FileRedirectionOff direct;
  return GetFileAttributesExW(wide(path), GetFileExInfoStandard, &data) != FALSE;
}

std::optional<SystemError> facts_of_target(const std::u16string& link, FileFacts& facts) {
  // A link may lead to a folder, which opens only with this flag.
  const Handle target = open_file(link, FILE_READ_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS);
  if (!target) return last_system_error();
  BY_HANDLE_FILE_INFORMATION data;
  if (!GetFileInformationByHandle(target.get(), &data)) return last_system_error();
  facts = facts_of(data.ftLastWriteTime, data.nFileSizeHigh, data.nFileSizeLow);
  return std::nullopt;
}

/// Begins a listing. Only this call uses the path; the next ones use the folder's handle.
HANDLE find_first(const std::u16string& pattern, WIN32_FIND_DATAW& entry) {
  const FileRedirectionOff direct;
  return FindFirstFileExW(wide(pattern), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr,
                          FIND_FIRST_EX_LARGE_FETCH);
}

/// Opens the volume of a folder; null for a share, or when the system does not name it.
Handle open_volume(const std::u16string& folder) {
  std::array<wchar_t, MAX_PATH> mount_point;
  std::array<wchar_t, MAX_PATH> volume;
  if (!GetVolumePathNameW(wide(folder), mount_point.data(), MAX_PATH) ||
      !GetVolumeNameForVolumeMountPointW(mount_point.data(), volume.data(), MAX_PATH)) {
    return nullptr;
  }
  std::wstring name(volume.data());
  name.pop_back();  // with its final backslash it would be the root folder
  constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
  return file_handle(CreateFileW(name.c_str(), 0, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

class WinPendingCalls : public PendingCalls {
 public:
  explicit WinPendingCalls(Handle thread) : thread_(std::move(thread)) {}
  void cancel() override { CancelSynchronousIo(thread_.get()); }

 private:
  const Handle thread_;
};

}  // namespace

// The headers of mingw-w64 may lack the first two.
bool is_online_only(std::uint32_t attributes) {
  constexpr std::uint32_t recall_on_data_access = 0x00400000;
  constexpr std::uint32_t recall_on_open = 0x00040000;
  return (attributes & (recall_on_data_access | recall_on_open | FILE_ATTRIBUTE_OFFLINE)) != 0;
}

std::optional<SystemError> WinFileSystem::list_folder(const std::string& folder,
                                                      FolderListing& listing,
                                                      const std::function<bool()>& go_on) const {
  WIN32_FIND_DATAW entry;
  const HANDLE first = find_first(path_of(folder, "*"), entry);
  if (first == INVALID_HANDLE_VALUE) {
    const DWORD code = GetLastError();
    // The root of an empty drive does not even have the entry ".".
    if (code == ERROR_FILE_NOT_FOUND) return std::nullopt;
    return system_error(code);
  }
  const FindHandle search(first);
  listing.set_begun();
  unsigned count = 0;
  do {
    add_entry(entry, listing);
    if (++count % entries_between_questions == 0 && !go_on()) return std::nullopt;
  } while (FindNextFileW(first, &entry));
  const DWORD code = GetLastError();
  if (code != ERROR_NO_MORE_FILES) return system_error(code);
  return std::nullopt;
}

std::optional<SystemError> WinFileSystem::facts(const std::string& folder, std::string_view name,
                                                FileFacts& facts) const {
  const std::u16string path = path_of(folder, name);
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!own_facts(path, data)) return last_system_error();
  if (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) return facts_of_target(path, facts);
  facts = facts_of(data.ftLastWriteTime, data.nFileSizeHigh, data.nFileSizeLow);
  return std::nullopt;
}

std::unique_ptr<FileReader> WinFileSystem::reader() const {
  return std::make_unique<WinFileReader>();
}

// This follows the documentation of IOCTL_STORAGE_QUERY_PROPERTY.
bool WinFileSystem::has_to_seek(const std::string& folder) const {
  const Handle volume = open_volume(long_path(folder));
  if (!volume) return false;
  STORAGE_PROPERTY_QUERY query{};
  query.PropertyId = StorageDeviceSeekPenaltyProperty;
  query.QueryType = PropertyStandardQuery;
  DEVICE_SEEK_PENALTY_DESCRIPTOR answer{};
  DWORD size = 0;
  return DeviceIoControl(volume.get(), IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, &answer,
                         sizeof answer, &size, nullptr) &&
         size >= sizeof answer && answer.IncursSeekPenalty;
}

std::unique_ptr<PendingCalls> WinFileSystem::enter_thread() const {
  Handle thread(OpenThread(THREAD_TERMINATE, FALSE, GetCurrentThreadId()));
  if (!thread) return nullptr;
  return std::make_unique<WinPendingCalls>(std::move(thread));
}

}  // namespace tallowmere::win32
