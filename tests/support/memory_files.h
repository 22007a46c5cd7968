#pragma once

#include <algorithm>
#include <atomic>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "engine/file_system.h"

namespace tallowmere {

/// Folders and files in memory, with whatever trouble a test wants. Paths use '/' on every system.
class MemoryFiles : public FileSystem {
 public:
  struct File {
    std::string text;
    FileFacts facts;
    bool unreadable = false;  ///< cannot be opened
    bool online_only = false;
    std::size_t breaks_at = SIZE_MAX;  ///< reading fails from here on
    /// Instead of `text`, for as many bytes as the facts say.
    std::function<unsigned char(std::size_t)> byte_at;
  };

  /// Adds a file and the folders above it.
  File& add(const std::string& path, std::string text, Ticks modified = 0) {
    File& file = files_[path];
    file.facts = {modified, static_cast<std::int64_t>(text.size())};
    file.text = std::move(text);
    return file;
  }

  void remove(const std::string& path) { files_.erase(path); }
  void clear() {
    files_.clear();
    folder_errors.clear();
    listed_before_error.clear();
  }
  std::vector<std::string> paths() const {
    std::vector<std::string> all;
    for (const auto& [path, file] : files_) all.push_back(path);
    return all;
  }

  std::map<std::string, SystemError> folder_errors;  ///< by path with final separator
  /// The folders above are listed up to this many files before their error comes.
  std::map<std::string, std::size_t> listed_before_error;
  std::function<void()> on_list, on_facts, on_open, on_read;  ///< run before every such call
  bool listing_knows_facts = true;
  bool seeks = false;  ///< the disk has to
  mutable std::atomic<int> opened{0};
  mutable std::atomic<int> closed{0};

  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>&) const override {
    if (on_list) on_list();
    const auto error = folder_errors.find(folder);
    const bool fails = error != folder_errors.end();
    const auto before_error = listed_before_error.find(folder);
    if (fails && before_error == listed_before_error.end()) return error->second;
    listing.set_begun();
    std::string last_folder;
    for (const auto& [path, file] : files_) {
      if (!path.starts_with(folder)) continue;
      if (fails && listing.file_count() == before_error->second) break;
      const std::string rest = path.substr(folder.size());
      const std::size_t separator = rest.find(path_separator);
      if (separator == std::string::npos) {
        listing.add_file(rest, listing_knows_facts ? &file.facts : nullptr,
                         listing_knows_facts && file.online_only);
      } else if (rest.substr(0, separator) != last_folder) {
        last_folder = rest.substr(0, separator);
        listing.add_folder(last_folder);
      }
    }
    return fails ? std::optional(error->second) : std::nullopt;
  }

  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) const override {
    if (on_facts) on_facts();
    const File* file = find(folder, name);
    if (!file) return SystemError{2, "File not found"};
    facts = file->facts;
    return std::nullopt;
  }

  bool has_to_seek(const std::string&) const override { return seeks; }
  std::unique_ptr<FileReader> reader() const override { return std::make_unique<Reader>(*this); }

 private:
  class Reader : public FileReader {
   public:
    explicit Reader(const MemoryFiles& files) : files_(files) {}
    ~Reader() override { close(); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    std::optional<SystemError> open(const std::string& folder, std::string_view name) override {
      close();
      if (files_.on_open) files_.on_open();
      const File* file = files_.find(folder, name);
      if (!file) return SystemError{2, "File not found"};
      if (file->unreadable) return SystemError{5, "Access is denied"};
      file_ = file;
      position_ = 0;
      ++files_.opened;
      return std::nullopt;
    }

    bool online_only() const override { return file_->online_only; }

    std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                    std::size_t& got) override {
      if (files_.on_read) files_.on_read();
      got = 0;
      if (!file_) return SystemError{6, "Invalid handle"};
      if (position_ + wanted > file_->breaks_at) return SystemError{23, "Data error"};
      const std::size_t size =
          file_->byte_at ? static_cast<std::size_t>(file_->facts.size) : file_->text.size();
      if (position_ < size) got = std::min(wanted, size - position_);
      if (file_->byte_at) {
        for (std::size_t i = 0; i < got; ++i) into[i] = file_->byte_at(position_ + i);
      } else if (got > 0) {
        std::memcpy(into, file_->text.data() + position_, got);
      }
      position_ += got;
      return std::nullopt;
    }

    std::optional<SystemError> seek(std::int64_t position) override {
      position_ = static_cast<std::size_t>(position);
      return std::nullopt;
    }

    void close() override {
      if (file_) ++files_.closed;
      file_ = nullptr;
    }

   private:
    const MemoryFiles& files_;
    const File* file_ = nullptr;
    std::size_t position_ = 0;
  };

  const File* find(const std::string& folder, std::string_view name) const {
    const auto file = files_.find(folder + std::string(name));
    return file == files_.end() ? nullptr : &file->second;
  }

  std::map<std::string, File> files_;
};

/// A clock that does not run, in UTC.
class FixedClock : public Clock {
 public:
  double time_of_day = 43200;
  Date day{2024, 5, 17};

  double seconds_since_midnight() const override { return time_of_day; }
  Date today() const override { return day; }

  DateTime to_local(Ticks moment) const override {
    const std::int64_t seconds = moment / ticks_per_second;
    const auto in_day = static_cast<int>(seconds % 86400);
    return {add_days({1601, 1, 1}, seconds / 86400), in_day / 3600, in_day / 60 % 60, in_day % 60};
  }

  Ticks start_of_day(const Date& date) const override {
    return (days_from_epoch(date) - days_from_epoch({1601, 1, 1})) * 86400 * ticks_per_second;
  }
};

}  // namespace tallowmere
