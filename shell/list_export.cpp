#include "shell/list_export.h"

#include "engine/letter_case.h"
#include "engine/unicode.h"
#include "shell/lenient_values.h"

namespace tallowmere {
namespace {

constexpr std::string_view mark = "\xEF\xBB\xBF";
constexpr std::string_view line_end = "\r\n";
constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// Names need not be well-formed; the file must be. In a text no name may end the line.
std::string clean(std::string_view text, bool one_line) {
  std::string result;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t code = next_code_point(text, position);
    const bool no_character = code >= 0xD800 && code <= 0xDFFF;
    if (no_character || (one_line && code < U' ')) {
      result += replacement;
    } else {
      append_utf8(result, code);
    }
  }
  return result;
}

/// Puts a text in quotes. Spreadsheets take what begins like a formula for one, quoted or not.
std::string cell(std::string_view text) {
  constexpr std::string_view begins_formula = "=+-@\t\r\n";
  std::string result = "\"";
  if (!text.empty() && begins_formula.find(text[0]) != text.npos) result += '\'';
  for (const char c : clean(text, false)) {
    if (c == '"') result += '"';
    result += c;
  }
  return result += '"';
}

std::string two_digits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

/// yyyy-mm-dd hh:mm, which spreadsheets of any country know; empty when it is not known.
std::string moment_text(Ticks moment, const Clock& clock) {
  if (moment == 0) return {};
  const DateTime local = clock.to_local(moment);
  return iso_date(local.date) + " " + two_digits(local.hour) + ":" + two_digits(local.minute);
}

}  // namespace

ListFormat list_format(std::string_view path, ListFormat chosen) {
  const std::string lower = lower_case(path);
  if (lower.ends_with(".csv")) return ListFormat::csv;
  return lower.ends_with(".txt") ? ListFormat::text : chosen;
}

std::string exported_list(const ResultList& list, ListFormat format, const Clock& clock) {
  std::string text(mark);
  if (format == ListFormat::csv) text.append("Name,Date,Size,Folder").append(line_end);
  for (const FileRecord& file : list.records()) {
    if (format == ListFormat::text) {
      text.append(clean(file.filepath + file.filename, true)).append(line_end);
      continue;
    }
    text.append(cell(file.filename) + "," + moment_text(file.filedate, clock) + ",");
    text.append(std::to_string(file.filesize) + "," + cell(file.filepath)).append(line_end);
  }
  return text;
}

}  // namespace tallowmere
