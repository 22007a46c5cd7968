#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/code_page.h"
#include "engine/file_system.h"
#include "engine/text_encoding.h"
#include "results/result_list.h"
#include "viewer/block_reader.h"
#include "viewer/character_text.h"
#include "viewer/chunk.h"
#include "viewer/chunk_source.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

enum class ChunkResult {
  ok,
  reopened,  ///< as ok, but the file has changed: it is opened again and viewed from its beginning
  no_file,   ///< none is loaded, or none any more; the user has been told why
  failed     ///< reading broke off; the user has been told, and the viewer is empty
};

/// The file in the viewer, of which one chunk at a time is loaded and shown. Owns the viewer's
/// state; the navigation and the scroll bar work through it. No file stays open between steps, so
/// that others may write, rename or delete it. What its file system throws ends the step.
class FileViewer : public ChunkSource {
 public:
  FileViewer(ResultList& results, const FileSystem& files, TextFace& face, ViewerHost& host);

  /// Sets whether files in UTF-8 and UTF-16 are read as such, from the next file on; `page`, which
  /// must outlive the viewer, says how their invalid bytes show.
  void read_unicode_text(bool on, const CodePage& page);

  /// Opens the file of a row for viewing. The first chunk is then pending: the first step of the
  /// navigation reads and shows it. A row whose facts have changed is corrected. False, after a
  /// message, when the file is empty or cannot be opened; the viewer is then empty.
  bool viewfile(std::size_t row);
  void clear_textbox();
  /// Tidies up after a step that was given up: what shows stays, a file that does not show yet is
  /// dropped.
  void step_given_up();
  bool loaded() const { return loaded_.file_location != 0; }
  // These are for the file loaded:
  const FileRecord& record() const;
  const FileFacts& facts() const { return facts_; }  ///< when it was opened for viewing
  std::string viewed_extension() const;
  /// True while a chunk of the file loaded shows.
  bool shows_chunk() const { return shown_.file_location != 0; }
  /// True while none does: the next step of the navigation must first load one.
  bool chunk_pending() const { return loaded() && !shows_chunk(); }

  /// Reads the chunk at `chunk_start`, which is moved into the file and to the beginning of a
  /// character, and moves `position` (1-based in the chunk) along. A file that has changed on disk
  /// is announced and opened again, at its beginning; `position` is then 1.
  ChunkResult get_file_chunk(std::int64_t chunk_start, std::int64_t& position);
  /// Filters the loaded chunk, shows it and moves `position` along with the inserted characters.
  void fill_textbox(std::int64_t& position);
  /// Reads and shows the chunk at `chunk_start` with the caret at `position`; `line` receives the
  /// caret's line. The chunk may begin further ahead, so ask shown_chunk() where it is.
  ChunkResult load_text_chunk(std::int64_t chunk_start, std::int64_t& position, int& line);

  /// Sets the scroll bar's thumb by the end of the selection.
  void backward_scroll_value();
  /// Sets the thumb by the start of the selection, while the viewer is enabled.
  void update_scroll_value();

  /// Returns the encoding of the file loaded; the code page without one.
  TextEncoding encoding() const override { return encoding_; }
  /// Returns the chunk read last, with the bytes as read; what shows may be another one.
  const Chunk& loaded_chunk() const { return loaded_; }
  /// Returns the chunk in the text box, with the text there; empty while none of the file shows.
  const Chunk& shown_chunk() const { return shown_; }
  /// True while a chunk shows, and the file is still the same on the disk.
  bool shows_current() const;
  std::int64_t file_length() const override { return file_length_; }

  std::string read_window(std::int64_t position, std::int64_t length) override;
  /// Reads the whole characters of a window of a Unicode file, with the byte of the window that
  /// each came from.
  UnitText read_units(std::int64_t position, std::int64_t length);

  /// Sets how many bytes on both sides of a chunk are read with it, from the next chunk on.
  void read_beside(std::int64_t bytes) { beside_ = bytes; }
  /// Returns the chunk that shows as it was read, with the bytes beside it, as far as they could be
  /// read. Needs nothing from the disk.
  ChunkSource& shown_source() { return shown_source_; }
  /// Returns a number that changes whenever the text shown does.
  int shown_version() const { return shown_version_; }

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

  Change changed_on_disk() const;
  void fail_to_view(const std::string& prompt, std::string_view title);
  TextEncoding decide_encoding();
  std::optional<SystemError> read_chunk(std::int64_t length, std::int64_t& position);
  void read_beside_chunk();
  void set_scroll_value(std::int64_t character);

  ResultList& results_;
  const FileSystem& files_;
  TextFace& face_;
  ViewerHost& host_;
  BlockReader reader_;
  const CodePage* page_ = nullptr;  ///< null until Unicode is read
  bool unicode_text_ = false;
  int steps_ = 0;

  std::int64_t file_length_ = 0;
  FileFacts facts_;  ///< when the file was opened for viewing
  TextEncoding encoding_ = TextEncoding::code_page;
  Chunk loaded_;  ///< of file_location 0 while no file is loaded
  Chunk shown_;
  std::int64_t beside_ = 0;
  std::string around_;  ///< the loaded chunk with the bytes beside it; empty without
  std::int64_t around_start_ = 1;
  HeldSource shown_source_{TextEncoding::code_page, 0};
  int shown_version_ = 0;
};

}  // namespace tallowmere
