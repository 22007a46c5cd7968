#include "help/help_pages.h"

namespace tallowmere {
namespace {

using enum HelpItemKind;

constexpr HelpItem items[] = {
    {topic, "What is hypertangent infosurfing?",
     "Going off at a tangent while you read, without losing your way.\n\n"
     "Select any text in the viewer and press HyperFind: it becomes the text to find, and Find "
     "Next and Find Prev step through all its places in the file. From there, select the next "
     "text that catches your eye.\n\n"
     "Restore Find brings your own criteria back; after it, Restore Hyper brings back the last "
     "text of HyperFind."},
    {topic, "What's the big deal about multitasking?",
     "You need not wait for a search. While it runs you can work in other programs, and the "
     "files found so far are listed as they come, and the line below the viewer shows the folder "
     "that is being searched.\n\n"
     "With Minimize On, Tallowmere gets out of your way meanwhile; with Sound On, a sound tells "
     "you that it is done. Both are in the Search menu. Stop or Esc ends a search early and keeps "
     "what it has found."},
    {topic, "Can I view files that do not contain any text, like picture files?",
     "Yes, any file can be searched and viewed. The viewer shows the characters that the file's "
     "bytes stand for, with dots in place of those that cannot be shown, so names and notes inside "
     "pictures and programs can be read.\n\n"
     "To see the picture itself, press Launch. A double click on a .wav file plays it."},
    {topic, "How do I search an entire disk?",
     "Press Search, then Where To Search. Choose the drive, double-click its topmost folder, such "
     "as C:\\, and tick Search SubFolders. Tick All Files, or only the types that you want: the "
     "fewer files, the faster. Then press OK and Begin.\n\n"
     "When nothing is found, the line below the viewer says what left files out. A link there "
     "lists the files that could not be read."},
    {topic, "Do I have to click my way to a folder?",
     "No. Type or paste its path at Folder in Where To Search and press Enter: C:\\Papers, "
     "\\\\server\\share or %USERPROFILE%\\Documents. The path of a file stands for its folder.\n\n"
     "Or drop the folder, or a file in it, on the main window: the next New Search goes through "
     "it."},
    {topic, "How do I leave out folders such as .git, or backup copies?",
     "Press Search, then Where To Search, and type their names at Leave out, separated by \";\", "
     "such as .git; node_modules; *.bak. * stands for any characters and ? for one. A folder with "
     "such a name is not entered.\n\n"
     "Hidden and system files, and files that are only in the cloud, are searched when Hidden "
     "Files "
     "or Online Files is ticked."},
    {topic, "Can I find and view a file without searching its contents?",
     "Yes. Leave the criteria empty: every file is listed that lies in the chosen folder and has "
     "one of the chosen types and dates. Then click on the one that you want to read."},
    {topic, "What do the marks in the viewer mean?",
     "Every hit on view is marked. The selected one is where Find Next and Find Prev have stopped; "
     "below the viewer you read which one it is, such as hit 3 of 17. Hits are counted while you "
     "do "
     "nothing else, in files of up to 64 MB."},
    {topic, "Are there any secret shortcuts?",
     "Anywhere:\n"
     "Ctrl+F: starts a search\n"
     "F3, Shift+F3: next and previous hit\n"
     "Esc: stops a search\n\n"
     "In the list:\n"
     "Enter or double click: shows the file, then its next hit\n"
     "Shift+Enter: launches it\n"
     "F2: renames it\n"
     "Del: deletes the selected files\n"
     "Ctrl+A: selects all files\n"
     "Ctrl+C: copies the names of the selected files\n\n"
     "In the viewer:\n"
     "Space or Enter: next hit\n"
     "Backspace or Esc: back to the list\n"
     "Ctrl+C: copies the selected text\n"
     "Ctrl and the mouse wheel: size of the font\n\n"
     "The right mouse button opens a menu in both. In the search criteria, F1 opens the hints and "
     "F4 "
     "the recent searches."},
    {topic, "Can I edit or modify the file being viewed?",
     "No. Files that are searched and viewed are only read, so nothing can happen to them. Press "
     "Launch to edit the file in the application that belongs to its type. When you come back, "
     "Tallowmere notices that the file has changed."},
    {topic, "Can I see why a file was found without opening it?",
     "Rest the mouse on its row. A tip shows the whole path, the size and date and the first line "
     "with a hit, when that is within the first megabyte of the file and can be read at once."},
    {topic, "Can I make the list larger?",
     "Yes. Drag its lower edge with the mouse, just above the count of the files: the viewer gets "
     "the rest of the window. The list keeps its part of the window, and the columns stay as wide "
     "as you make them, also the next time. A double click on the edge goes back to how both were "
     "at first."},
    {topic, "Can I change the font used to display the file's contents?",
     "Yes, with Change Font, Larger Font and Smaller Font in the Display menu. Turning the mouse "
     "wheel with Ctrl held down over the viewer changes the size, too. The font is kept for the "
     "next time. Columns line up only in fixed-pitch fonts, which are marked."},
    {topic, "What does \"Minimize On\" do?",
     "While it is checked in the Search menu, Tallowmere's window is minimized as soon as a search "
     "begins, and comes back to the front when the search has ended."},
    {topic, "What does \"Find on Launch\" do?",
     "While it is checked in the Search menu, Launch not only opens the file but also types the "
     "keys that make the application find your text: the first word of the criteria, or the whole "
     "single phrase.\n\n"
     "It knows Notepad, WordPad, Write, Cardfile and Microsoft Works. Leave keyboard and mouse "
     "alone for these few seconds: when the application's window is not in front, the typing "
     "stops."},
    {topic, "What can be placed onto the clipboard?",
     "From the Edit menu:\n"
     "Copy Text: the text selected in the viewer.\n"
     "Append Text: the same, added to the text that is on the clipboard already, as long as both "
     "together stay below 65,000 characters.\n"
     "Copy File Name: folder and name of the selected file, or of all selected files, each on a "
     "line of its own.\n\n"
     "The other way round, Paste in the search criteria takes the text to find from the "
     "clipboard."},
    {topic, "What else can be done with a file, or with the list?",
     "More in the File menu, and in the menu of the right mouse button, opens the folder of the "
     "selected file in Explorer, opens the file with another application, and shows its "
     "properties.\n\n"
     "Save List writes the whole list, in its order, to a file: as text with one path a line, or "
     "as a table (CSV) with name, date, size and folder, which spreadsheets open."},
    {topic, "What is the difference between \"Delete\" and \"Remove\" a file?",
     "Delete takes the selected files off the disk. You are asked first, and they go to the "
     "Recycle Bin where there is one.\n\n"
     "Remove only takes them out of the list: the files themselves are not touched, and the next "
     "search may list them again."},
    {topic, "What does \"Unicode Text\" do?",
     "While it is checked in the Search menu, files in UTF-8 and UTF-16, which most of today's "
     "programs write, are searched and shown as the characters that they hold, in any script. The "
     "encoding of the file in the viewer stands at the right below it.\n\n"
     "While it is not checked, all files are read byte by byte in the system's code page. When a "
     "search may have missed something by that, the line below the viewer says so. Press Read "
     "Unicode text there: it checks the entry and makes the same search once more.\n\n"
     "Text packed inside documents (.docx, .pdf, .zip) is searched as the bytes that it is, so "
     "hardly any of its words are found."},
};
static_assert(is_complete(items));

}  // namespace

HelpPage quick_answers() {
  return {"Quick Answers", items};
}

}  // namespace tallowmere
