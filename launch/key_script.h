#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/code_page.h"
#include "engine/search_criteria.h"

namespace tallowmere {

/// What a launched editor is to find.
struct FindRequest {
  std::string text;  ///< one line of UTF-8; empty: nothing that could be typed
  bool whole_word = false;
  bool match_case = false;
};

/// Makes the request from the current search: the first term, or the whole phrase. From a text with
/// control characters, which no Find dialog takes, it takes the first piece without them.
FindRequest find_request(const SearchCriteria& search, const CodePage& page);

/// Writes a text in keystroke notation. Characters with a meaning there are put in braces; those
/// without an upper-case form (capitals, digits, spaces, punctuation) get a "+".
std::string escape_keys(std::string_view text);

struct ScriptStep {
  enum class Kind {
    activate,   ///< bring the window with the title `text` to the front
    wait,       ///< let `seconds` go by
    send,       ///< send the keys `text`
    send_text,  ///< send the keys `text`, the text to find, to a Find dialog and nothing else
    send_wait   ///< send the keys `text` and wait until they have been processed
  };
  Kind kind;
  std::string text;
  double seconds = 0;
};

/// Returns the steps that make the program `app` (an app_base_name) find the text; empty when it is
/// not one of the known editors or there is no text.
std::vector<ScriptStep> build_script(std::string_view app, const FindRequest& request);

}  // namespace tallowmere
