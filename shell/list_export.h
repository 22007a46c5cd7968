#pragma once

#include <string>
#include <string_view>

#include "engine/date_time.h"
#include "results/result_list.h"

namespace tallowmere {

enum class ListFormat { text, csv };

/// The format that a file's extension names, otherwise the one chosen.
ListFormat list_format(std::string_view path, ListFormat chosen);

/// What a file of the list holds, in the list's order, in UTF-8 with its mark and lines that end
/// in CR LF. Text: one full path a line. CSV: a line of headings, then name, date, size in bytes
/// and folder of each file; no cell of it is a formula to a spreadsheet.
std::string exported_list(const ResultList& list, ListFormat format, const Clock& clock);

}  // namespace tallowmere
