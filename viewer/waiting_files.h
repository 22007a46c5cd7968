#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/call_thread.h"
#include "engine/file_system.h"

namespace tallowmere {

/// Thrown by a call that has been given up. This is no failure and is not reported: whoever gave it
/// up knows. It is thrown to leave everything in between, too, such as a second try after a read
/// error.
class GivenUp : public std::exception {};

/// A file system whose calls may hang without holding up the thread that asks: another thread makes
/// the calls while this one waits and serves events. For one thread and its readers; that thread
/// may make a call while another one of its calls waits.
class WaitingFiles : public FileSystem {
 public:
  /// Asks `keep_waiting`, which serves events, again and again while a call takes longer than
  /// moments; when it says no, the call is given up. Such a call may still use `files` at any later
  /// time, so `files` must live until the program ends.
  WaitingFiles(const FileSystem& files, std::function<bool()> keep_waiting);
  ~WaitingFiles() override;

  /// Lists without waiting as above: only a search lists folders.
  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>& go_on) const override {
    return files_.list_folder(folder, listing, go_on);
  }

  // These throw GivenUp, and whatever the other thread has thrown.
  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) const override;
  std::unique_ptr<FileReader> reader() const override;

 private:
  class Caller;
  class PieceCall;
  class Reader;

 public:
  /// A piece of a file that another thread reads while this one goes on. Destroying it before the
  /// end gives it up.
  class PieceRead {
   public:
    ~PieceRead();
    PieceRead(const PieceRead&) = delete;
    PieceRead& operator=(const PieceRead&) = delete;

    /// True when the piece has been read; never waits.
    bool done();
    // These are for when it is done:
    bool failed() const;
    const FileFacts& facts() const;  ///< when the piece was read
    std::string take_bytes();        ///< fewer than wanted at the file's end

   private:
    friend class WaitingFiles;
    PieceRead(Caller& caller, std::shared_ptr<PieceCall> call);

    Caller& caller_;
    const std::shared_ptr<PieceCall> call_;
    std::unique_ptr<CallThread> thread_;  ///< null when done
  };

  /// Begins to read `length` bytes from the 1-based `position`. Other calls need not wait for it.
  /// This object must outlive what is returned.
  std::unique_ptr<PieceRead> begin_read(const std::string& folder, std::string_view name,
                                        std::int64_t position, std::int64_t length) const;

 private:
  const FileSystem& files_;
  const std::unique_ptr<Caller> caller_;
};

}  // namespace tallowmere
