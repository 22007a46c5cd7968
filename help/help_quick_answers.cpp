#include "help/help_pages.h"

namespace tallowmere {
namespace {

using enum HelpItemKind;

constexpr HelpItem items[] = {
    {topic, "What is hypertangent infosurfing?",
     "Going off at a tangent while you read, without losing your way.\n\n"
     "Select any text in the viewer and press HyperFind. The program then looks for that text, "
     "and Find Next and Find Prev go to every place in the file where it occurs. From there, "
     "select the next text that catches your eye.\n\n"
     "Restore Find brings your own criteria back. After that, Restore Hyper brings back the last "
     "text of HyperFind."},
    {topic, "What's the big deal about multitasking?",
     "You need not wait for a search. While it runs, you can work in other programs. Files are "
     "listed as they are found. When the search takes longer than a second, the line below the "
     "viewer shows the folder that is being searched.\n\n"
     "Minimize On in the Search menu keeps the window out of your way meanwhile, and Sound On "
     "plays a sound at the end. Stop or Esc ends a search early; the files found so far stay in "
     "the list."},
    {topic, "Can I view files that do not contain any text, like picture files?",
     "Yes, you can search and view any file that is not empty. The viewer shows the characters "
     "that the file's bytes stand for, with dots in place of those that cannot be shown, so you "
     "can read names and notes inside pictures and programs.\n\n"
     "To see the picture itself, press Launch. A double click on a .wav file plays it."},
    {topic, "How do I search an entire disk?",
     "Press Search, then Where To Search. Type C:\\ at Folder and press Enter, or choose the "
     "drive and double-click its top folder. Tick Search SubFolders, and tick All Files or only "
     "the types that you want: the fewer files, the faster the search. Then press OK and "
     "Begin.\n\n"
     "Hidden and system files and folders are searched only when Hidden Files is ticked."},
    {topic, "Why was nothing found?",
     "The line below the viewer shows how many files were left out by the ticked types, by the "
     "names at Leave out and by the dates. Look also at these:\n\n"
     "Where To Search: at first, only files of the type txt are ticked. Hidden and system files "
     "are left out unless Hidden Files is ticked.\n\n"
     "The criteria: Single Phrase, the first choice, finds the text only just as you type it, "
     "spaces and quotes included. All Words finds words anywhere in a file.\n\n"
     "Unicode Text in the Search menu: while it is not ticked, accented letters and other scripts "
     "are not found in UTF-8 files, and hardly anything is found in UTF-16 files.\n\n"
     "A link below the viewer, such as 3 files were not read, lists all files that could not be "
     "read, with the reasons. You can copy or save that list. Rest the mouse on the count to see "
     "the first ten."},
    {topic, "Do I have to click my way to a folder?",
     "No. Type or paste its path at Folder in Where To Search and press Enter: C:\\Papers, "
     "\\\\server\\share or %USERPROFILE%\\Documents. The path of a file stands for its folder. "
     "The arrow at Folder lists the last ten folders that were searched.\n\n"
     "Or drop a folder, or a file in it, on Where To Search or on the main window: the next new "
     "search goes through that folder. Search with Tallowmere in Explorer's menu of a folder, if "
     "the setup has added it, starts the program with that folder."},
    {topic, "How do I leave out files and folders?",
     "Press Search, then Where To Search, and type their names at Leave out, separated by \";\", "
     "such as .git; node_modules; *.bak. In a name, * stands for any characters and ? for one. "
     "Files and folders with such a name are not searched, nor is anything inside such a "
     "folder.\n\n"
     "Hidden and system files and folders are searched only when Hidden Files is ticked. Files "
     "that are only in the cloud are fetched and searched only when Online Files is ticked; "
     "otherwise they count as not read."},
    {topic, "Can I find and view a file without searching its contents?",
     "Yes. Leave the criteria empty: every file in the chosen folder that has one of the chosen "
     "types and dates is listed. Then click the one that you want to read."},
    {topic, "How do I repeat an earlier search?",
     "In the search criteria, the arrow beside the text, Alt+Down or F4 opens the list of the "
     "last twenty searches. Choose one to fill in all that it searched by: the text, the folder, "
     "the types and the dates. Del removes one from the list, and Forget all empties it."},
    {topic, "What do the marks in the viewer mean?",
     "Every hit in view is marked, 6,000 at most. The selected one is where Find Next or Find "
     "Prev stopped last; below the viewer you see its number, such as hit 3 of 17. The program "
     "counts the hits of files of up to 64 MB, while it has nothing else to do.\n\n"
     "In a proximity search, Find Next stops only at hits with the other words nearby, and only "
     "these are marked."},
    {topic, "Are there any secret shortcuts?",
     "Anywhere:\n"
     "Ctrl+F: starts a search\n"
     "F3, Shift+F3: next and previous hit\n"
     "Esc: stops a search, or goes back to the list\n\n"
     "In the list:\n"
     "Enter or double click: shows the file, then its next hit\n"
     "Shift+Enter: launches it\n"
     "F2: renames it\n"
     "Del: deletes the selected files\n"
     "Ctrl+A: selects all files\n"
     "Ctrl+C: copies the paths of the selected files\n\n"
     "In the viewer:\n"
     "Space or Enter: next hit\n"
     "Backspace: back to the list\n"
     "Ctrl+C: copies the selected text\n"
     "Ctrl and the mouse wheel: size of the font\n\n"
     "A right click opens a menu in both. In the search criteria, F1 opens the hints and F4 the "
     "recent searches."},
    {topic, "Can I edit or modify the file being viewed?",
     "Not in the viewer: the program only reads the files that it searches and shows. Press "
     "Launch to edit the file in the application that belongs to its type.\n\n"
     "When the file has changed, the program reports that at your next step in the viewer, such "
     "as Find Next, and shows the file again."},
    {topic, "Can I see a hit without opening the file?",
     "Yes. Rest the mouse on its row. A tip shows the whole path, the size, the date and the "
     "first line with a hit. The line is shown only when it is in the first megabyte of the file "
     "and the file can be read at once."},
    {topic, "Can I make the list larger?",
     "Yes. Drag its lower edge, just above the count of the files, with the mouse: the viewer "
     "takes the rest of the window. The list keeps its part of the window, and the columns keep "
     "the widths that you give them, also the next time. A double click on the edge brings back "
     "the height and the widths that they had at first."},
    {topic, "Can I change the font used to display the file's contents?",
     "Yes, with Change Font, Larger Font and Smaller Font in the Display menu. Turning the mouse "
     "wheel with Ctrl held down over the viewer changes the size, too. The font is kept for the "
     "next time. Columns of text line up only in fixed-pitch fonts, which Change Font marks."},
    {topic, "What does \"Minimize On\" do?",
     "While it is ticked in the Search menu, Tallowmere's window is minimized when a search "
     "begins, and comes back to the front when the search has ended."},
    {topic, "What does \"Find on Launch\" do?",
     "While Find On Launch is ticked in the Search menu, Launch not only opens the file but also "
     "types the keys that make the application find your text: the first word or phrase of the "
     "criteria, or the whole single phrase.\n\n"
     "It knows Notepad, WordPad, Write, Cardfile and Microsoft Works with their classic menus; "
     "Notepad, for example, needs a menu named Search. Other applications only open the file. "
     "Leave the keyboard and mouse alone for these few seconds: when the application's window is "
     "not in front, the typing stops."},
    {topic, "What can be placed onto the clipboard?",
     "From the Edit menu:\n"
     "Copy Text: the text selected in the viewer.\n"
     "Append Text: the same, added to the text that is already on the clipboard, as long as both "
     "together are shorter than 65,000 characters.\n"
     "Copy File Name: the path of the selected file, or of all selected files, each on a line of "
     "its own.\n\n"
     "Paste in the search criteria takes the text to find from the clipboard."},
    {topic, "What is in the menu \"More\"?",
     "More is in the File menu, and in the menu that a right click on the list opens.\n\n"
     "Open Containing Folder shows the selected file in its folder in Explorer, Open With opens "
     "it with another application, and Properties shows its properties.\n\n"
     "Save List writes the whole list, in its order, to a file: as text with one path on each "
     "line, or as a table (CSV) with name, date, size and folder, which spreadsheets open."},
    {topic, "What is the difference between \"Delete\" and \"Remove\" a file?",
     "Delete takes the selected files off the disk. The program asks first, and moves them to the "
     "Recycle Bin where there is one; where there is none, the question says that they will be "
     "deleted permanently.\n\n"
     "Remove only takes them out of the list. The files themselves are not touched, and the next "
     "search may list them again."},
    {topic, "What does \"Unicode Text\" do?",
     "While it is ticked in the Search menu, files in UTF-8 and UTF-16, which most of today's "
     "programs write, are searched and shown as the characters that they contain, in any script. "
     "The line below the viewer shows the encoding of the file.\n\n"
     "While it is not ticked, which is so at first, all files are read byte by byte in the "
     "system's code page. When a search may have missed something by that, the line below the "
     "viewer says so. Press Read Unicode text there: it ticks the entry and makes the same search "
     "again.\n\n"
     "UTF-16 without a mark at its beginning is read in the code page in either case. Text packed "
     "inside documents (.docx, .pdf, .zip) is searched as the bytes that it is, so hardly any of "
     "its words are found."},
};
static_assert(is_complete(items));

}  // namespace

HelpPage quick_answers() {
  return {"Quick Answers", items};
}

}  // namespace tallowmere
