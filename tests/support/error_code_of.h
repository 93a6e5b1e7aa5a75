// The ErrorCode an action throws, or 0 when it throws none: lets a test state the code
// it expects in one line.
#pragma once

#include <functional>

#include "storage/error_code.h"

namespace tessellum::test {

inline ErrorCode CodeOf(const std::function<void()>& action) {
    try {
        action();
    } catch (ErrorCode code) {
        return code;
    }
    return 0;
}

}  // namespace tessellum::test
