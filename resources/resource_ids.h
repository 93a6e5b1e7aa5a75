// Numbers of the plug-in's resources, shared by the resource script and the code.
#pragma once

#define IDD_ABOUT 129
#define IDR_PIPL 16000

// Pictures of the tool buttons; the selected form is the same picture white on black.
#define IDB_PENCIL 104
#define IDB_DROPPER 105
#define IDB_ERASER 106
#define IDB_PENCIL_SELECTED 331
#define IDB_DROPPER_SELECTED 332
#define IDB_ERASER_SELECTED 333

// Pictures of the slider panel and the colour pair.
#define IDB_SLIDER_THUMB 327
#define IDB_THUMB_WIPE 328
#define IDB_ARROW_RIGHT 330
#define IDB_ARROW_LEFT 335
#define IDB_SWAP 336

// Mouse pointers of the drawing tools.
#define IDCUR_ERASER 107
#define IDCUR_PENCIL 108
#define IDCUR_DROPPER 109

// The main dialog, its two tab pages and the popup menus.
#define IDD_MAIN 113
#define IDD_COLOR_PICKER 130
#define IDD_PATTERN_FILL 131
#define IDR_MENUS 102

// The name prompt of the list and colour commands.
#define IDD_NAME_PROMPT 101
#define IDC_PROMPT_EDIT 1000
#define IDC_PROMPT_TEXT 1001

// Controls of the main dialog (IDOK is Fill, IDCANCEL Cancel).
#define IDC_SIZING 1001
#define IDC_NAME_COLOR 1002
#define IDC_NEW_COLOR 1003
#define IDC_LIST_BUTTON 1004
#define IDC_TABS 1008
#define IDC_PREVIEW_PLACE 1023
#define IDC_COLOR_BOX 1026

// Controls of the pages; the two pages are separate dialogs, so 1019 serves both.
#define IDC_GRID_BUTTON 1016
#define IDC_LOAD_PALETTE 1017
#define IDC_UNLOAD_PALETTE 1018
#define IDC_CONVERT 1019
#define IDC_PALETTE_BUTTON 1019
#define IDC_ORIGINAL_LABEL 1020
#define IDC_WEB_SAFE_LABEL 1021
#define IDC_CONVERT_TEXT 1022
#define IDC_SLIDER_PLACE 1024
#define IDC_EDITOR_PLACE 1025
#define IDC_PICKER_PLACE 1030
#define IDC_SPLIT_BOX_PLACE 1031
#define IDC_SWATCH_PLACE 1032
#define IDC_TOOL_PLACE 1033
#define IDC_COLOR_PAIR_PLACE 1034
#define IDC_FORE_BACK_PLACE 1035

// Menu commands; lists are appended from 3000, palettes from 3500.
#define IDM_NEW_LIST 40001
#define IDM_NAME_LIST 40002
#define IDM_DELETE_LIST 40003
#define IDM_WEB_SAFE_PALETTE 40004
#define IDM_GRID_2 40005
#define IDM_GRID_3 40006
#define IDM_GRID_4 40007
#define IDM_GRID_5 40008
#define IDM_GRID_6 40009
#define IDM_GRID_8 40011
#define IDM_IMPORT_LIST 40015
#define IDM_EXPORT_LIST 40016
#define IDM_FIRST_LIST 3000
#define IDM_FIRST_PALETTE 3500
