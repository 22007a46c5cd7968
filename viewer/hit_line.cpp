#include "viewer/hit_line.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <utility>

#include "engine/text_encoding.h"
#include "engine/unicode.h"
#include "viewer/character_text.h"
#include "viewer/hit_finder.h"

namespace tallowmere {

namespace {

constexpr std::size_t longest_read = 1 << 20;
constexpr std::size_t longest_line = 100;  ///< units of UTF-16
constexpr std::size_t longest_lead = 30;   ///< of them those before the hit

/// A text with the units that its first hit takes.
struct Found {
  std::u16string units;
  std::size_t begin = 0;
  std::size_t end = 0;  ///< the same as `begin` without a hit
};

std::string part_of(std::string_view text, std::int64_t begin, std::int64_t count) {
  begin = std::clamp<std::int64_t>(begin, 0, std::ssize(text));
  count = std::max<std::int64_t>(count, 0);
  return std::string(text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(count)));
}

Found find_bytes(std::string_view text, const HitFinder& finder, const CodePage& page) {
  const auto window = [text](std::int64_t position, std::int64_t length) {
    return part_of(text, position - 1, length);
  };
  const Hit hit =
      finder.get_highlight_position({text, std::ssize(text), std::ssize(text), window}, 1);
  if (hit.position == 0) return {};
  Found found;
  for (const char byte : text) {
    found.units += static_cast<char16_t>(page.to_unicode(static_cast<unsigned char>(byte)));
  }
  found.begin = static_cast<std::size_t>(hit.position - 1);
  found.end = found.begin + static_cast<std::size_t>(hit.length);
  return found;
}

Found find_characters(std::string_view text, TextEncoding encoding, const HitFinder& finder,
                      const CodePage& page) {
  const CharacterText characters(text, encoding);
  const std::string bytes = characters.search_bytes(*finder.search_page());
  const auto around = [&bytes](std::int64_t position, std::int64_t before, std::int64_t count) {
    return part_of(bytes, position - 1 - before, count);
  };
  const Hit hit = finder.get_highlight_position({.text = bytes,
                                                 .file_location = std::ssize(bytes),
                                                 .file_length = std::ssize(bytes),
                                                 .read_around = around},
                                                1);
  if (hit.position == 0) return {};
  UnitText units = to_units(text, 0, encoding, page);
  const auto unit_of = [&](std::int64_t character) {
    const auto byte = static_cast<std::int32_t>(characters.byte_at(character));
    return static_cast<std::size_t>(std::ranges::lower_bound(units.origin, byte) -
                                    units.origin.begin());
  };
  const std::size_t begin = unit_of(hit.position - 1);
  const std::size_t end = unit_of(hit.position - 1 + hit.length);
  return {std::move(units.units), begin, end};
}

bool ends_line(char16_t unit) {
  return unit == u'\r' || unit == u'\n';
}

/// True for control characters, and for those that would turn or break the line where it shows.
bool is_control(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || (unit >= 0x2028 && unit <= 0x202E) ||
         (unit >= 0x2066 && unit <= 0x2069);
}

std::string line_around(const Found& found) {
  const std::u16string_view units = found.units;
  std::size_t begin = found.begin;
  while (begin > 0 && found.begin - begin < longest_lead && !ends_line(units[begin - 1])) --begin;
  if (is_second_of_pair(units, begin)) --begin;
  std::size_t end = found.begin;
  while (end < units.size() && end - begin < longest_line && !ends_line(units[end])) ++end;
  if (is_second_of_pair(units, end)) --end;

  std::u16string line = without_lone_halves(units.substr(begin, end - begin));
  std::ranges::replace_if(line, is_control, u' ');
  line.erase(0, std::min(line.find_first_not_of(u' '), line.size()));
  line.erase(line.find_last_not_of(u' ') + 1);
  if (begin > 0 && !ends_line(units[begin - 1])) line.insert(0, u"\u2026");
  if (end < units.size() && !ends_line(units[end])) line += u'\u2026';
  return to_utf8(line);
}

}  // namespace

std::string first_hit_line(std::string_view text, const SearchCriteria& search,
                           const CodePage& page) {
  const TextEncoding encoding = search.unicode_text
                                    ? find_text_encoding(text.substr(0, encoding_sample))
                                    : TextEncoding::code_page;
  text.remove_prefix(mark_length(encoding, text));
  const HitFinder finder(search, page);
  if (finder.empty()) return {};
  Found found;
  if (encoding == TextEncoding::code_page) {
    found = find_bytes(text, finder, page);
  } else if (finder.unicode() != nullptr) {
    found = find_characters(text, encoding, *finder.unicode(), page);
  }
  return found.begin == found.end ? std::string() : line_around(found);
}

/// The call that reads one file and finds its line.
class HitLineReader::LineCall : public CallThread::Call {
 public:
  LineCall(const FileSystem& files, const CodePage& page, std::string folder, std::string name,
           const SearchCriteria& search)
      : files_(files),
        page_(page),
        folder_(std::move(folder)),
        name_(std::move(name)),
        search_(search) {}

  void make() override {
    const std::unique_ptr<FileReader> file = files_.reader();
    std::string text(longest_read, '\0');
    std::size_t got = 0;
    if (file->open(folder_, name_)) return;
    if (file->read(reinterpret_cast<unsigned char*>(text.data()), text.size(), got)) return;
    file->close();
    line = first_hit_line(std::string_view(text).substr(0, got), search_, page_);
  }

  std::string line;

 private:
  const FileSystem& files_;
  const CodePage& page_;
  const std::string folder_;
  const std::string name_;
  const SearchCriteria search_;
};

// Reports no failure: the line is only shown in a tool tip.
std::string HitLineReader::line_of(const std::string& folder, const std::string& name,
                                   const SearchCriteria& search) {
  if (search.criteria.empty() || !made_within(Milliseconds(0))) return {};
  try {
    if (!thread_) thread_ = std::make_unique<CallThread>(files_);
    const auto call = std::make_shared<LineCall>(files_, page_, folder, name, search);
    thread_->begin(call);
    return made_within(patience_) ? std::move(call->line) : std::string();
  } catch (const std::exception&) {
    return {};
  }
}

/// True when no call is under way, or the last one ended in time.
bool HitLineReader::made_within(Milliseconds time) {
  try {
    return !thread_ || thread_->made_within(time);
  } catch (const std::exception&) {
    return true;
  }
}

}  // namespace tallowmere
