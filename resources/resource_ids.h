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
