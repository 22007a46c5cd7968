#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "files/file_batch.h"
#include "results/row_text.h"

namespace tallowmere {

/// Returns the title over failures: "Cannot Move File".
std::string failure_title(FileCommand command);

/// Says what failed and why: a plain sentence for one file, a list for several. Empty without
/// failures.
std::string failure_text(FileCommand command, const BatchOutcome& outcome);

/// The name and folder of the first selected file, and how many there are.
struct SelectedFiles {
  std::string name;
  std::string folder;
  std::size_t count = 0;
};

/// Returns "notes.txt" in quotes for one file, "12 files" for several.
std::string files_text(const SelectedFiles& files);

inline constexpr std::string_view delete_title = "Delete Files";
inline constexpr std::string_view remove_title = "Remove Files";

/// Asks whether to delete; `unrecoverable` of the files cannot go to a Recycle Bin.
std::string delete_question(const SelectedFiles& files, std::size_t unrecoverable);
std::string remove_question(const SelectedFiles& files);

/// Returns the caption of the window that shows a command's progress; progress_text() is its text.
std::string progress_caption(FileCommand command);
std::string progress_text(std::size_t index, std::size_t count, const std::string& path);

/// Returns the date and size of one of the two files of a replacement.
std::string replace_facts(const FileFacts& facts, const DateFormat& format);

}  // namespace tallowmere
