#include "launch/key_script.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "engine/compiled_search.h"
#include "engine/letter_case.h"
#include "engine/search_page.h"
#include "engine/unicode.h"

namespace tallowmere {
namespace {

enum class Op { activate, wait, send, find_text, whole_word, match_case, send_wait };

struct Line {
  Op op;
  std::string_view text{};
  double seconds = 0;
};

using enum Op;

constexpr Line wordpad[] = {
    {activate, "WordPad"}, {wait, {}, 1.4},      {send, "^f"},       {wait, {}, 0.4},
    {find_text},           {whole_word, "%w"},   {match_case, "%c"}, {send_wait, "~"},
    {wait, {}, 1.4},       {send_wait, "{ESC}"},
};

constexpr Line write[] = {
    {activate, "Write"}, {send, "{ESC}"}, {wait, {}, 1.4},      {send, "%n~"},
    {wait, {}, 0.4},     {find_text},     {whole_word, "%w"},   {match_case, "%c"},
    {send_wait, "~"},    {wait, {}, 1.4}, {send_wait, "{ESC}"},
};

constexpr Line notepad[] = {
    {activate, "Notepad"}, {send, "%s~"},   {find_text},           {match_case, "%c"},
    {send_wait, "~"},      {wait, {}, 1.5}, {activate, "Notepad"}, {send_wait, "{ESC}"},
};

constexpr Line cardfile[] = {
    {activate, "Cardfile"},     {send, "%sf~"},         {find_text},    {match_case, "%c"},
    {send_wait, "~{ESC}{ESC}"}, {activate, "Cardfile"}, {send, "{F4}"}, {find_text},
    {send_wait, "~{ESC}"},
};

constexpr Line msworks[] = {
    {activate, "Microsoft Works"},
    {send, "%ef"},
    {find_text},
    {whole_word, "%w"},
    {match_case, "%c"},
    {send_wait, "~"},
};

struct Script {
  std::string_view app;
  std::span<const Line> lines;
};

constexpr Script scripts[] = {
    {"wordpad", wordpad},   {"write", write},     {"notepad", notepad},
    {"cardfile", cardfile}, {"msworks", msworks},
};

/// Returns the first piece without control characters.
std::string first_line(std::string_view text) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
  const auto* begin = std::find_if_not(text.begin(), text.end(), is_control);
  return std::string(begin, std::find_if(begin, text.end(), is_control));
}

ScriptStep step_of(const Line& line, const std::string& keys) {
  using Kind = ScriptStep::Kind;
  const std::string text(line.text);
  switch (line.op) {
    case activate:
      return {Kind::activate, text};
    case wait:
      return {Kind::wait, {}, line.seconds};
    case find_text:
      return {Kind::send_text, keys};
    case send_wait:
      return {Kind::send_wait, text};
    case send:
    case whole_word:
    case match_case:
      break;
  }
  return {Kind::send, text};
}

/// Returns the first term's text, as a search of Unicode text or of the code page has it.
FindRequest first_term(const SearchCriteria& search, const CodePage& page) {
  if (search.unicode_text) {
    const SearchPage unicode(search, page);
    const CompiledSearch compiled(search, unicode);
    if (!compiled.terms.empty() && compiled.representable.front()) {
      std::string text;
      for (const char c : compiled.terms.front()) {
        append_utf8(text, unicode.character(static_cast<Byte>(c)));
      }
      return {text, compiled.whole_word.front()};
    }
  }
  const CompiledSearch compiled(search, page);
  if (compiled.terms.empty()) return {};
  return {from_page_bytes(compiled.terms.front(), page), compiled.whole_word.front()};
}

}  // namespace

FindRequest find_request(const SearchCriteria& search, const CodePage& page) {
  const bool phrase = search.search_type == search_phrase;
  FindRequest request = phrase ? FindRequest{search.criteria} : first_term(search, page);
  request.text = first_line(request.text);
  request.match_case = search.match_case;
  return request;
}

std::string escape_keys(std::string_view text) {
  constexpr std::string_view special = "^%~+(){}[]";
  std::string keys;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    const char32_t code_point = next_code_point(text, position);
    const std::string_view character = text.substr(start, position - start);
    if (special.find(character) != std::string_view::npos) {
      keys.append("{").append(character).append("}");
    } else {
      if (!has_upper_case(code_point)) keys += '+';
      keys += character;
    }
  }
  return keys;
}

std::vector<ScriptStep> build_script(std::string_view app, const FindRequest& request) {
  std::vector<ScriptStep> steps;
  const auto* script = std::find_if(std::begin(scripts), std::end(scripts),
                                    [app](const Script& entry) { return entry.app == app; });
  if (script == std::end(scripts) || request.text.empty()) return steps;
  const std::string keys = escape_keys(request.text);
  for (const Line& line : script->lines) {
    if (line.op == whole_word && !request.whole_word) continue;
    if (line.op == match_case && !request.match_case) continue;
    steps.push_back(step_of(line, keys));
  }
  return steps;
}

}  // namespace tallowmere
