#include "shell/window_note.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "shell/run_texts.h"

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

/// "12 files are outside", and the like.
std::string counted(std::int64_t count, std::string_view one, std::string_view many) {
  return std::to_string(count) + std::string(count == 1 ? one : many);
}

std::string reading_text(const RunOutcome& run) {
  std::string text;
  if (run.read_as_bytes > 0) {
    text = counted(run.read_as_bytes, " Unicode file was", " Unicode files were") +
           " searched byte by byte.";
  }
  if (!run.code_page_lacks) return text;
  if (!text.empty()) text += ' ';
  return text + "The code page lacks a character of the criteria.";
}

std::string types_text(const RunOutcome& run) {
  const std::int64_t files = run.left_out.types;
  if (run.searched == 0)
    return counted(files, " file, but not of a ticked type", " files, but none of a ticked type");
  return counted(files, " file is of a type that is", " files are of types that are") +
         " not ticked";
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

void WindowNote::run_goes_on(double seconds, std::string folder) {
  // A folder that is named already stays past midnight, when the seconds are few again.
  if (folder.empty() || (run_.empty() && seconds < 1)) return;
  run_ = {{std::move(folder)}};
  run_.front().is_folder = true;
}

void WindowNote::run_ended(const RunOutcome& run) {
  run_.clear();
  const auto say = [this](std::int64_t count, std::string text) {
    if (count > 0) run_.push_back({std::move(text)});
  };
  if (run.nothing_listed) {
    const LeftOut& out = run.left_out;
    say(out.types, types_text(run));
    say(out.names, counted(out.names, " name was", " names were") + " left out");
    say(out.dates, counted(out.dates, " file is", " files are") + " outside the dates");
  }
  std::string reading = run.unicode_text ? "" : reading_text(run);
  if (!reading.empty()) {
    if (!run_.empty() && reading.front() == 'T') reading.front() = 't';  // goes on
    run_.push_back({std::move(reading), NoteLink::read_unicode_text, "Read Unicode text"});
  }
  if (run.unread > 0) run_.push_back({"", NoteLink::show_unread, not_read_text(run.unread)});
}

Note WindowNote::current(const OnView& view) const {
  Note note;
  if (!folder_.empty()) note.parts.push_back({"Folder to search: " + folder_});
  std::string on_view(encoding_name(view.encoding));
  join(on_view, ", ", view.hit);
  if (!on_view.empty()) note.parts.push_back({on_view});
  note.parts.insert(note.parts.end(), run_.begin(), run_.end());
  return note;
}

}  // namespace tallowmere
