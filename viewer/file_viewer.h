#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/file_system.h"
#include "results/result_list.h"
#include "viewer/block_reader.h"
#include "viewer/display_filter.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

enum class ChunkResult {
  ok,
  reopened,  ///< as ok, but the file has changed: it is viewed afresh, from its beginning
  no_file,   ///< none is loaded, or none any more; the user has been told why
  failed     ///< reading broke off; the user has been told, and the viewer is empty
};

/// Where the loaded chunk lies. Positions in the file count from 1.
struct ChunkPlace {
  std::int64_t chunk_start = 1;
  std::int64_t file_location = 0;  ///< of the last byte read, 1 before any; 0: no file is loaded
  bool last_chunk = false;         ///< the chunk reaches the end of the file
};

/// The file in the viewer, of which one chunk at a time is loaded and shown. Owns the viewer's
/// state; the navigation and the scroll bar work through it. No file stays open between steps:
/// others may write, rename or delete it.
class FileViewer {
 public:
  FileViewer(ResultList& results, const FileSystem& files, TextFace& face, ViewerHost& host);

  /// Opens the file of a row for viewing. The first chunk is then pending: the first step of the
  /// navigation reads and shows it. A row whose facts have changed is corrected. False, after a
  /// message, when the file is empty or cannot be opened; the viewer is then empty.
  bool viewfile(std::size_t row);
  void clear_textbox();
  bool loaded() const { return place_.file_location != 0; }

  /// Reads the chunk at chunk_start, which is moved into the file, and moves `position` (1-based in
  /// the chunk) along. A file that has changed on disk is announced and viewed afresh; `position`
  /// is then 1.
  ChunkResult get_file_chunk(std::int64_t& position);
  /// Filters the chunk just read, shows it and moves `position` along with the inserted characters.
  void fill_textbox(std::int64_t& position);
  /// Reads and shows the chunk at `chunk_start` with the caret at `position`; `line` receives the
  /// caret's line. The chunk may come to lie further ahead, so ask place() where it is.
  ChunkResult load_text_chunk(std::int64_t chunk_start, std::int64_t& position, int& line);

  /// The thumb of the scroll bar from the end of the selection, or from the caret. The latter only
  /// while the viewer is enabled.
  void backward_scroll_value();
  void update_scroll_value();

  /// The file position of a 0-based character shown; of the text's end that behind its last byte.
  std::int64_t file_position(int character) const;
  /// The 0-based character shown for a file position, fitted into the chunk.
  int character_at(std::int64_t file_position) const;
  /// The first file position from which on lone line breaks of the chunk shown were dropped; the
  /// one behind the chunk when none was.
  std::int64_t crowded_from() const;

  const ChunkPlace& place() const { return place_; }
  std::int64_t file_length() const { return file_length_; }
  /// The chunk: raw when just read, what the text box shows when filled.
  const std::string& chunk_text() const { return chunk_text_; }

  /// True while the next step of the navigation must first load a chunk.
  bool chunk_pending = false;

  /// Moves the place, before get_file_chunk reads there.
  void set_chunk_start(std::int64_t chunk_start) { place_.chunk_start = chunk_start; }
  /// Goes back to what the text box shows, which is the chunk at `place`.
  void take_shown(const ChunkPlace& place);
  /// True while the text box shows a chunk of this file, and the file is still the same on the
  /// disk.
  bool shows_current() const;
  /// True while the text box shows a chunk of this file.
  bool shown() const { return shown_; }

  /// `length` bytes of the file from a position, fewer at its end; none when they cannot be read.
  std::string read_window(std::int64_t position, std::int64_t length);

  /// Keeps the file open while it lives, for steps that read many chunks.
  class Step {
   public:
    explicit Step(FileViewer& viewer) : viewer_(viewer) { ++viewer_.steps_; }
    ~Step() {
      if (--viewer_.steps_ == 0) viewer_.reader_.close();
    }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

   private:
    FileViewer& viewer_;
  };

 private:
  enum class Change { none, facts, vanished };

  const FileRecord& record() const;
  Change changed_on_disk() const;
  void fail_to_view(const std::string& prompt, std::string_view title);
  std::int64_t place_chunk(std::int64_t& position);
  std::optional<SystemError> read_chunk(std::int64_t length);
  void set_scroll_value(std::int64_t character);

  ResultList& results_;
  const FileSystem& files_;
  TextFace& face_;
  ViewerHost& host_;
  BlockReader reader_;
  int steps_ = 0;

  ChunkPlace place_;
  std::int64_t file_length_ = 0;
  FileFacts facts_;  ///< when the file was opened for viewing
  std::string chunk_text_;
  FilteredChunk filtered_;         ///< what the text box shows
  std::int64_t shown_start_ = 1;   ///< where that begins in the file
  std::int64_t shown_length_ = 0;  ///< and how many bytes of it that are
  bool shown_ = false;
};

}  // namespace tallowmere
