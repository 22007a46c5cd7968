#pragma once

// Numbers of the dialogs' templates and controls. Control arrays take consecutive numbers, in
// index order.

#define IDD_SEARCH_FOR 2000
#define IDD_PATH 2001
#define IDD_DATE 2002
#define IDD_PROXIMITY 2003
#define IDD_NARROW 2004
#define IDD_FONTS 2005

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
