#include "win32/long_path.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "engine/unicode.h"

namespace tallowmere::win32 {

namespace {

bool is_drive(std::u16string_view path) {
  return path.size() >= 2 && path[1] == u':';
}

/// Returns the full path of a short relative one, such as "." or "C:.", by the current folders.
std::u16string full_path(const std::u16string& path) {
  const DWORD needed = GetFullPathNameW(wide(path), 0, nullptr, nullptr);
  std::u16string result(needed, u'\0');
  auto* buffer = reinterpret_cast<wchar_t*>(result.data());
  result.resize(GetFullPathNameW(wide(path), needed, buffer, nullptr));
  return result;
}

/// Appends the components of `rest` to `root`, above which ".." cannot lead.
std::u16string join(std::u16string root, std::u16string_view rest) {
  const std::size_t fixed = root.size();
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(u'\\'), rest.size());
    const std::u16string_view part = rest.substr(0, end);
    const bool closed = end < rest.size();
    if (part == u"..") {
      const std::size_t cut = root.size() > fixed ? root.rfind(u'\\', root.size() - 2) : fixed;
      root.resize(std::max(fixed, cut + 1));
    } else if (!part.empty() && part != u".") {
      root += part;
      if (closed) root += u'\\';
    }
    rest.remove_prefix(closed ? end + 1 : end);
  }
  return root;
}

}  // namespace

std::u16string long_path(std::string_view folder) {
  std::u16string path = to_utf16(folder);
  if (path.starts_with(u"\\\\?\\") || path.starts_with(u"\\\\.\\")) return path;
  std::replace(path.begin(), path.end(), u'/', u'\\');
  const std::u16string_view all = path;
  if (path.starts_with(u"\\\\")) return join(u"\\\\?\\UNC\\", all.substr(2));
  if (is_drive(path) && path.size() > 2 && path[2] == u'\\') {
    return join(u"\\\\?\\" + path.substr(0, 3), all.substr(3));
  }
  const std::size_t drive = is_drive(path) ? 2 : 0;
  const bool from_root = path.size() > drive && path[drive] == u'\\';
  std::u16string base = full_path(path.substr(0, drive) + (from_root ? u"\\" : u"."));
  if (!base.ends_with(u'\\')) base += u'\\';
  if (base.starts_with(u"\\\\")) return join(u"\\\\?\\UNC\\", base.substr(2) + path.substr(drive));
  return join(u"\\\\?\\" + base.substr(0, 3), base.substr(3) + path.substr(drive));
}

}  // namespace tallowmere::win32
