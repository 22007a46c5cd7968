#include "viewer/file_viewer.h"

#include <algorithm>
#include <cmath>

#include "viewer/display_filter.h"

namespace tallowmere {

namespace {

constexpr std::ptrdiff_t failed_view = -2;  ///< the viewed index after a file could not be opened

}  // namespace

FileViewer::FileViewer(ResultList& results, const FileSystem& files, TextFace& face,
                       ViewerHost& host)
    : results_(results), files_(files), face_(face), host_(host), reader_(files) {}

void FileViewer::read_unicode_text(bool on, const CodePage& page) {
  unicode_text_ = on;
  page_ = &page;
}

const FileRecord& FileViewer::record() const {
  return results_.record(static_cast<std::size_t>(results_.viewed_index));
}

bool FileViewer::viewfile(std::size_t row) {
  reader_.close();
  results_.viewed_index = static_cast<std::ptrdiff_t>(row);
  encoding_ = TextEncoding::code_page;
  loaded_.file_location = 0;
  shown_ = {};
  facts_ = {};
  // Facts that cannot be read leave the row without a date, and opening tells why.
  const bool known = !files_.facts(record().filepath, record().filename, facts_);
  file_length_ = facts_.size;
  if (results_.set_facts(row, facts_)) host_.row_corrected();
  const std::string folder = record().filepath;
  const std::string name = record().filename;
  if (known && file_length_ == 0) {
    fail_to_view("File contains zero bytes.", "Cannot View File");
    return false;
  }
  const auto error = reader_.open(folder, name);
  encoding_ = error ? TextEncoding::code_page : decide_encoding();
  reader_.close();
  if (error) {
    fail_to_view(error->text + " - encountered while trying to OPEN " + folder + name + ".",
                 "Cannot Open File");
    return false;
  }
  host_.file_opened(static_cast<std::size_t>(results_.viewed_index));
  loaded_ = {1, 1, true};
  loaded_.encoding = encoding_;
  return true;
}

// What cannot be read now is told of when the first chunk is read.
TextEncoding FileViewer::decide_encoding() {
  std::string begin;
  if (!unicode_text_ || reader_.read(1, encoding_sample, begin)) return TextEncoding::code_page;
  return find_text_encoding(begin);
}

void FileViewer::fail_to_view(const std::string& prompt, std::string_view title) {
  host_.message(prompt, title, true);
  results_.viewed_index = failed_view;
  clear_textbox();
}

void FileViewer::clear_textbox() {
  reader_.close();
  encoding_ = TextEncoding::code_page;
  loaded_ = {};
  shown_ = {};
  face_.set_text("");
  face_.set_scroll_value(0);
  face_.enable(false);
  host_.viewer_cleared();
}

void FileViewer::step_given_up() {
  if (shows_chunk()) return;
  results_.viewed_index = failed_view;
  clear_textbox();
}

ChunkResult FileViewer::get_file_chunk(std::int64_t chunk_start, std::int64_t& position) {
  if (!loaded()) return ChunkResult::no_file;
  const Step step(*this);
  loaded_.chunk_start = chunk_start;
  std::int64_t length = place_chunk(position);
  // Within a step, what has been read already is of the same file.
  const bool held = reader_.holds(loaded_.chunk_start, length);
  const Change change = held ? Change::none : changed_on_disk();
  if (change != Change::none) {
    if (change == Change::facts) {
      host_.message("The file has been modified since last accessed.", "File Has Changed", true);
    }
    const auto row = static_cast<std::size_t>(results_.viewed_index);
    host_.select_row(row);
    if (!viewfile(row)) return ChunkResult::no_file;
    position = 1;
    length = place_chunk(position);
  }
  if (const auto error = read_chunk(length, position)) {
    clear_textbox();
    results_.viewed_index = failed_view;
    host_.message(error->text + " - encountered while trying to GET DATA.", "Cannot Get Data",
                  true);
    return ChunkResult::failed;
  }
  return change == Change::none ? ChunkResult::ok : ChunkResult::reopened;
}

FileViewer::Change FileViewer::changed_on_disk() const {
  FileFacts now;
  if (files_.facts(record().filepath, record().filename, now)) return Change::vanished;
  return now == facts_ ? Change::none : Change::facts;
}

bool FileViewer::shows_current() const {
  return shows_chunk() && changed_on_disk() == Change::none;
}

// The first move adds the old start itself, not the old start less one: going back from a place
// near the beginning of a file, one more character is looked at.
std::int64_t FileViewer::place_chunk(std::int64_t& position) {
  std::int64_t& start = loaded_.chunk_start;
  if (start < 1) {
    position += start;
    start = 1;
  }
  loaded_.last_chunk = start + chunk_length > file_length_;
  if (!loaded_.last_chunk) return chunk_length;
  const std::int64_t old_start = start;
  start = std::max<std::int64_t>(file_length_ - chunk_length + 1, 1);
  position += old_start - start;
  return file_length_ - start + 1;
}

std::optional<SystemError> FileViewer::read_chunk(std::int64_t length, std::int64_t& position) {
  if (!reader_.is_open()) {
    if (auto error = reader_.open(record().filepath, record().filename)) return error;
  }
  std::string& text = loaded_.chunk_text;
  if (loaded_.is_unicode()) {
    const std::int64_t asked = loaded_.chunk_start;
    if (auto error = read_whole_characters(length)) return error;
    position += asked - loaded_.chunk_start;
  } else if (auto error = reader_.read(loaded_.chunk_start, length, text)) {
    return error;
  }
  loaded_.file_location = std::max<std::int64_t>(loaded_.chunk_start + std::ssize(text) - 1, 1);
  return std::nullopt;
}

/// Moves the chunk to the beginning of a character, and leaves out one that its end would cut.
std::optional<SystemError> FileViewer::read_whole_characters(std::int64_t length) {
  std::string& text = loaded_.chunk_text;
  const std::int64_t beside = longest_character - 1;
  const std::int64_t from = std::max<std::int64_t>(loaded_.chunk_start - beside, 1);
  const std::int64_t lead = loaded_.chunk_start - from;
  if (auto error = reader_.read(from, lead + length + beside, text)) return error;
  const auto boundary = [&](std::int64_t at) {
    return character_begin(text, static_cast<std::size_t>(at), from, loaded_.encoding);
  };
  const std::size_t begin = boundary(lead);
  const std::size_t end = loaded_.last_chunk ? text.size() : boundary(lead + length);
  text = text.substr(begin, end - begin);
  loaded_.chunk_start = from + static_cast<std::int64_t>(begin);
  return std::nullopt;
}

void FileViewer::fill_textbox(std::int64_t& position) {
  const auto row = static_cast<std::size_t>(results_.viewed_index);
  shown_ = filter_chunk(loaded_, results_.list2_extension(row), page_);
  position = shown_.character_at(shown_.chunk_start + position - 1) + 1;
  if (shown_.is_unicode()) {
    if (is_second_of_pair(shown_.units, static_cast<std::size_t>(position - 1))) ++position;
    face_.set_text(std::u16string_view(shown_.units));
  } else {
    face_.set_text(std::string_view(shown_.chunk_text));
  }
}

ChunkResult FileViewer::load_text_chunk(std::int64_t chunk_start, std::int64_t& position,
                                        int& line) {
  const ChunkResult result = get_file_chunk(chunk_start, position);
  if (result != ChunkResult::ok && result != ChunkResult::reopened) return result;
  fill_textbox(position);
  face_.enable(true);
  const auto caret = static_cast<int>(position - 1);
  face_.select(caret, 0);
  line = face_.line_from_char(caret);
  return result;
}

void FileViewer::backward_scroll_value() {
  const TextSelection selection = face_.selection();
  set_scroll_value(selection.start + selection.length);
}

void FileViewer::update_scroll_value() {
  if (face_.enabled()) set_scroll_value(face_.selection().start);
}

void FileViewer::set_scroll_value(std::int64_t character) {
  if (!loaded()) return;
  const std::int64_t place = shown_.is_unicode() ? shown_.file_position(static_cast<int>(character))
                                                 : shown_.chunk_start + character;
  const double fraction = static_cast<double>(place) / static_cast<double>(file_length_);
  face_.set_scroll_value(
      static_cast<int>(std::nearbyint(std::min(fraction, 1.0) * scroll_maximum)));
}

std::string FileViewer::read_window(std::int64_t position, std::int64_t length) {
  std::string window;
  if (!loaded() || length <= 0) return window;
  const Step step(*this);
  if (!reader_.is_open() && reader_.open(record().filepath, record().filename)) return window;
  if (reader_.read(position, length, window)) window.clear();
  return window;
}

UnitText FileViewer::read_units(std::int64_t position, std::int64_t length) {
  const std::string window = read_window(position, length);
  return to_units(window, text_begin(window, position), encoding(), *page_);
}

/// Where the first whole character of a window of the file begins, which lies at `position`.
std::size_t FileViewer::text_begin(std::string_view window, std::int64_t position) const {
  if (position == 1) return mark_length(encoding(), window);
  return character_begin(window, longest_character - 1, position, encoding());
}

std::int64_t FileViewer::step_characters(std::int64_t position, std::int64_t characters) {
  if (characters >= 0) {
    const std::string behind = read_window(position, characters * longest_character);
    const CharacterText text(behind, encoding());
    return position + static_cast<std::int64_t>(text.byte_at(characters));
  }
  const std::int64_t wanted = (1 - characters) * longest_character;
  const std::int64_t from = std::max<std::int64_t>(position - wanted, 1);
  const std::string before = read_window(from, position - from);
  if (std::ssize(before) < position - from) return position;
  const std::size_t begin = text_begin(before, from);
  const CharacterText text(std::string_view(before).substr(begin), encoding());
  const std::int64_t skipped = text.begun_before(before.size()) + characters;
  return from + static_cast<std::int64_t>(begin + text.byte_at(skipped));
}

std::string FileViewer::read_characters(std::int64_t position, std::int64_t before,
                                        std::int64_t count) {
  const std::int64_t from = step_characters(position, -before);
  std::string text = read_window(from, count * longest_character);
  text.resize(CharacterText(text, encoding()).byte_at(count));
  return text;
}

}  // namespace tallowmere
