#pragma once

// Numbers of the dialogs' templates and controls. Control arrays take consecutive numbers, in
// index order.

#define IDD_SEARCH_FOR 2000
#define IDD_PATH 2001
#define IDD_DATE 2002
#define IDD_PROXIMITY 2003
#define IDD_NARROW 2004
#define IDD_COPY_MOVE 2005
#define IDD_RENAME 2006
#define IDD_REPLACE 2007
#define IDD_PROGRESS 2008
#define IDD_FONTS 2009
#define IDD_HELP 2300
#define IDD_ABOUT 2301
#define IDD_CANNOT_LAUNCH 2302

// frmSearchFor
#define IDC_SEARCH_LABEL1 2010
#define IDC_SEARCH_LABEL2 2011
#define IDC_SEARCH_TEXT 2012
#define IDC_SEARCH_OPTION 2020 /* 4 */
#define IDC_SEARCH_CHECK1 2030
#define IDC_SEARCH_WHERE 2031
#define IDC_SEARCH_DATES 2032
#define IDC_SEARCH_PROXIMITY 2033
#define IDC_SEARCH_PASTE 2034
#define IDC_SEARCH_HELP 2035
#define IDC_SEARCH_STATUS 2036
#define IDC_SEARCH_RECENT 2037
#define IDC_SEARCH_RECENT_LIST 2038

// frmPath
#define IDC_PATH_DRIVE1 2050
#define IDC_PATH_DIR1 2051
#define IDC_PATH_SUBFOLDERS 2052
#define IDC_PATH_LABEL1 2053
#define IDC_PATH_ALL_FILES 2054
#define IDC_PATH_USER_TYPE 2060  /* 6 */
#define IDC_PATH_USER_CHECK 2070 /* 6 */

// frmDate
#define IDC_DATE_OPTION 2100  /* 5 */
#define IDC_DATE_CAPTION 2110 /* 5 */
#define IDC_DATE_LABEL3 2120
#define IDC_DATE_LABEL4 2121
#define IDC_DATE_LABEL5 2122
#define IDC_DATE_PICTURE 2130 /* 6 */
#define IDC_DATE_SCROLL 2140  /* 6 */
#define IDC_DATE_RESET 2150

// frmProximity
#define IDC_PROX_LABEL1 2170 /* 2 */
#define IDC_PROX_LABEL2 2172
#define IDC_PROX_LABEL3 2173
#define IDC_PROX_LABEL4 2174
#define IDC_PROX_LABEL6 2175
#define IDC_PROX_PICTURE 2180 /* 2 */
#define IDC_PROX_SCROLL 2182  /* 2 */
#define IDC_PROX_OPTION 2184  /* 2: 0 ANY word, 1 ALL words */
#define IDC_PROX_DEFAULT 2186

// frmNarrow
#define IDC_NARROW_OPTION 2200 /* 3 */
#define IDC_NARROW_LABEL 2210  /* 3 */

// frmFonts
#define IDC_FONTS_LABEL1 2230
#define IDC_FONTS_LABEL2 2231
#define IDC_FONTS_LABEL3 2232
#define IDC_FONTS_FACES 2233
#define IDC_FONTS_SIZES 2234
#define IDC_FONTS_SAMPLE 2235

// HelpScreen
#define IDC_HELP_POPUP 2310
#define IDC_HELP_EXIT 2311
#define IDC_HELP_ITEM 2320 /* as many as the page has, up to 30 */

// frmAbout
#define IDC_ABOUT_IMAGE1 2360
#define IDC_ABOUT_LABEL1 2361
#define IDC_ABOUT_LABEL2 2362

// frmCopyMove
#define IDC_COPY_LABEL1 2400
#define IDC_COPY_DRIVE1 2401
#define IDC_COPY_DIR1 2402
#define IDC_COPY_FOLDER 2403
#define IDC_COPY_NAME 2404
#define IDC_COPY_CONFIRM 2405
#define IDC_COPY_TARGET 2406

// frmRename
#define IDC_RENAME_OLD 2420
#define IDC_RENAME_NEW 2421

// frmReplace
#define IDC_REPLACE_TARGET 2430
#define IDC_REPLACE_TARGET_FACTS 2431
#define IDC_REPLACE_SOURCE 2432
#define IDC_REPLACE_SOURCE_FACTS 2433
#define IDC_REPLACE_ALL 2434

// frmProgress
#define IDC_PROGRESS_LABEL1 2440
#define IDC_PROGRESS_BAR 2441

// frmCannotLaunch
#define IDC_CANNOT_LAUNCH_ICON 2450
#define IDC_CANNOT_LAUNCH_PROMPT 0xFFFF /* as in the system's message boxes */
