#include "results/row_text.h"

#include <cassert>

namespace tallowmere {
namespace {

std::string without_blanks(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c != ' ') result += c;
  }
  return result;
}

/// Formats a time as h:mma or h:mmp.
std::string clock_text(const DateTime& moment) {
  const int hour = moment.hour % 12 == 0 ? 12 : moment.hour % 12;
  std::string text = std::to_string(hour) + ':';
  if (moment.minute < 10) text += '0';
  return text + std::to_string(moment.minute) + (moment.hour < 12 ? 'a' : 'p');
}

/// Joins the short date without its spaces and the time, such as 9:05a; exactly midnight shows no
/// time.
std::string format_row_date(const DateTime& moment, std::string_view short_date_text) {
  const std::string date = without_blanks(short_date_text);
  if (moment.hour == 0 && moment.minute == 0 && moment.second == 0) return date;
  const std::string time = clock_text(moment);
  return date + (time.size() < 6 ? "  " : " ") + time;
}

}  // namespace

std::string row_cell(const FileRecord& record, ResultColumn column, const DateFormat& format) {
  switch (column) {
    case ResultColumn::name:
      return record.filename;
    case ResultColumn::date: {
      if (record.filedate == 0) return {};
      const DateTime moment = format.clock.to_local(record.filedate);
      return format_row_date(moment, format.short_date(moment.date));
    }
    case ResultColumn::size:
      return std::to_string(record.filesize);
    case ResultColumn::folder:
      return record.filepath;
  }
  assert(false);
  return {};
}

}  // namespace tallowmere
