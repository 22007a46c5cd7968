#pragma once

#include <span>
#include <string_view>

#include "version.h"

namespace tallowmere {

enum class HelpItemKind {
  paragraph,
  topic,  ///< clicked, it shows its answer
  link,   ///< clicked, it opens another screen
};

struct HelpItem {
  HelpItemKind kind;
  std::string_view text;
  std::string_view answer = {};  ///< of a topic; lines end in "\n"
  bool same_line = false;        ///< goes on where the item before it ends
};

/// Every topic has an answer, nothing else has one, and no caption of a topic marks a key by a "&".
constexpr bool is_complete(std::span<const HelpItem> items) {
  for (const HelpItem& item : items) {
    const bool is_topic = item.kind == HelpItemKind::topic;
    if (item.text.empty() || item.answer.empty() == is_topic) return false;
    if (is_topic && item.text.find('&') != item.text.npos) return false;
  }
  return true;
}

/// One help screen: its items from top to bottom. Texts are UTF-8.
struct HelpPage {
  std::string_view title;
  std::span<const HelpItem> items;
};

HelpPage quick_answers();
HelpPage searching_hints();  ///< has one link: to the examples
HelpPage criteria_examples();

/// The program's name and version, and what it is.
inline constexpr std::string_view about_title = "Tallowmere 32 - Version " TALLOWMERE_VERSION;
inline constexpr std::string_view about_text =
    "Searches the contents of many files at once for words and phrases, lists the files that "
    "contain them, and shows every hit.\n\n"
    "The program only reads your files, unless you copy, move, rename or delete them.";

}  // namespace tallowmere
