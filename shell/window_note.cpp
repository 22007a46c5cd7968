#include "shell/window_note.h"

#include <algorithm>
#include <string_view>
#include <utility>

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

std::string reading_text(const RunReading& run) {
  std::string text = bytes_text(run.read_as_bytes);
  if (!run.code_page_lacks) return text;
  if (!text.empty()) text += ' ';
  return text + "The code page lacks a character of the criteria.";
}

std::string link_markup(const NotePart& part) {
  const int id = static_cast<int>(*part.link);
  return "<a id=\"" + std::to_string(id) + "\">" + part.link_words + "</a>";
}

void join(std::string& line, std::string_view separator, std::string_view more) {
  if (!line.empty() && !more.empty()) line += separator;
  line += more;
}

}  // namespace

std::vector<NoteLink> Note::links() const {
  std::vector<NoteLink> all;
  for (const NotePart& part : parts) {
    if (part.link) all.push_back(*part.link);
  }
  return all;
}

bool Note::has(NoteLink link) const {
  return std::ranges::find(parts, link, &NotePart::link) != parts.end();
}

std::size_t Note::text_count() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(parts, [](const NotePart& part) { return !part.text.empty(); }));
}

std::string note_markup(const Note& note, std::size_t texts) {
  std::string line;
  std::string_view dots = texts == 0 ? "" : "…";
  for (const NotePart& part : note.parts) {
    std::string words;
    if (!part.text.empty()) words = texts > 0 ? part.text : std::exchange(dots, {});
    if (!part.text.empty() && texts > 0) --texts;
    if (part.link) join(words, " ", link_markup(part));
    join(line, "; ", words);
  }
  return line;
}

std::string note_texts(const Note& note) {
  std::string line;
  for (const NotePart& part : note.parts) join(line, "; ", part.text);
  return line;
}

void WindowNote::run_ended(const RunReading& run) {
  run_.clear();
  const std::string reading = run.unicode_text ? "" : reading_text(run);
  if (!reading.empty()) {
    run_.push_back({reading, NoteLink::read_unicode_text, "Read Unicode text"});
  }
}

Note WindowNote::current(const OnView& view) const {
  Note note;
  if (!folder_.empty()) note.parts.push_back({"Folder to search: " + folder_});
  const std::string_view encoding = encoding_name(view.encoding);
  if (!encoding.empty()) note.parts.push_back({std::string(encoding)});
  note.parts.insert(note.parts.end(), run_.begin(), run_.end());
  return note;
}

}  // namespace tallowmere
