#include "files/file_command_texts.h"

#include "results/fault_lines.h"

namespace tallowmere {
namespace {

struct Words {
  std::string_view title;  ///< as in the menus
  std::string_view loud;   ///< as messages about failures name it
  std::string_view done;
  std::string_view doing;
};

const Words& words_of(FileCommand command) {
  static constexpr Words words[] = {{"Move", "MOVE", "moved", "Moving Files"},
                                    {"Copy", "COPY", "copied", "Copying Files"},
                                    {"Rename", "RENAME", "renamed", "Renaming Files"},
                                    {"Delete", "DELETE", "deleted", "Deleting Files"}};
  return words[static_cast<std::size_t>(command)];
}

}  // namespace

std::string failure_title(FileCommand command) {
  return "Cannot " + std::string(words_of(command).title) + " File";
}

std::string failure_text(FileCommand command, const BatchOutcome& outcome) {
  const std::vector<FileFault>& faults = outcome.faults;
  if (faults.empty()) return {};
  if (faults.size() == 1) {
    return faults[0].reason + " - encountered while trying to " +
           std::string(words_of(command).loud) + " " + faults[0].path;
  }
  return std::to_string(faults.size()) + " of " + std::to_string(outcome.selected) +
         " files could not be " + std::string(words_of(command).done) + ":\n" + fault_lines(faults);
}

std::string files_text(const SelectedFiles& files) {
  if (files.count == 1) return "\"" + files.name + "\"";
  return std::to_string(files.count) + " files";
}

std::string delete_question(const SelectedFiles& files, std::size_t unrecoverable) {
  const bool one = files.count == 1;
  const std::string path = "\"" + files.folder + files.name + "\"";
  std::string text = "Delete " + (one ? path : files_text(files)) + " from Disk?\n\n";
  if (unrecoverable == 0) {
    text += one ? "It will be moved to the Recycle Bin." : "They will be moved to the Recycle Bin.";
  } else if (unrecoverable == files.count) {
    text += one ? "There is no Recycle Bin for it: it will be deleted permanently."
                : "There is no Recycle Bin for them: they will be deleted permanently.";
  } else {
    text += "There is no Recycle Bin for " + std::to_string(unrecoverable) +
            " of them: " + (unrecoverable == 1 ? "it" : "these") +
            " will be deleted permanently. The others will be moved to the Recycle Bin.";
  }
  return text;
}

std::string remove_question(const SelectedFiles& files) {
  const bool one = files.count == 1;
  return "Remove " + files_text(files) + " from the List?\n\n" +
         (one ? "The file stays on the Disk." : "The files stay on the Disk.");
}

std::string progress_caption(FileCommand command) {
  return std::string(words_of(command).doing);
}

std::string progress_text(std::size_t index, std::size_t count, const std::string& path) {
  if (count == 1) return path;
  return "File " + std::to_string(index + 1) + " of " + std::to_string(count) + ": " + path;
}

std::string replace_facts(const FileFacts& facts, const DateFormat& format) {
  const FileRecord record{{}, facts.modified, {}, facts.size};
  return row_cell(record, ResultColumn::date, format) + ", " +
         row_cell(record, ResultColumn::size, format) + " bytes";
}

}  // namespace tallowmere
