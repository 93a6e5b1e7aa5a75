// The records a host of the filter plug-in interface hands us, declared from the
// published layout. Only the members the plug-in touches are named; the rest are
// kept as opaque bytes so that the record has the exact size a host allocates.
//
// The layout is 4-byte packed on Windows on both architectures. Every field is a
// pointer, int16 or int32, so the same declaration also lays out identically on a
// native 64-bit build, which lets the portable filter run be tested natively.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tessellum {

#pragma pack(push, 4)

// Published "Rect": bottom and right are exclusive.
struct Rect {
    int16_t top;
    int16_t left;
    int16_t bottom;
    int16_t right;
};

// Published "Point" (vertical first).
struct Point16 {
    int16_t v;
    int16_t h;
};

// Published "RGBColor": 16 bits a component.
struct RGBColor {
    uint16_t red;
    uint16_t green;
    uint16_t blue;
};

// Published "PlatformData"; the window is kept opaque so this header stays portable.
struct PlatformData {
    void* hwnd;
};

// Both callbacks are plain C calls on Windows (no pascal convention there).
typedef uint8_t (*TestAbortProc)();
typedef void (*ProgressProc)(int32_t done, int32_t total);

constexpr bool kPointer32 = sizeof(void*) == 4;

struct FilterRecord {
    int32_t serial;
    TestAbortProc abortProc;
    ProgressProc progressProc;
    void* parameters;  // a handle: pointer to a PluginHandle record
    Point16 imageSize;
    int16_t planes;
    Rect filterRect;
    RGBColor background;
    RGBColor foreground;
    int32_t maxSpace;
    int32_t bufferSpace;
    Rect inRect;
    int16_t inLoPlane;
    int16_t inHiPlane;
    Rect outRect;
    int16_t outLoPlane;
    int16_t outHiPlane;
    void* inData;
    int32_t inRowBytes;
    void* outData;
    int32_t outRowBytes;
    // Masks, host colours, host procs, resolution, monitor data: never touched.
    uint8_t untouchedMiddle[kPointer32 ? 96 : 104];
    PlatformData* platformData;
    // Members of later interface versions and the reserved tail.
    uint8_t untouchedTail[kPointer32 ? 260 : 332];
};

// The About call's record has no serial; platformData comes first.
struct AboutRecord {
    PlatformData* platformData;
    void* sSPBasic;
    void* plugInRef;
    uint8_t reserved[244];
};

#pragma pack(pop)

// Offsets as hosts lay them out; a mismatch here would corrupt a host's memory.
#define TESSELLUM_CHECK_OFFSET(type, member, off32, off64)                    \
    static_assert(offsetof(type, member) == (kPointer32 ? (off32) : (off64)), \
                  #type "::" #member " is not where hosts put it")

TESSELLUM_CHECK_OFFSET(FilterRecord, serial, 0, 0);
TESSELLUM_CHECK_OFFSET(FilterRecord, abortProc, 4, 4);
TESSELLUM_CHECK_OFFSET(FilterRecord, progressProc, 8, 12);
TESSELLUM_CHECK_OFFSET(FilterRecord, parameters, 12, 20);
TESSELLUM_CHECK_OFFSET(FilterRecord, imageSize, 16, 28);
TESSELLUM_CHECK_OFFSET(FilterRecord, planes, 20, 32);
TESSELLUM_CHECK_OFFSET(FilterRecord, filterRect, 22, 34);
TESSELLUM_CHECK_OFFSET(FilterRecord, background, 30, 42);
TESSELLUM_CHECK_OFFSET(FilterRecord, foreground, 36, 48);
TESSELLUM_CHECK_OFFSET(FilterRecord, maxSpace, 44, 56);
TESSELLUM_CHECK_OFFSET(FilterRecord, bufferSpace, 48, 60);
TESSELLUM_CHECK_OFFSET(FilterRecord, inRect, 52, 64);
TESSELLUM_CHECK_OFFSET(FilterRecord, inLoPlane, 60, 72);
TESSELLUM_CHECK_OFFSET(FilterRecord, inHiPlane, 62, 74);
TESSELLUM_CHECK_OFFSET(FilterRecord, outRect, 64, 76);
TESSELLUM_CHECK_OFFSET(FilterRecord, outLoPlane, 72, 84);
TESSELLUM_CHECK_OFFSET(FilterRecord, outHiPlane, 74, 86);
TESSELLUM_CHECK_OFFSET(FilterRecord, inData, 76, 88);
TESSELLUM_CHECK_OFFSET(FilterRecord, inRowBytes, 80, 96);
TESSELLUM_CHECK_OFFSET(FilterRecord, outData, 84, 100);
TESSELLUM_CHECK_OFFSET(FilterRecord, outRowBytes, 88, 108);
TESSELLUM_CHECK_OFFSET(FilterRecord, platformData, 188, 216);
TESSELLUM_CHECK_OFFSET(AboutRecord, platformData, 0, 0);
TESSELLUM_CHECK_OFFSET(AboutRecord, sSPBasic, 4, 8);
TESSELLUM_CHECK_OFFSET(AboutRecord, plugInRef, 8, 16);
TESSELLUM_CHECK_OFFSET(PlatformData, hwnd, 0, 0);
TESSELLUM_CHECK_OFFSET(Rect, top, 0, 0);
TESSELLUM_CHECK_OFFSET(Rect, left, 2, 2);
TESSELLUM_CHECK_OFFSET(Rect, bottom, 4, 4);
TESSELLUM_CHECK_OFFSET(Rect, right, 6, 6);
TESSELLUM_CHECK_OFFSET(RGBColor, green, 2, 2);
TESSELLUM_CHECK_OFFSET(RGBColor, blue, 4, 4);
static_assert(sizeof(FilterRecord) == (kPointer32 ? 452 : 556), "FilterRecord size");
static_assert(sizeof(AboutRecord) == (kPointer32 ? 256 : 268), "AboutRecord size");
static_assert(sizeof(Rect) == 8 && sizeof(RGBColor) == 6 && sizeof(Point16) == 4,
              "published small records");

#undef TESSELLUM_CHECK_OFFSET

// Selectors of the filter protocol.
enum Selector : int16_t {
    kSelectorAbout = 0,
    kSelectorParameters = 1,
    kSelectorPrepare = 2,
    kSelectorStart = 3,
    kSelectorContinue = 4,
    kSelectorFinish = 5,
};

// Results the plug-in reports to the host.
constexpr int16_t kResultOk = 0;
constexpr int16_t kResultStop = 1;  // the run ends, the host reports nothing
constexpr int16_t kResultMemFull = -108;
constexpr int16_t kResultBadParameters = -30100;

}  // namespace tessellum
