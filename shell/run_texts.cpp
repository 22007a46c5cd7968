#include "shell/run_texts.h"

#include <algorithm>
#include <cstdio>

namespace tallowmere {
namespace {

constexpr double shortest_elapsed = 0.01;
constexpr std::size_t most_unread_lines = 10;

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

std::string unread_tool_tip(const std::vector<UnreadFile>& unread) {
  if (unread.empty()) return {};
  std::string text = std::to_string(unread.size());
  text += unread.size() == 1 ? " file could not be read:" : " files could not be read:";
  const std::size_t lines = std::min(unread.size(), most_unread_lines);
  for (std::size_t i = 0; i < lines; ++i) {
    text += "\n" + unread[i].path + ": " + unread[i].reason;
  }
  if (unread.size() > lines) text += "\nand " + std::to_string(unread.size() - lines) + " more";
  return text;
}

}  // namespace tallowmere
