// The DPI the plug-in's windows run at. Current hosts choose their thread's DPI
// awareness; the plug-in asks for its own around the dialogs it shows and gives the
// host's back when they end, never touching the process's awareness. The functions are
// looked up at run time, so the plug-in still loads where they do not exist.
#pragma once

#include <windows.h>

#include <cstdint>

namespace tessellum {

// The thread's awareness for the length of a scope: per-monitor v2 where the system
// takes it, else per-monitor, else system aware; the context the thread had is put back
// at the end. Where the system has no such call, nothing changes.
class ThreadDpiScope {
public:
    ThreadDpiScope();
    ~ThreadDpiScope();
    ThreadDpiScope(const ThreadDpiScope&) = delete;
    ThreadDpiScope& operator=(const ThreadDpiScope&) = delete;

private:
    void* previous = nullptr;  // the thread's context before, null when none was set
};

// The DPI of a window: what the system says of it, or without that call the DC's
// LOGPIXELSY; 96 when neither answers.
int32_t WindowDpi(HWND window);

// The display's DPI as this thread sees it (the screen's LOGPIXELSY): 96 where the
// display is not scaled, or the thread is not aware of its scale.
int32_t DisplayDpi();

}  // namespace tessellum
