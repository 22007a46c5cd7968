#include "win32/dialog_template.h"

#include <cstdlib>
#include <cstring>

#include "win32/dpi.h"

namespace tallowmere::win32 {

namespace {

/// Walks over the words of a template; reads 0 beyond its end and remembers that.
class TemplateReader {
 public:
  explicit TemplateReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  std::size_t position() const { return position_; }
  bool overrun() const { return position_ > bytes_.size(); }
  void skip(std::size_t count) { position_ += count; }

  WORD word() {
    WORD value = 0;
    if (position_ + sizeof value <= bytes_.size()) {
      std::memcpy(&value, bytes_.data() + position_, sizeof value);
    }
    position_ += sizeof value;
    return value;
  }

  /// Skips a text with its final zero, or 0xFFFF and a number.
  void skip_name() {
    WORD first = word();
    if (first == 0xFFFF) {
      skip(sizeof(WORD));
      return;
    }
    while (first != 0 && !overrun()) first = word();
  }

 private:
  std::span<const std::byte> bytes_;
  std::size_t position_ = 0;
};

constexpr std::size_t style_offset = 12;
constexpr std::size_t header_size = 26;  ///< up to the menu's name

std::size_t aligned(std::size_t position) {
  return (position + 3) & ~std::size_t{3};
}

void append(std::vector<std::byte>& bytes, const void* data, std::size_t size) {
  const std::byte* from = static_cast<const std::byte*>(data);
  bytes.insert(bytes.end(), from, from + size);
}

void append_font(std::vector<std::byte>& bytes, const TemplateFont& font) {
  const WORD points_and_weight[2] = {font.points, FW_NORMAL};
  const BYTE italic_and_charset[2] = {FALSE, DEFAULT_CHARSET};
  append(bytes, points_and_weight, sizeof points_and_weight);
  append(bytes, italic_and_charset, sizeof italic_and_charset);
  append(bytes, font.face.c_str(), (font.face.size() + 1) * sizeof(wchar_t));
  bytes.resize(aligned(bytes.size()));
}

}  // namespace

TemplateFont message_font() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) {
    return {L"MS Shell Dlg 2", 8};
  }
  const LOGFONTW& font = metrics.lfMessageFont;
  const int points = MulDiv(std::abs(static_cast<int>(font.lfHeight)), 72, system_dpi());
  return {font.lfFaceName, static_cast<WORD>(points > 0 ? points : 8)};
}

std::vector<std::byte> with_font(std::span<const std::byte> source, const TemplateFont& font) {
  TemplateReader reader(source);
  const WORD version = reader.word();
  const WORD signature = reader.word();
  if (version != 1 || signature != 0xFFFF) return {source.begin(), source.end()};
  reader.skip(style_offset - reader.position());
  const WORD style = reader.word();
  if ((style & DS_SETFONT) == 0) return {source.begin(), source.end()};
  reader.skip(header_size - reader.position());
  for (int name = 0; name < 3; ++name) reader.skip_name();  // menu, class, caption
  const std::size_t font_start = reader.position();
  reader.skip(3 * sizeof(WORD));
  reader.skip_name();
  const std::size_t items_start = aligned(reader.position());
  if (items_start > source.size()) return {};

  std::vector<std::byte> result(source.begin(),
                                source.begin() + static_cast<std::ptrdiff_t>(font_start));
  append_font(result, font);
  append(result, source.data() + items_start, source.size() - items_start);
  return result;
}

std::vector<std::byte> load_dialog_template(int id) {
  const HMODULE module = GetModuleHandleW(nullptr);
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), RT_DIALOG);
  if (found == nullptr) return {};
  const void* data = LockResource(LoadResource(module, found));
  if (data == nullptr) return {};
  return with_font({static_cast<const std::byte*>(data), SizeofResource(module, found)},
                   message_font());
}

}  // namespace tallowmere::win32
