#include "help/help_pages.h"

namespace tallowmere {
namespace {

using enum HelpItemKind;

constexpr HelpItem items[] = {
    {paragraph,
     "What must a file contain to be found? There are four ways to ask, and ways to combine them:"},
    {topic, "Logical AND Search",
     "All Words (space = AND) finds the files that contain every one of your words, anywhere and "
     "in any order. Each space between two words means AND.\n\n"
     "big dog finds the files in which both big and dog occur."},
    {topic, "Logical OR Search",
     "Any Word (space = OR) finds the files that contain at least one of your words. Each space "
     "between two words means OR.\n\n"
     "dog hound finds the files in which dog occurs, or hound, or both."},
    {topic, "Single PHRASE Search",
     "Single Phrase (space = space) finds the files that contain the text just as you type it. "
     "Spaces and double quotes are part of it, also at its beginning and end. It may begin or end "
     "inside a longer word.\n\n"
     "big dog finds big dogs, but not big red dog."},
    {topic, "Proximity NEAR Search",
     "Proximity Words (space = NEAR) finds the files in which your other words occur near the "
     "first one.\n\n"
     "Set Proximity sets how near: up to so many characters before and after the first word, from "
     "0 to 1000 each. With ANY word, one of the other words is enough; with ALL words, each of "
     "them must occur there.\n\n"
     "big dog house, with 0 before and 50 after, finds big followed by dog or house within 50 "
     "characters."},
    {topic, "Combination Searches",
     "You can mix words and phrases, unless you search for a single phrase:\n"
     "\"red dog\" cat\n\n"
     "To combine different ways of asking, search twice. When files are listed, Search offers to "
     "narrow them: \"Yes, search all matched files.\" keeps only those that match the new "
     "criteria, too. Find dog or hound with Any Word first, then big and red with All Words. Rest "
     "the mouse on the count to see what the list was narrowed by.\n\n"
     "Dates To Search applies when you narrow the list, too; the file types of Where To Search "
     "apply to new searches only."},
    {paragraph, "The criteria are made of"},
    {topic, "words",
     "Except in a single phrase, a word is found as a whole word only: no letter comes right "
     "before or after it.\n\n"
     "cat finds cat, cat5 and _cat_, but not cats or concat. Digits, underscores and punctuation "
     "are not letters; accented letters are. In a script that is written without spaces, put "
     "words in double quotes.\n\n"
     "Upper and lower case are the same, accented letters included, unless you tick Match Upper & "
     "Lower Case. Letters are compared one by one: ß is not found by SS.",
     true},
    {paragraph, "and", {}, true},
    {topic, "phrases",
     "Text in double quotes is one phrase, spaces included. It may begin or end inside longer "
     "words, so quotes help to find parts of words, too.\n\n"
     "\"cat\" finds cats and concat.\n"
     "\"big dog\" finds big dogs, but not big and dog apart, nor on two lines.\n\n"
     "A double quote without a second one is a character like any other.",
     true},
    {paragraph, "See how they work together:"},
    {link, "Examples", {}, true},
};
static_assert(is_complete(items));

}  // namespace

HelpPage searching_hints() {
  return {"Searching Hints", items};
}

}  // namespace tallowmere
