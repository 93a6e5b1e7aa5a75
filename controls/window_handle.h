// A window handle that portable code can hold without the Windows header: the same
// opaque pointer type that the header declares as HWND.
#pragma once

struct HWND__;

namespace tessellum {

using WindowHandle = HWND__*;

}  // namespace tessellum
