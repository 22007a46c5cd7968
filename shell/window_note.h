#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/search_folder.h"
#include "engine/text_encoding.h"

namespace tallowmere {

/// What a link of a note does.
enum class NoteLink { read_unicode_text, show_unread };

/// One thing to note: words, a link after them, or both.
struct NotePart {
  std::string text;
  std::optional<NoteLink> link = {};
  std::string link_words = {};
  bool is_folder = false;  ///< the text is a path, shortened in its middle where it does not fit
  bool operator==(const NotePart&) const = default;
};

/// What the label `lblNote` shows.
struct Note {
  std::vector<NotePart> parts;

  bool empty() const { return parts.empty(); }
  /// The links in the order in which they show.
  std::vector<NoteLink> links() const;
  bool has(NoteLink link) const;
  /// How many parts have words beside their link.
  std::size_t text_count() const;
  bool operator==(const Note&) const = default;
};

/// A note in one line of the system's link control, with all its links and the first `texts` of its
/// texts; "…" is in the place of those that follow, unless none is kept. The id of a link is the
/// number of what it does.
std::string note_markup(const Note& note, std::size_t texts);

/// The texts of a note without its links.
std::string note_texts(const Note& note);

/// What the viewer shows.
struct OnView {
  /// The code page's, of which there is nothing to say, where there is no file.
  TextEncoding encoding = TextEncoding::code_page;
  std::string hit = {};  ///< which one has been met; empty when that is not known
};

/// What there is to say of a run that has ended.
struct RunOutcome {
  bool unicode_text = false;       ///< files were read as the Unicode text that they are
  bool code_page_lacks = false;    ///< a character of the criteria
  std::int64_t read_as_bytes = 0;  ///< files whose answer may be another as Unicode text
  std::size_t unread = 0;          ///< files and folders
  bool nothing_listed = false;     ///< the new list is empty
  std::int64_t searched = 0;       ///< files
  LeftOut left_out = {};
};

/// The one owner of what there is to note beside the file information: first what there is to say
/// of the file on view, then what the last run has left to say.
class WindowNote {
 public:
  /// Clears what was noted of runs and folders: a run begins, or has been through its files.
  void clear_run() {
    run_.clear();
    folder_.clear();
  }
  /// Says that the next search is to go through a folder dropped on the window, until that shows
  /// elsewhere: then `folder` is empty.
  void folder_taken(const std::string& folder) { folder_ = folder; }
  /// Called a few times a second: a run that lasts names the folder that it is in.
  void run_goes_on(double seconds, std::string folder);
  void run_ended(const RunOutcome& run);

  Note current(const OnView& view) const;

 private:
  std::string folder_;  ///< that was dropped
  std::vector<NotePart> run_;
};

}  // namespace tallowmere
