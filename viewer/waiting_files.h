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

/// Thrown by a call that has been given up. No failure and nothing to tell: who gave it up knows.
/// It is thrown because everything between, such as the second try after a read error, is to be
/// left too.
class GivenUp : public std::exception {};

/// A file system whose calls may hang without holding up the thread that makes them: another thread
/// makes them, this one waits and serves events. For one thread, and for its readers; a call may
/// be made while another one of it waits.
class WaitingFiles : public FileSystem {
 public:
  /// `keep_waiting` is asked again and again while a call takes longer than moments, and serves
  /// events; when it says no, the call is given up. What has been given up may still use `files`
  /// at any later time, which must live until the program ends.
  WaitingFiles(const FileSystem& files, std::function<bool()> keep_waiting);
  ~WaitingFiles() override;

  /// Not waited for: only a search lists.
  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>& go_on) const override {
    return files_.list_folder(folder, listing, go_on);
  }

  // These throw GivenUp, and what the other thread has thrown.
  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) const override;
  std::unique_ptr<FileReader> reader() const override;

 private:
  class Caller;
  class PieceCall;
  class Reader;

 public:
  /// A piece of a file that another thread reads while this one goes on. Destroyed before the end,
  /// it is given up.
  class PieceRead {
   public:
    ~PieceRead();
    PieceRead(const PieceRead&) = delete;
    PieceRead& operator=(const PieceRead&) = delete;

    /// Never waits.
    bool done();
    // When done:
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

  /// Begins to read `length` bytes from the 1-based `position`. Calls of the others need not wait
  /// for it. This object outlives what is returned.
  std::unique_ptr<PieceRead> begin_read(const std::string& folder, std::string_view name,
                                        std::int64_t position, std::int64_t length) const;

 private:
  const FileSystem& files_;
  const std::unique_ptr<Caller> caller_;
};

}  // namespace tallowmere
