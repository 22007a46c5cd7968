#include "results/fault_lines.h"

#include <algorithm>

namespace tallowmere {
namespace {

constexpr std::size_t most_lines = 10;

}  // namespace

std::string fault_lines(const std::vector<UnreadFile>& files) {
  std::string text;
  const std::size_t lines = std::min(files.size(), most_lines);
  for (std::size_t i = 0; i < lines; ++i) text += "\n" + files[i].path + ": " + files[i].reason;
  if (files.size() > lines) text += "\nand " + std::to_string(files.size() - lines) + " more";
  return text;
}

}  // namespace tallowmere
