#include "help/help_pages.h"

namespace tallowmere {
namespace {

using enum HelpItemKind;

constexpr HelpItem items[] = {
    {topic, "Find:   software release upgrade",
     "Three words, each found as a whole word.\n\n"
     "All Words: files that contain all three.\n"
     "Any Word: files that contain one of them or more.\n"
     "Single Phrase: files that contain just this text, with one space between the words.\n"
     "Proximity Words: files in which release or upgrade occurs near software; both of them, with "
     "ALL words."},
    {topic, "Find:   \"essential utility\" fast \"search engine\"",
     "Two phrases and a word.\n\n"
     "All Words: files that contain both phrases and the word fast.\n"
     "Any Word: files that contain one of the three or more.\n"
     "Proximity Words: files in which fast or search engine occurs near essential utility.\n\n"
     "Phrases may end inside longer words: search engines is found, too; faster is not."},
    {topic, "Find:   \"photo\"",
     "A part of a word: finds photo, photos, photograph and telephoto.\n\n"
     "Without the quotes, only the whole word photo is found. In a single phrase, leave the "
     "quotes out: there they would be part of the text to find."},
    {topic, "Find:   invoice \"2019-\"",
     "A word and the beginning of a date.\n\n"
     "All Words: files that contain the word invoice and, anywhere, text such as 2019-03-31.\n"
     "Proximity Words: files in which such a text occurs near the word invoice."},
    {topic, "Find:   she said \"yes\"",
     "Single Phrase: files that contain this text with its quotation marks.\n\n"
     "In the other searches, the quotes are not part of the text: they make yes a phrase, which "
     "is found in yesterday, too."},
    {topic, "Find:   Page Turner",
     "Two names. Tick Match Upper & Lower Case to pass over page and turner.\n\n"
     "Proximity Words with 0 characters before and 10 after finds Page Turner, Page B. Turner and "
     "Page, Turner, but not Turner Page."},
    {topic, "Find:",
     "Nothing: finds every file in the chosen folder that has one of the chosen types and dates."},
};
static_assert(is_complete(items));

}  // namespace

HelpPage criteria_examples() {
  return {"Search Criteria Examples", items};
}

}  // namespace tallowmere
