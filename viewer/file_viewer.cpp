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

std::string FileViewer::viewed_extension() const {
  return std::string(results_.list2_extension(static_cast<std::size_t>(results_.viewed_index)));
}

bool FileViewer::viewfile(std::size_t row) {
  reader_.close();
  results_.viewed_index = static_cast<std::ptrdiff_t>(row);
  encoding_ = TextEncoding::code_page;
  loaded_.file_location = 0;
  shown_ = {};
  ++shown_version_;
  facts_ = {};
  // Facts that cannot be read leave the row without a date; opening the file reports why.
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

// A failure to read is reported later, when the first chunk is read.
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
  ++shown_version_;
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
  std::int64_t length = place_chunk(loaded_, file_length_, position);
  // Within a step, what is already in memory belongs to the same file.
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
    length = place_chunk(loaded_, file_length_, position);
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

std::optional<SystemError> FileViewer::read_chunk(std::int64_t length, std::int64_t& position) {
  if (!reader_.is_open()) {
    if (auto error = reader_.open(record().filepath, record().filename)) return error;
  }
  const FilePiece piece = piece_for(loaded_, length);
  std::string bytes;
  if (auto error = reader_.read(piece.position, piece.length, bytes)) return error;
  const std::int64_t asked = loaded_.chunk_start;
  fill_chunk(loaded_, std::move(bytes), piece, length);
  position += asked - loaded_.chunk_start;
  read_beside_chunk();
  return std::nullopt;
}

void FileViewer::read_beside_chunk() {
  around_.clear();
  if (beside_ == 0) return;
  around_start_ = std::max<std::int64_t>(loaded_.chunk_start - beside_, 1);
  const std::int64_t end = loaded_.file_location + 1 + beside_;
  if (reader_.read(around_start_, end - around_start_, around_)) around_.clear();
}

void FileViewer::fill_textbox(std::int64_t& position) {
  shown_ = filter_chunk(loaded_, viewed_extension(), page_);
  ++shown_version_;
  shown_source_ = HeldSource(encoding_, file_length_);
  if (around_.empty()) {
    shown_source_.hold(loaded_.chunk_start, loaded_.chunk_text);
  } else {
    shown_source_.hold(around_start_, around_);
  }
  position = shown_.character_on_show(position);
  if (shown_.is_unicode()) {
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

}  // namespace tallowmere
