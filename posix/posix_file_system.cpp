#include "posix/posix_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <linux/magic.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <limits>

namespace tallowmere {

namespace {

SystemError error_of(int code) {
  return {code, std::strerror(code)};
}

/// Opens a path of any length: the system takes fewer than PATH_MAX bytes at a time, so a longer
/// path is opened piece by piece. Returns -1 and sets errno on failure.
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

/// A handle of the system; closed with this object.
class Handle {
 public:
  explicit Handle(int handle = -1) : handle_(handle) {}
  ~Handle() { reset(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  int get() const { return handle_; }
  explicit operator bool() const { return handle_ >= 0; }
  void reset(int handle = -1) {
    if (handle_ >= 0) ::close(handle_);
    handle_ = handle;
  }

 private:
  int handle_;
};

constexpr std::int64_t page_size = 4096;

/// True when reads of a file in this folder come only from the system's page cache, which breaks
/// off at page boundaries: a read that ends elsewhere has reached the end of the file.
bool reads_whole_pages(int folder) {
  struct statfs system;
  if (fstatfs(folder, &system) != 0) return false;
  constexpr std::array<std::uint32_t, 4> known = {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC,
                                                  BTRFS_SUPER_MAGIC, TMPFS_MAGIC};
  return std::find(known.begin(), known.end(), static_cast<std::uint32_t>(system.f_type)) !=
         known.end();
}

/// Keeps the folder of its last file open: the next file there is found without walking the whole
/// path again.
class PosixFileReader : public FileReader {
 public:
  std::optional<SystemError> open(const std::string& folder, std::string_view name) override {
    if (auto error = open_listed(folder, name)) return error;
    page_reads_ = false;  // a link may lead to another file system
    struct stat status;
    int code = fstat(file_.get(), &status) != 0 ? errno : 0;
    if (code == 0 && S_ISREG(status.st_mode)) return std::nullopt;
    close();
    if (code == 0 && S_ISDIR(status.st_mode)) code = EISDIR;
    return code != 0 ? error_of(code) : SystemError{EINVAL, "Not a file on a disk"};
  }

  std::optional<SystemError> open_listed(const std::string& folder,
                                         std::string_view name) override {
    close();
    if (auto error = enter(folder)) return error;
    name_.assign(name);
    // Without O_NONBLOCK, opening a pipe would wait for its other end.
    constexpr int flags = O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC;
    // The time of the last access stays as it is; only the owner may ask for that.
    if (own_times_) file_.reset(openat(base_.get(), name_.c_str(), flags | O_NOATIME));
    own_times_ = own_times_ && (file_ || errno != EPERM);
    if (!own_times_) file_.reset(openat(base_.get(), name_.c_str(), flags));
    if (!file_) return error_of(errno);
    position_ = 0;
    page_reads_ = whole_pages_;
    return std::nullopt;
  }

  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    // A short read may end at a bad block or a server's packet: mostly only the next one shows.
    for (got = 0; got < wanted;) {
      const ssize_t count = ::read(file_.get(), into + got, wanted - got);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return error_of(errno);
      got += static_cast<std::size_t>(count);
      position_ += count;
      if (count == 0 || (page_reads_ && position_ % page_size != 0)) break;
    }
    return std::nullopt;
  }

  std::optional<SystemError> seek(std::int64_t position) override {
    if (lseek(file_.get(), position, SEEK_SET) < 0) return error_of(errno);
    position_ = position;
    return std::nullopt;
  }

  void close() override { file_.reset(); }

 private:
  std::optional<SystemError> enter(const std::string& folder) {
    if (base_ && folder == folder_) return std::nullopt;
    base_.reset(open_path(folder, O_PATH | O_DIRECTORY));
    if (!base_) return error_of(errno);
    folder_ = folder;
    own_times_ = true;
    struct stat status;
    if (fstat(base_.get(), &status) != 0 || device_ == status.st_dev) return std::nullopt;
    device_ = status.st_dev;
    whole_pages_ = reads_whole_pages(base_.get());  // takes longer than opening a file
    return std::nullopt;
  }

  std::string folder_;
  Handle base_;       ///< of folder_
  std::string name_;  ///< for the system, ended by a zero
  Handle file_;
  std::int64_t position_ = 0;  ///< in file_
  bool page_reads_ = false;    ///< of file_, as reads_whole_pages says
  dev_t device_ = 0;           ///< of folder_
  bool whole_pages_ = false;   ///< of device_
  bool own_times_ = false;     ///< no file of folder_ has been another user's
};

void add_entry(const dirent64& entry, int folder, FolderListing& listing) {
  const std::string_view name(entry.d_name);
  if (name == "." || name == ".." || (name.starts_with('.') && !listing.wants_hidden())) return;
  unsigned char type = entry.d_type;
  if (type == DT_UNKNOWN) {
    struct stat status;
    if (fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return;
    type = S_ISDIR(status.st_mode) ? DT_DIR : S_ISREG(status.st_mode) ? DT_REG : DT_LNK;
  }
  if (type == DT_REG) listing.add_file(name, nullptr);
  if (type == DT_DIR) listing.add_folder(name);
}

}  // namespace

std::optional<SystemError> PosixFileSystem::list_folder(const std::string& folder,
                                                        FolderListing& listing,
                                                        const std::function<bool()>& go_on) const {
  const Handle open(open_path(folder, O_RDONLY | O_DIRECTORY));
  if (!open) return error_of(errno);
  alignas(dirent64) std::array<char, 1 << 15> entries;  // some hundred of them
  while (true) {
    const ssize_t size = getdents64(open.get(), entries.data(), entries.size());
    if (size < 0) return error_of(errno);
    if (size == 0) return std::nullopt;
    if (listing.begun() && !go_on()) return std::nullopt;
    listing.set_begun();
    for (ssize_t at = 0; at < size;) {
      const auto* entry = reinterpret_cast<const dirent64*>(entries.data() + at);
      add_entry(*entry, open.get(), listing);
      at += entry->d_reclen;
    }
  }
}

std::optional<SystemError> PosixFileSystem::facts(const std::string& folder, std::string_view name,
                                                  FileFacts& facts) const {
  const std::string path = folder + std::string(name);
  struct stat status;
  if (path.size() < PATH_MAX) {
    if (stat(path.c_str(), &status) != 0) return error_of(errno);
  } else {
    const Handle file(open_path(path, O_PATH));
    if (!file || fstat(file.get(), &status) != 0) return error_of(errno);
  }
  facts = facts_of(status);
  return std::nullopt;
}

std::unique_ptr<FileReader> PosixFileSystem::reader() const {
  return std::make_unique<PosixFileReader>();
}

// A table of open files that threads share is locked at every call, which takes 7 % of a search on
// two threads.
std::unique_ptr<PendingCalls> PosixFileSystem::enter_thread() const {
  unshare(CLONE_FILES);
  return nullptr;
}

}  // namespace tallowmere
