#include "posix/posix_file_system.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

namespace tallowmere {

namespace {

constexpr std::size_t entries_between_questions = 1024;

SystemError error_of(int code) {
  return {code, std::strerror(code)};
}

/// Opens a path of any length: the system takes fewer than PATH_MAX bytes at a time, so a longer
/// path is gone down piece by piece. Returns -1 and sets errno on failure.
int open_path(const std::string& path, int flags) {
  int base = AT_FDCWD;
  std::size_t start = 0;
  while (path.size() - start >= PATH_MAX) {
    const std::size_t cut = path.rfind('/', start + PATH_MAX - 2);
    if (cut == std::string::npos || cut < start) {
      if (base != AT_FDCWD) ::close(base);
      errno = ENAMETOOLONG;
      return -1;
    }
    const std::string piece = path.substr(start, cut + 1 - start);
    const int next = openat(base, piece.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int code = errno;
    if (base != AT_FDCWD) ::close(base);
    if (next < 0) {
      errno = code;
      return -1;
    }
    base = next;
    // What is left must not begin with a slash, which would lead back to the root.
    start = std::min(path.find_first_not_of('/', cut), path.size());
  }
  const std::string rest = start < path.size() ? path.substr(start) : ".";
  const int opened = openat(base, rest.c_str(), flags | O_CLOEXEC);
  const int code = errno;
  if (base != AT_FDCWD) ::close(base);
  errno = code;
  return opened;
}

FileFacts facts_of(const struct stat& status) {
  constexpr std::int64_t seconds_before_epoch = 11'644'473'600;  // from 1601 to 1970
  // Some file systems keep whatever number they were given.
  constexpr std::int64_t latest = std::numeric_limits<Ticks>::max() / ticks_per_second - 1;
  const std::int64_t seconds = std::clamp<std::int64_t>(
      status.st_mtim.tv_sec, -seconds_before_epoch, latest - seconds_before_epoch);
  FileFacts facts;
  facts.modified =
      (seconds + seconds_before_epoch) * ticks_per_second + status.st_mtim.tv_nsec / 100;
  facts.size = status.st_size;
  return facts;
}

}  // namespace

PosixFileSystem::PosixFileSystem() = default;

PosixFileSystem::~PosixFileSystem() {
  close();
}

std::optional<SystemError> PosixFileSystem::list_folder(const std::string& folder,
                                                        FolderListing& listing,
                                                        const std::function<bool()>& go_on) {
  listed_.reset();
  const int handle = open_path(folder, O_RDONLY | O_DIRECTORY);
  if (handle < 0) return error_of(errno);
  listed_.reset(fdopendir(handle));
  if (!listed_) {
    const int code = errno;
    ::close(handle);
    return error_of(code);
  }
  listed_path_ = folder;
  for (std::size_t count = 1;; ++count) {
    errno = 0;
    const dirent* entry = readdir(listed_.get());
    if (!entry) break;
    add_entry(*entry, listing);
    if (count % entries_between_questions == 0 && !go_on()) return std::nullopt;
  }
  if (errno != 0) return error_of(errno);
  return std::nullopt;
}

void PosixFileSystem::add_entry(const dirent& entry, FolderListing& listing) {
  if (entry.d_name[0] == '.') return;
  unsigned char type = entry.d_type;
  if (type == DT_UNKNOWN) {
    struct stat status;
    if (fstatat(dirfd(listed_.get()), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return;
    type = S_ISDIR(status.st_mode) ? DT_DIR : S_ISREG(status.st_mode) ? DT_REG : DT_LNK;
  }
  if (type == DT_REG) listing.add_file(entry.d_name, nullptr);
  if (type == DT_DIR) listing.add_folder(entry.d_name);
}

int PosixFileSystem::base_of(const std::string& folder, std::string_view name) {
  if (listed_ && folder == listed_path_) {
    name_.assign(name);
    return dirfd(listed_.get());
  }
  name_ = folder;
  name_ += name;
  return -1;
}

std::optional<SystemError> PosixFileSystem::open(const std::string& folder, std::string_view name) {
  close();
  const int base = base_of(folder, name);
  // Without O_NONBLOCK, opening a pipe would wait for its other end.
  constexpr int flags = O_RDONLY | O_NOCTTY | O_NONBLOCK;
  file_ = base >= 0 ? openat(base, name_.c_str(), flags | O_CLOEXEC) : open_path(name_, flags);
  if (file_ < 0) return error_of(errno);
  // Files from a listing are known to be files.
  if (base >= 0) return std::nullopt;
  struct stat status;
  int code = fstat(file_, &status) != 0 ? errno : 0;
  if (code == 0 && S_ISDIR(status.st_mode)) code = EISDIR;
  if (code == 0 && !S_ISREG(status.st_mode)) {
    close();
    return SystemError{EINVAL, "Not a file on a disk"};
  }
  if (code == 0) return std::nullopt;
  close();
  return error_of(code);
}

std::optional<SystemError> PosixFileSystem::read(unsigned char* into, std::size_t wanted,
                                                 std::size_t& got) {
  // A short read may end at a bad block or a server's packet: only the next one tells.
  for (got = 0; got < wanted;) {
    const ssize_t count = ::read(file_, into + got, wanted - got);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return error_of(errno);
    if (count == 0) break;
    got += static_cast<std::size_t>(count);
  }
  return std::nullopt;
}

std::optional<SystemError> PosixFileSystem::seek(std::int64_t position) {
  if (lseek(file_, position, SEEK_SET) < 0) return error_of(errno);
  return std::nullopt;
}

void PosixFileSystem::close() {
  if (file_ >= 0) ::close(file_);
  file_ = -1;
}

std::optional<SystemError> PosixFileSystem::facts(const std::string& folder, std::string_view name,
                                                  FileFacts& facts) {
  const int base = base_of(folder, name);
  struct stat status;
  int code = 0;
  if (base >= 0 || name_.size() < PATH_MAX) {
    if (fstatat(base >= 0 ? base : AT_FDCWD, name_.c_str(), &status, 0) != 0) code = errno;
  } else {
    const int handle = open_path(name_, O_PATH);
    if (handle < 0 || fstat(handle, &status) != 0) code = errno;
    if (handle >= 0) ::close(handle);
  }
  if (code != 0) return error_of(code);
  facts = facts_of(status);
  return std::nullopt;
}

}  // namespace tallowmere
