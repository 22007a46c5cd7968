#include "posix/posix_file_system.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
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
    // A relative piece must not begin with a slash, and the first may be the root itself.
    const std::string piece = path.substr(start, cut + 1 - start);
    const int next = openat(base, piece.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int code = errno;
    if (base != AT_FDCWD) ::close(base);
    if (next < 0) {
      errno = code;
      return -1;
    }
    base = next;
    start = cut + 1;
  }
  const std::string rest = start < path.size() ? path.substr(start) : ".";
  const int opened = openat(base, rest.c_str(), flags | O_CLOEXEC);
  const int code = errno;
  if (base != AT_FDCWD) ::close(base);
  errno = code;
  return opened;
}

FileFacts facts_of(const struct stat& status) {
  // From 1601 to 1970.
  constexpr std::int64_t seconds_before_epoch = 11'644'473'600;
  FileFacts facts;
  facts.modified = (status.st_mtim.tv_sec + seconds_before_epoch) * ticks_per_second +
                   status.st_mtim.tv_nsec / 100;
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
  while (true) {
    const ssize_t count = ::read(file_, into, wanted);
    got = count > 0 ? static_cast<std::size_t>(count) : 0;
    if (count >= 0) return std::nullopt;
    if (errno != EINTR) return error_of(errno);
  }
}

void PosixFileSystem::close() {
  if (file_ >= 0) ::close(file_);
  file_ = -1;
}

std::optional<SystemError> PosixFileSystem::facts(const std::string& folder, std::string_view name,
                                                  FileFacts& facts) {
  const int base = base_of(folder, name);
  struct stat status;
  if (base >= 0) {
    if (fstatat(base, name_.c_str(), &status, 0) != 0) return error_of(errno);
  } else if (stat(name_.c_str(), &status) != 0) {
    return error_of(errno);
  }
  facts = facts_of(status);
  return std::nullopt;
}

}  // namespace tallowmere
