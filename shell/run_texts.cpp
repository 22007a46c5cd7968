#include "shell/run_texts.h"

#include <algorithm>
#include <cstdio>

#include "results/fault_lines.h"

namespace tallowmere {
namespace {

constexpr double shortest_elapsed = 0.01;

}  // namespace

double elapsed_seconds(double started, double ended) {
  return std::max(ended - started, shortest_elapsed);
}

std::string count_text(std::int64_t listed, std::int64_t searched) {
  return std::to_string(listed) + " file(s) matched out of " + std::to_string(searched);
}

std::string finished_text(std::int64_t listed, std::int64_t searched) {
  if (listed == 0 && searched == 0) return "No Files Found";
  return count_text(listed, searched);
}

std::string_view selected_file_text(bool matched) {
  return matched ? "Selected File Matched" : "Selected File Didn't Match";
}

std::string timing_text(bool stopped, double elapsed) {
  if (stopped) return std::string(search_stopped_text);
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%.2f", elapsed);
  return std::string("in ") + seconds + " seconds";
}

std::string not_read_text(std::size_t files) {
  return std::to_string(files) + (files == 1 ? " file was" : " files were") + " not read";
}

std::string unread_lines(const std::vector<UnreadFile>& unread,
                         const std::vector<std::size_t>& rows) {
  std::string text;
  for (const std::size_t row : rows) {
    std::string reason = unread[row].reason;
    // The system's words may be several lines.
    std::ranges::replace_if(
        reason, [](unsigned char c) { return c < ' '; }, ' ');
    text += unread[row].path + '\t' + reason + "\r\n";
  }
  return text;
}

std::string count_tool_tip(const std::string& chain, const std::vector<UnreadFile>& unread) {
  if (unread.empty()) return chain;
  std::string text = chain + (chain.empty() ? "" : "\n") + std::to_string(unread.size());
  text += unread.size() == 1 ? " file could not be read:" : " files could not be read:";
  return text + fault_lines(unread);
}

}  // namespace tallowmere
