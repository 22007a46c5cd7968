#include "shell/text_settings.h"

#include <algorithm>

namespace tallowmere {
namespace {

constexpr std::string_view marks = "%;=|";
constexpr std::string_view digits = "0123456789ABCDEF";

bool is_escaped(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 || code == 0x7F || marks.find(character) != std::string_view::npos;
}

void append_escaped(std::string& text, std::string_view value) {
  for (const char character : value) {
    if (!is_escaped(character)) {
      text += character;
      continue;
    }
    const auto code = static_cast<unsigned char>(character);
    text += {'%', digits[code / 16], digits[code % 16]};
  }
}

/// The character whose escape begins at `at`; NUL when none does.
char escaped_at(std::string_view text, std::size_t at) {
  if (text[at] != '%' || text.size() - at < 3) return '\0';
  const std::size_t high = digits.find(text[at + 1]);
  const std::size_t low = digits.find(text[at + 2]);
  if (high == std::string_view::npos || low == std::string_view::npos) return '\0';
  const char character = static_cast<char>(high * 16 + low);
  return is_escaped(character) ? character : '\0';
}

std::string unescaped(std::string_view text) {
  std::string value;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char escaped = escaped_at(text, at);
    value += escaped != '\0' ? escaped : text[at];
    if (escaped != '\0') at += 2;
  }
  return value;
}

}  // namespace

TextSettings::TextSettings(std::string_view text) {
  while (!text.empty()) {
    const std::string_view field = text.substr(0, text.find(';'));
    text.remove_prefix(std::min(text.size(), field.size() + 1));
    const std::size_t equals = field.find('=');
    if (equals == std::string_view::npos) continue;
    values_.emplace(unescaped(field.substr(0, equals)), unescaped(field.substr(equals + 1)));
  }
}

std::string TextSettings::get_setting(std::string_view key) {
  const auto found = values_.find(key);
  return found == values_.end() ? std::string() : found->second;
}

void TextSettings::save_setting(std::string_view key, const std::string& value) {
  values_.insert_or_assign(std::string(key), value);
}

std::string TextSettings::text() const {
  std::string text;
  for (const auto& [key, value] : values_) {
    if (value.empty()) continue;
    if (!text.empty()) text += ';';
    append_escaped(text, key);
    text += '=';
    append_escaped(text, value);
  }
  return text;
}

}  // namespace tallowmere
