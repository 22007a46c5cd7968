#include "shell/file_info.h"

namespace tallowmere {

std::string window_caption(std::string_view filename) {
  std::string caption = " ";
  if (!filename.empty()) caption.append(filename).append(" - ");
  return caption + "Tallowmere 32";
}

std::string file_info_text(std::int64_t size, std::string_view separator, std::string_view moment) {
  std::string digits = std::to_string(size);
  for (std::size_t place = digits.size(); place > 3;) {
    place -= 3;
    digits.insert(place, separator);
  }
  return digits.append(" bytes  ").append(moment);
}

}  // namespace tallowmere
