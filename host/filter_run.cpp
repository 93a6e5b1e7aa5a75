#include "host/filter_run.h"

#include "host/band_fill.h"

namespace tessellum {

bool SetFirstPass(FilterRecord& record, const FilterParameters& parameters) {
    const Rect& area = record.filterRect;
    const int grid = EffectiveGridSize(parameters.gridSize);
    record.inRect.top = area.top;
    record.inRect.left = area.left;
    record.inRect.right = area.right;
    const int bottom = area.top + grid;
    record.inRect.bottom = static_cast<int16_t>(bottom > area.bottom ? area.bottom : bottom);
    // Tested after the dialog, so the user has seen it even on an image we cannot fill.
    if (record.planes < 3) return false;
    record.inLoPlane = 0;
    record.inHiPlane = 2;
    record.outRect = record.inRect;
    record.outLoPlane = 0;
    record.outHiPlane = 2;
    return true;
}

void FillPass(FilterRecord& record, const FilterParameters& parameters) {
    const Rect& area = record.filterRect;
    if (record.progressProc) {
        record.progressProc(record.inRect.top - area.top, area.bottom - area.top);
    }
    const Rect& band = record.outRect;
    if (!record.outData) return;  // a host that delivered no buffer gets nothing written
    FillBand(static_cast<uint8_t*>(record.outData), record.outRowBytes, band.bottom - band.top,
             band.right - band.left, parameters.tile, EffectiveGridSize(parameters.gridSize));
}

bool AdvancePass(FilterRecord& record, const FilterParameters& parameters) {
    const int grid = EffectiveGridSize(parameters.gridSize);
    const int top = record.inRect.top + grid;
    const int bottom = record.inRect.bottom + grid;
    record.inRect.top = static_cast<int16_t>(top);
    record.inRect.bottom =
        static_cast<int16_t>(bottom > record.filterRect.bottom ? record.filterRect.bottom : bottom);
    record.outRect = record.inRect;
    // Compared before narrowing, so a rectangle that ends near the int16 limit cannot
    // wrap round into an endless run.
    return top < record.filterRect.bottom;
}

void EmptyRectangles(FilterRecord& record) {
    record.inRect = Rect{0, 0, 0, 0};
    record.outRect = Rect{0, 0, 0, 0};
}

int16_t ContinueRun(FilterRecord& record, const FilterParameters& parameters) {
    if (record.abortProc && record.abortProc()) return kResultStop;
    FillPass(record, parameters);
    if (!AdvancePass(record, parameters)) EmptyRectangles(record);
    return kResultOk;
}

}  // namespace tessellum
