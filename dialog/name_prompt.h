// The small modal prompt for a name: a line of text, an edit field with the current or
// suggested name, OK and Cancel.
#pragma once

#include <windows.h>

#include <cstdint>

namespace tessellum {

// The record the prompt works on.
struct NamePrompt {
    char* buffer;         // in: the initial text; out, on OK: the text entered
    int32_t size;         // capacity of buffer, terminator included
    const char* prompt;   // the line above the edit field
    const char* caption;  // the prompt's title
};

// Runs the prompt modally over owner: true on OK, with buffer holding at most size - 1
// characters; false on Cancel, with buffer as it was. Not re-entrant.
bool PromptForName(HWND owner, HINSTANCE instance, char* buffer, int32_t size, const char* prompt,
                   const char* caption);

}  // namespace tessellum
