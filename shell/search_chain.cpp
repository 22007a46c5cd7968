#include "shell/search_chain.h"

#include <cstddef>

#include "engine/unicode.h"

namespace tallowmere {
namespace {

constexpr std::size_t most_steps = 6;
constexpr int longest_step = 60;  ///< in characters

/// One line of bounded length.
std::string step_text(std::string_view criteria) {
  std::string text;
  int characters = 0;
  for (std::size_t i = 0; i < criteria.size();) {
    if (characters++ == longest_step) return text + "…";
    const char32_t character = next_code_point(criteria, i);
    append_utf8(text, character < U' ' ? U' ' : character);
  }
  const bool blank = text.find_first_not_of(' ') == std::string::npos;
  return blank ? "all files" : text;
}

}  // namespace

void SearchChain::new_search(std::string_view criteria) {
  steps_ = {step_text(criteria)};
  left_out_ = false;
}

void SearchChain::narrowed(std::string_view criteria) {
  if (steps_.size() == most_steps) {
    steps_.erase(steps_.begin() + 1);
    left_out_ = true;
  }
  steps_.push_back(step_text(criteria));
}

std::string SearchChain::text() const {
  if (steps_.size() < 2) return {};
  std::string text = steps_.front() + (left_out_ ? ", …" : "");
  for (std::size_t i = 1; i < steps_.size(); ++i) text += ", then " + steps_[i];
  return text;
}

}  // namespace tallowmere
