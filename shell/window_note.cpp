#include "shell/window_note.h"

namespace tallowmere {
namespace {

std::string_view encoding_name(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::utf8:
      return "UTF-8";
    case TextEncoding::utf16_le:
    case TextEncoding::utf16_be:
      return "UTF-16";
    case TextEncoding::code_page:
      break;
  }
  return "";
}

std::string bytes_text(std::int64_t files) {
  if (files == 0) return {};
  if (files == 1) return "1 Unicode file was searched byte by byte.";
  return std::to_string(files) + " Unicode files were searched byte by byte.";
}

}  // namespace

std::string_view link_text(NoteLink link) {
  return link == NoteLink::read_unicode_text ? "Read Unicode text" : "";
}

void WindowNote::run_ended(const RunReading& run) {
  run_ = {};
  if (run.unicode_text) return;
  run_.text = bytes_text(run.read_as_bytes);
  if (run.code_page_lacks) {
    if (!run_.empty()) run_.text += ' ';
    run_.text += "The code page lacks a character of the criteria.";
  }
  if (!run_.empty()) run_.link = NoteLink::read_unicode_text;
}

Note WindowNote::current(TextEncoding on_view) const {
  if (!folder_.empty()) return {"Folder to search: " + folder_};
  const std::string_view name = encoding_name(on_view);
  return name.empty() ? run_ : Note{std::string(name)};
}

}  // namespace tallowmere
