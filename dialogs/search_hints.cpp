#include "dialogs/search_hints.h"

namespace tallowmere {

std::string_view search_hints() {
  return "All Words lists the files that hold every word you type, anywhere in the file.\n"
         "Any Word lists the files that hold at least one of them.\n"
         "Single Phrase looks for the text exactly as you type it, blanks and double quotes "
         "included; it may stand inside a longer word.\n"
         "Proximity Words looks near the first word: the words after it must stand within the "
         "range that Set Proximity gives, counted in characters before and after it. ANY word: one "
         "of them is enough; ALL words: each of them must be there.\n"
         "\n"
         "Words (not for Single Phrase)\n"
         "cat: the whole word only, not catalog.\n"
         "\"cat\": inside longer words, too.\n"
         "\"big dog\": one term, blank included.\n"
         "Letters only make words longer: digits, underscores and punctuation end a word.\n"
         "\n"
         "Tick Match Upper & Lower Case to tell Cat from cat. Leave Find empty to list every file "
         "of the chosen folder, types and dates.\n"
         "\n"
         "File types (Where To Search)\n"
         "Type an extension such as txt. A ? stands for any one character, as in w??; it cannot "
         "be typed, but it can be pasted.\n"
         "\n"
         "Stop\n"
         "While a search runs, the Search button reads Stop. Click it or press Esc: "
         "the files found so far stay listed.";
}

}  // namespace tallowmere
