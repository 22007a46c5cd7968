#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/text_encoding.h"

namespace tallowmere {

/// What the link of a note does.
enum class NoteLink { none, read_unicode_text };

/// What the label `lblNote` shows.
struct Note {
  std::string text;
  NoteLink link = NoteLink::none;
  bool empty() const { return text.empty(); }
  bool operator==(const Note&) const = default;
};

/// The words of a link, which stand behind the note's text; empty without one.
std::string_view link_text(NoteLink link);

/// What a run leaves to say when it has ended.
struct RunReading {
  bool unicode_text = false;       ///< files were read as the Unicode text that they are
  bool code_page_lacks = false;    ///< a character of the criteria
  std::int64_t read_as_bytes = 0;  ///< files whose answer may be another as Unicode text
};

/// The one owner of what there is to note beside the file information. The encoding of the file on
/// view comes first; what the last run has left to say comes back when the viewer is cleared.
class WindowNote {
 public:
  void run_began() {
    run_ = {};
    folder_.clear();
  }
  void run_ended(const RunReading& run);
  /// The next search is to go through a folder that was dropped on the window: says so until that
  /// shows elsewhere, which an empty one tells.
  void folder_taken(const std::string& folder) { folder_ = folder; }

  /// `on_view` is the encoding of the file in the viewer: the code page's, of which there is
  /// nothing to say, when none is there.
  Note current(TextEncoding on_view) const;

 private:
  std::string folder_;
  Note run_;  ///< empty while a run is under way
};

}  // namespace tallowmere
